#pragma once

#include "search/mod検索窓.h"

#include <QString>

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace controls {
class FocusEvents;
class KanaField;
class NumField;
class ReportList;
class TabTable;
class TextField;
} // namespace controls

namespace db {
class Recordset;
}

// The list windows over a master of persons, the staff master M担当者 and the
// personnel system's employee master M社員: seven searches over one list of
// at most 1000 rows, the same controls, events and clauses on either table.

// The conditions of the window.
struct 人員一覧状態 {
    // Which search the next fill runs: 1 code, 2 kana, 3 name, 4 department,
    // 5 section, 0 composite, -1 negative.
    short 検索区分 = 0;
    QString コード;
    QString カナ;
    QString 名称;
    QString 部門コード;
    QString 部門名;
    QString セクションコード;
    QString セクション名;
    // List indexes of the two classes; the index of "全て" is the maximum.
    short 在籍区分 = 0;
    short 社員区分 = 0;
    short 在籍区分最大 = 0;
    short 社員区分最大 = 0;
    // An extra condition of the window itself, on the employee list only.
    QString 固定条件;
};

// What differs between the two windows.
struct 人員一覧定義 {
    QString 表;     // the master searched: "M担当者" or "M社員"
    QString 窓名;   // the window's name: "wnd担当者一覧"
    QString 題;     // its title: "担当者一覧"
    QString 一覧名; // the name of its list: "List担当者"
    QString 閉鎖語; // a calling form whose name holds this word unloads the window on its close
    // The list and the class lists read the link database, with a history row
    // for each statement; the staff list reads the main one without.
    bool 連携 = false;
    // The window's own fixed condition comes first, and the comma-joined form
    // ("O") starts without a WHERE like the others, although its base has one.
    bool 固定条件あり = false;
    // The department and section pickers open on a single click in their
    // field; else on a double click.
    bool 選択窓単一クリック = false;
};

// The statement of the window's next fill in the dialect db ("A", "S" or "O"),
// with what remains of the caller's condition and the office restriction;
// empty for any other dialect.
QString 人員一覧SQLmake(const 人員一覧定義& def, const 人員一覧状態& state, const QString& db, const QString& 検索条件,
                        const QString& 運用事業所コード, const QString& 操作事業所コード);

// The rows of a list as CSV text: a caption row, then the rows in the
// list's order, fields quoted where they need it, lines ending in CR LF.
QString 一覧CSVmake(const QTreeWidget& list);

// The search window over a master of persons.
class 人員一覧窓 : public 検索窓 {
public:
    人員一覧窓(Context& ctx, 検索窓群& 群, 人員一覧定義 def);
    void 読込() override;

    const 人員一覧定義& 定義() const { return def_; }
    const 人員一覧状態& 状態() const { return s_; }
    const QString& 検索SQL() const { return 検索SQL_; }

    controls::TabTable* tabTable;
    controls::FocusEvents* focusEvents;
    項目操作監視* 操作監視;

    QLabel* wnd_ttl;
    controls::TextField* コード;
    QLabel* lab_コード;
    controls::TextField* 名称;
    controls::KanaField* カナ;
    controls::TextField* 部門コード;
    controls::TextField* 部門名;
    controls::TextField* セクションコード;
    controls::TextField* セクション名;
    QLabel* itm_ttl_在籍区分;
    controls::NumField* 在籍区分;
    QComboBox* 在籍区分名称;
    QLabel* itm_ttl_社員区分;
    controls::NumField* 社員区分;
    QComboBox* 社員区分名称;
    QPushButton* btn_コード検索;
    QPushButton* btn_カナ検索;
    QPushButton* btn_名称検索;
    QPushButton* btn_部門コード検索;
    QPushButton* btn_セクションコード検索;
    QPushButton* btn_複合検索;
    QPushButton* btn_否定検索;
    QPushButton* btn_画面クリア;
    QLabel* lab_注意;
    controls::ReportList* 一覧;
    QLabel* lab_お知らせ;

    // The rows and columns the list shows, in its order, to a CSV file in
    // code page 932, under the operator's right of text output.
    void CSV出力();

protected:
    人員一覧状態 s_;

private:
    void build();
    void wire();
    // The statements of the list and of its class lists, on the window's database.
    bool 一覧open(db::Recordset& rs, const QString& sql);
    void 区分一覧fill(QComboBox* list, controls::NumField* field, const QString& sql, short& 最大);
    void 条件seed();
    void 状態show();
    void 一覧fill();
    void ボタン状態set();
    void 検索(short 区分);
    void btn_画面クリア_Click();
    QString 名称get(const QString& table, const QString& code);
    void 選択窓open(controls::TextField* field, QPushButton* button, 窓種別 kind);

    const 人員一覧定義 def_;
    QString 検索SQL_;
    bool 表示中_ = false; // the controls are being painted from the state
};
