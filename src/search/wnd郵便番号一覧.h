#pragma once

#include "search/mod検索窓.h"

#include <QString>

class QLabel;
class QPushButton;

namespace controls {
class FocusEvents;
class ReportList;
class TabTable;
class TextField;
} // namespace controls

// The conditions of the postcode list.
struct 郵便番号一覧状態 {
    // 1 postcode, 2 住所A, 3 住所B, 0 composite.
    short 検索区分 = 0;
    QString 郵便番号;
    QString 都道府県市町村;
    QString 町域名;
};

// The statement of the postcode list's next fill. The composite search has
// no ordering.
QString 郵便番号一覧SQLmake(const 郵便番号一覧状態& state);

// The search window over M郵便番号, opened at the postcodes that begin with
// the first three digits of the caller's field.
class wnd郵便番号一覧 : public 検索窓 {
public:
    wnd郵便番号一覧(Context& ctx, 検索窓群& 群);
    void 読込() override;

    const 郵便番号一覧状態& 状態() const { return s_; }
    const QString& 検索SQL() const { return 検索SQL_; }

    controls::TabTable* tabTable;
    controls::FocusEvents* focusEvents;
    QLabel* wnd_ttl;
    controls::TextField* 郵便番号;
    controls::TextField* 都道府県市町村;
    controls::TextField* 町域名;
    QPushButton* btn_郵便番号検索;
    QPushButton* btn_都道府県市町村検索;
    QPushButton* btn_町域名検索;
    QPushButton* btn_複合検索;
    QPushButton* btn_画面クリア;
    controls::ReportList* List郵便番号;

private:
    void build();
    void wire();
    void 条件show();
    void 一覧fill();
    void 検索(short 区分);

    郵便番号一覧状態 s_;
    QString 検索SQL_;
    bool 表示中_ = false;
};
