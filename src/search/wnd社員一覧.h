#pragma once

#include "search/人員一覧窓.h"

// The employee list: the search window over the personnel system's M社員,
// read on the link database. It is only hidden at its close from the staff
// card and comes back as it was left.
const 人員一覧定義& 社員一覧定義();

// The statement of the employee list's next fill (see 人員一覧SQLmake): the
// window's fixed condition first, and in every dialect the first clause after
// the base opens with " WHERE".
QString 社員一覧SQLmake(const 人員一覧状態& state, const QString& db, const QString& 検索条件,
                        const QString& 運用事業所コード, const QString& 操作事業所コード);

// Where an employee stands on a date, worked out from the personnel history.
struct 社員状態情報 {
    QString 社員コード;
    QString 社員名;
    QString カナ;
    QString 事業所コード, 事業所名;
    QString 部門コード, 部門名;
    QString セクションコード, セクション名;
    QString 役職コード, 役職名;
    QString 職責;
    QString 就業形態コード, 就業形態名;
    short 社員区分 = 0;
    QString 社員区分名;
    short 在籍区分 = 0; // 0 enrolled, 1 on leave, 2 retired
    QString 在籍区分名;
};

class wnd社員一覧 : public 人員一覧窓 {
public:
    wnd社員一覧(Context& ctx, 検索窓群& 群);

    // The view of one employee on today's date: status, organisation,
    // position, employment form, class and the name in force. Each call
    // overwrites the view field by field; a field that no source sets keeps
    // its value. The statements run on the main connection, each leaving its
    // history row.
    void 社員状態read(const QString& 社員コード);
    // Whether the view passes the window's conditions.
    bool 社員条件chk() const;

    controls::ReportList* const List社員;
    社員状態情報 社員状態;
};
