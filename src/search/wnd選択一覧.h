#pragma once

#include "search/mod検索窓.h"

#include <QString>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace controls {
class NumField;
class ReportList;
} // namespace controls

// The statements of the four pickers.
// Offices other than "000", with the caller's condition when it has one.
QString 事業所一覧SQLmake(const QString& 検索条件);
// Departments or sections of one 稼動状況区分; all of them at the index of "全て".
QString 部門一覧SQLmake(short 稼動状況区分, short 最大);
QString セクション一覧SQLmake(short 稼動状況区分, short 最大);
// Positions, with the caller's condition when it has one.
QString 役職一覧SQLmake(const QString& 検索条件);

// A picker: a list of codes and names of a short master, without search
// fields. It keeps its state while hidden.
class 選択一覧 : public 検索窓 {
public:
    選択一覧(Context& ctx, 検索窓群& 群, const QString& name, const QString& 閉鎖語, const QString& 一覧名,
             const QList<QPair<QString, int>>& columns, int 上限);
    void 読込() override;

    const QString& 検索SQL() const { return 検索SQL_; }

    QLabel* wnd_ttl = nullptr;
    controls::ReportList* 一覧;
    QLabel* lab_注意 = nullptr; // only where the list has a row limit

protected:
    virtual QString SQLmake() = 0;
    // Runs the statement and lists its rows, up to the limit where there is one.
    void 一覧fill();
    // The row above the list where a picker puts its filter.
    QHBoxLayout* 条件行;

private:
    QList<QPair<QString, int>> columns_;
    int 上限_;
    QString 検索SQL_;
};

// Offices; "000" is never offered. At most 500 rows.
class wnd事業所一覧 : public 選択一覧 {
public:
    wnd事業所一覧(Context& ctx, 検索窓群& 群);
    controls::ReportList* List事業所;

protected:
    QString SQLmake() override;
};

// Departments or sections, restricted by 稼動状況区分.
class 区分付き一覧 : public 選択一覧 {
public:
    区分付き一覧(Context& ctx, 検索窓群& 群, const QString& name, const QString& 閉鎖語, const QString& 一覧名,
                 const QString& caption, const QString& 条件項目);
    void 読込() override;

    short 稼動状況区分値() const { return 区分_; }

    QLabel* itm_ttl_稼動状況区分;
    controls::NumField* 稼動状況区分;
    QComboBox* 稼動状況区分名称;
    QPushButton* btn_画面クリア;

protected:
    short 区分_ = 1;
    short 最大_ = 0;

private:
    QString 条件項目_;
    bool 表示中_ = false;
};

class wnd部門一覧 : public 区分付き一覧 {
public:
    wnd部門一覧(Context& ctx, 検索窓群& 群);
    controls::ReportList* List部門;

protected:
    QString SQLmake() override;
};

class wndセクション一覧 : public 区分付き一覧 {
public:
    wndセクション一覧(Context& ctx, 検索窓群& 群);
    controls::ReportList* Listセクション;

protected:
    QString SQLmake() override;
};

// Positions.
class wnd役職一覧 : public 選択一覧 {
public:
    wnd役職一覧(Context& ctx, 検索窓群& 群);
    controls::ReportList* List役職;

protected:
    QString SQLmake() override;
};
