#pragma once

#include "search/人員一覧窓.h"

// The staff list: the search window over M担当者, unloaded at each close from
// the staff card.
const 人員一覧定義& 担当者一覧定義();

// The statement of the staff list's next fill in the dialect db ("A", "S" or
// "O"), with what remains of the caller's condition and the office
// restriction; empty for any other dialect.
QString 担当者一覧SQLmake(const 人員一覧状態& state, const QString& db, const QString& 検索条件,
                          const QString& 運用事業所コード, const QString& 操作事業所コード);

class wnd担当者一覧 : public 人員一覧窓 {
public:
    wnd担当者一覧(Context& ctx, 検索窓群& 群);

    controls::ReportList* const List担当者;
};
