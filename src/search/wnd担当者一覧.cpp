#include "search/wnd担当者一覧.h"

const 人員一覧定義& 担当者一覧定義() {
    static const 人員一覧定義 def{QStringLiteral("M担当者"), QStringLiteral("wnd担当者一覧"),
                                  QStringLiteral("担当者一覧"), QStringLiteral("List担当者"),
                                  QStringLiteral("担当者登録")};
    return def;
}

QString 担当者一覧SQLmake(const 人員一覧状態& state, const QString& db, const QString& 検索条件,
                          const QString& 運用事業所コード, const QString& 操作事業所コード) {
    return 人員一覧SQLmake(担当者一覧定義(), state, db, 検索条件, 運用事業所コード, 操作事業所コード);
}

wnd担当者一覧::wnd担当者一覧(Context& ctx, 検索窓群& 群) : 人員一覧窓(ctx, 群, 担当者一覧定義()), List担当者(一覧) {}
