// The rights of the operator and the program's title line.

#include "access/mod操作許可.h"

#include "shell/modデータ処理.h"
#include "shell/値変換.h"

#include <QLabel>
#include <QWidget>

#include <array>
#include <cmath>

namespace {

// The eight rights, in the order of the operations that test them.
struct 権利欄 {
    const char16_t* 列名;
    QString 操作担当者情報::*欄;
};

constexpr std::array<権利欄, 8> 八権利{{
    {u"操作許可", &操作担当者情報::操作許可},
    {u"入力許可", &操作担当者情報::入力許可},
    {u"修正許可", &操作担当者情報::修正許可},
    {u"削除許可", &操作担当者情報::削除許可},
    {u"印刷許可", &操作担当者情報::印刷許可},
    {u"プレビュ許可", &操作担当者情報::プレビュ許可},
    {u"テキスト出力許可", &操作担当者情報::テキスト出力許可},
    {u"イメージ出力許可", &操作担当者情報::イメージ出力許可},
}};

// A right or class flag allows when its text reads as the number 0 (an empty text does).
bool 許可値(const QString& flag) { return 数値(flag) == 0; }

// The menus whose rows the personal table is asked for by name; any other
// menu adds no condition.
QString 業務メニュ条件(const QString& メニュ名) {
    static const std::array<std::pair<const char16_t*, const char16_t*>, 4> 条件{{
        {u"営業支援", u" AND 担当者別操作許可プログラム.業務メニュ = '営業支援'"},
        {u"営業支援データ管理", u" AND 担当者別操作許可プログラム.業務メニュ = '営業支援データ管理'"},
        {u"営業支援補助機能", u" AND 担当者別操作許可プログラム.業務メニュ = '営業支援補助機能'"},
        {u"営業支援サービスメニュ", u" AND 担当者別操作許可プログラム.業務メニュ = '営業支援サービスメニュ'"},
    }};
    for (const auto& [menu, fragment] : 条件) {
        if (メニュ名 == QString::fromUtf16(menu))
            return QString::fromUtf16(fragment);
    }
    return {};
}

// The operator's own row for the program: its rights replace the record's,
// and its 操作許可 decides. False when there is no such row.
bool 個人許可read(Context& ctx, const QString& メニュ名, const QString& プログラム名, bool& allowed) {
    const QString sql =
        QStringLiteral("SELECT 担当者別操作許可プログラム.*") + QStringLiteral(" FROM 担当者別操作許可プログラム") +
        QStringLiteral(" WHERE 担当者別操作許可プログラム.担当者コード = '") + ctx.op.操作担当者コード +
        QStringLiteral("'") + 業務メニュ条件(メニュ名) +
        QStringLiteral(" AND 担当者別操作許可プログラム.プログラムID = '") + プログラム名 + QStringLiteral("'");
    db::Recordset rs;
    const bool found = 業務SQLopen(ctx, rs, sql, false);
    if (found) {
        操作権利read(ctx.op, rs);
        allowed = 許可値(ctx.op.操作許可);
    }
    rs.close();
    return found;
}

// The class rule: the program's class in its menu table and the operator's
// flag for that class. Class 3 belongs to the offices: on a company with
// offices it is closed at the head office's installation.
bool 処理分類許可(Context& ctx, const QString& メニュ名, const QString& プログラム名) {
    db::Recordset rs;
    bool allowed = false;
    if (環境SQLopen(ctx, rs,
                    QStringLiteral("SELECT *") + QStringLiteral(" FROM ") + メニュ名 +
                        QStringLiteral(" WHERE プログラムID = '") + プログラム名 + QStringLiteral("'"))) {
        const double 分類 = 数値(rs.field(QStringLiteral("処理分類")).text());
        // Only the whole numbers 0 to 9 name a class; any other value tests no flag.
        const bool 分類あり = 分類 >= 0 && 分類 <= 9 && std::floor(分類) == 分類;
        const int n = static_cast<int>(分類);
        if (!分類あり)
            allowed = true;
        else if (n != 3)
            allowed = 許可値(ctx.op.処理分類操作許可[n]);
        else if (ctx.事業所件数 <= 0)
            allowed = true;
        else
            allowed = ctx.env.運用事業所コード != QStringLiteral("000") && 許可値(ctx.op.処理分類操作許可[3]);
    }
    rs.close();
    return allowed;
}

// The title's start: the display name of the program.
QString 表示名(const QString& プログラム名) {
    static const std::array<std::pair<const char16_t*, const char16_t*>, 5> 表示{{
        {u"営業支援", u"営業支援"},
        {u"営業支援データ管理", u"データ管理"},
        {u"営業支援補助機能", u"補助機能"},
        {u"営業支援サービスメニュ", u"サービスメニュー"},
        {u"営業支援マイメニュ", u"マイメニュー"},
    }};
    for (const auto& [name, shown] : 表示) {
        if (プログラム名 == QString::fromUtf16(name))
            return QString::fromUtf16(shown);
    }
    return プログラム名;
}

} // namespace

void 操作権利read(操作担当者情報& 担当者, const db::Recordset& rs) {
    for (const 権利欄& right : 八権利)
        担当者.*right.欄 = rs.field(QString::fromUtf16(right.列名)).text();
}

bool 操作許可判定(Context& ctx, const QString& メニュ名, const QString& プログラム名, int 操作) {
    bool allowed = false;
    bool found = false;
    if (!ctx.op.操作担当者コード.isEmpty())
        found = 個人許可read(ctx, メニュ名, プログラム名, allowed);
    if (!found)
        allowed = 処理分類許可(ctx, メニュ名, プログラム名);
    // Any other operation number tests no right.
    if (allowed && 操作 >= 0 && 操作 < int(八権利.size()))
        allowed = 許可値(ctx.op.*八権利[std::size_t(操作)].欄);
    return allowed;
}

QString プログラム見出しset(Context& ctx) {
    db::Recordset rs;
    if (業務SQLopen(ctx, rs,
                    QStringLiteral("SELECT * FROM M事業所 WHERE コード = '") + ctx.env.運用事業所コード +
                        QStringLiteral("'")))
        ctx.運用事業所名 = rs.field(QStringLiteral("名称")).text();
    rs.close();

    QString title = 表示名(ctx.プログラムID);
    if (ctx.env.運用事業所コード != QStringLiteral("000")) {
        // The branch's name as the company read took it.
        if (!ctx.office.名称.trimmed().isEmpty())
            title += QStringLiteral("(") + ctx.office.名称 + QStringLiteral(")");
    } else if (ctx.事業所件数 > 0) {
        title += QStringLiteral("(全社)");
    }
    if (!ctx.op.操作担当者コード.isEmpty())
        title += QStringLiteral("「") + ctx.op.氏名 + QStringLiteral("」");

    if (ctx.主画面) {
        if (auto* label = ctx.主画面->findChild<QLabel*>(QStringLiteral("prg_ttl")))
            label->setText(title);
    }
    return title;
}
