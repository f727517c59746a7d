#include "search/wnd社員一覧.h"

#include "shell/context.h"
#include "shell/modデータ処理.h"
#include "shell/値変換.h"

const 人員一覧定義& 社員一覧定義() {
    static const 人員一覧定義 def{QStringLiteral("M社員"), QStringLiteral("wnd社員一覧"), QStringLiteral("社員一覧"),
                                  QStringLiteral("List社員"), QStringLiteral("社員登録"),
                                  /*連携*/ true, /*固定条件あり*/ true, /*選択窓単一クリック*/ true};
    return def;
}

QString 社員一覧SQLmake(const 人員一覧状態& state, const QString& db, const QString& 検索条件,
                        const QString& 運用事業所コード, const QString& 操作事業所コード) {
    return 人員一覧SQLmake(社員一覧定義(), state, db, 検索条件, 運用事業所コード, 操作事業所コード);
}

wnd社員一覧::wnd社員一覧(Context& ctx, 検索窓群& 群) : 人員一覧窓(ctx, 群, 社員一覧定義()), List社員(一覧) {}

// ---- the employee on a date

namespace {

// A text column: null gives the empty text.
QString 文字列(const db::Recordset& rs, const QString& column) {
    return rs.field(column).text();
}

// A class column: the numeric value of its text; null gives 1.
short 区分値(const db::Recordset& rs, const QString& column) {
    const db::Field f = rs.field(column);
    return f.isNull() ? short(1) : 整数(f.text());
}

// The organisation columns of a source, named with its word (異動, 前, 採用
// or none) ahead of the plain names.
void 組織take(const db::Recordset& rs, const QString& 語, 社員状態情報& v) {
    const auto c = [&語](const char* name) { return 語 + QString::fromUtf8(name); };
    v.事業所コード = 文字列(rs, c("事業所コード"));
    v.事業所名 = 文字列(rs, c("事業所名"));
    v.部門コード = 文字列(rs, c("部門コード"));
    v.部門名 = 文字列(rs, c("部門名"));
    v.セクションコード = 文字列(rs, c("セクションコード"));
    v.セクション名 = 文字列(rs, c("セクション名"));
    v.役職コード = 文字列(rs, c("役職コード"));
    v.役職名 = 文字列(rs, c("役職名"));
    v.職責 = 文字列(rs, c("職責"));
    v.就業形態コード = 文字列(rs, c("就業形態コード"));
    v.就業形態名 = 文字列(rs, c("就業形態名"));
    v.社員区分 = 区分値(rs, c("社員区分"));
    v.社員区分名 = 文字列(rs, c("社員区分名"));
}

void 氏名take(const db::Recordset& rs, const QString& 氏名列, 社員状態情報& v) {
    v.社員名 = 文字列(rs, 氏名列);
    v.カナ = 文字列(rs, QStringLiteral("カナ"));
}

// The statement of the transfers, past (the state after each, 異動) or future
// (the state before each, 前): the same joins under the other word.
QString 異動SQL(const QString& 語, const QString& C, const QString& D, bool 過去) {
    const auto w = [&語](const char* text) { return QString::fromUtf8(text).replace(QStringLiteral("@"), 語); };
    QString sql = QStringLiteral("SELECT T異動.*, ") + QStringLiteral(" M社員.氏名 AS 社員名,M社員.カナ AS カナ,") +
                  w(" M@事業所.名称 AS @事業所名,") + w(" M@部門.名称 AS @部門名,") +
                  w(" M@セクション.名称 AS @セクション名,") + w(" M@役職.名称 AS @役職名,") +
                  w(" M@就業形態.名称 AS @就業形態名,") + w(" K@社員区分.名称 AS @社員区分名") +
                  QStringLiteral(" FROM ") + QStringLiteral(" M社員 RIGHT JOIN (") +
                  w(" M事業所 AS M@事業所 RIGHT JOIN (") + w(" M部門 AS M@部門 RIGHT JOIN (") +
                  w(" Mセクション AS M@セクション RIGHT JOIN (") + w(" M役職 AS M@役職 RIGHT JOIN (") +
                  w(" M就業形態 AS M@就業形態 RIGHT JOIN (") + w(" K社員区分 AS K@社員区分 RIGHT JOIN ") +
                  QStringLiteral(" T異動 ") + w(" ON K@社員区分.区分 = T異動.@社員区分)") +
                  w(" ON M@就業形態.コード = T異動.@就業形態コード)") + w(" ON M@役職.コード = T異動.@役職コード)") +
                  w(" ON M@セクション.コード = T異動.@セクションコード)") +
                  w(" ON M@部門.コード = T異動.@部門コード)") + w(" ON M@事業所.コード = T異動.@事業所コード)") +
                  QStringLiteral(" ON M社員.コード = T異動.社員コード") + QStringLiteral(" WHERE T異動.社員コード = '") +
                  C + QStringLiteral("'");
    if (過去)
        return sql + QStringLiteral(" AND T異動.異動日付 <= '") + D + QStringLiteral("'") +
               QStringLiteral(" ORDER BY T異動.異動日付 DESC,T異動.異動No DESC");
    return sql + QStringLiteral(" AND T異動.異動日付 > '") + D + QStringLiteral("'") +
           QStringLiteral(" ORDER BY T異動.異動日付,T異動.異動No");
}

QString 採用SQL(const QString& 採用事業所コード, const QString& 採用番号基準日付, const QString& 採用No) {
    return QStringLiteral("SELECT ") +
           QStringLiteral(" T採用.氏名 AS 社員名,T採用.カナ氏名 AS カナ,T採用.採用事業所コード,T採用.採用部門コード,"
                          "T採用.採用セクションコード,T採用.採用就業形態コード,T採用.採用社員区分,T採用.採用役職コード,"
                          "T採用.採用職責,") +
           QStringLiteral(" M採用事業所.名称 AS 採用事業所名,") + QStringLiteral(" M採用部門.名称 AS 採用部門名,") +
           QStringLiteral(" M採用セクション.名称 AS 採用セクション名,") +
           QStringLiteral(" M採用役職.名称 AS 採用役職名,") + QStringLiteral(" M採用就業形態.名称 AS 採用就業形態名,") +
           QStringLiteral(" K採用社員区分.名称 AS 採用社員区分名") + QStringLiteral(" FROM ") +
           QStringLiteral(" M事業所 AS M採用事業所 RIGHT JOIN (") + QStringLiteral(" M部門 AS M採用部門 RIGHT JOIN (") +
           QStringLiteral(" Mセクション AS M採用セクション RIGHT JOIN (") +
           QStringLiteral(" M役職 AS M採用役職 RIGHT JOIN (") +
           QStringLiteral(" M就業形態 AS M採用就業形態 RIGHT JOIN (") +
           QStringLiteral(" K社員区分 AS K採用社員区分 RIGHT JOIN ") + QStringLiteral(" T採用 ") +
           QStringLiteral(" ON K採用社員区分.区分 = T採用.採用社員区分)") +
           QStringLiteral(" ON M採用就業形態.コード = T採用.採用就業形態コード)") +
           QStringLiteral(" ON M採用役職.コード = T採用.採用役職コード)") +
           QStringLiteral(" ON M採用セクション.コード = T採用.採用セクションコード)") +
           QStringLiteral(" ON M採用部門.コード = T採用.採用部門コード)") +
           QStringLiteral(" ON M採用事業所.コード = T採用.採用事業所コード") + QStringLiteral(" WHERE T採用.事業所コード = '") +
           採用事業所コード + QStringLiteral("'") + QStringLiteral(" AND T採用.番号基準日付 = '") + 採用番号基準日付 +
           QStringLiteral("'") + QStringLiteral(" AND T採用.採用No = '") + 採用No + QStringLiteral("'");
}

QString 社員SQL(const QString& C) {
    return QStringLiteral("SELECT M社員.*,") + QStringLiteral(" M事業所.名称 AS 事業所名,") +
           QStringLiteral(" M部門.名称 AS 部門名,") + QStringLiteral(" Mセクション.名称 AS セクション名,") +
           QStringLiteral(" M役職.名称 AS 役職名,") + QStringLiteral(" M就業形態.名称 AS 就業形態名,") +
           QStringLiteral(" K在籍区分.名称 AS 在籍区分名,") + QStringLiteral(" K社員区分.名称 AS 社員区分名") +
           QStringLiteral(" FROM ") + QStringLiteral(" M事業所 RIGHT JOIN (") + QStringLiteral(" M部門 RIGHT JOIN (") +
           QStringLiteral(" Mセクション RIGHT JOIN (") + QStringLiteral(" M役職 RIGHT JOIN (") +
           QStringLiteral(" M就業形態 RIGHT JOIN (") + QStringLiteral(" K在籍区分 RIGHT JOIN (") +
           QStringLiteral(" K社員区分 RIGHT JOIN ") + QStringLiteral(" M社員") +
           QStringLiteral(" ON K社員区分.区分 = M社員.社員区分)") + QStringLiteral(" ON K在籍区分.区分 = M社員.在籍区分)") +
           QStringLiteral(" ON M就業形態.コード = M社員.就業形態コード)") +
           QStringLiteral(" ON M役職.コード = M社員.役職コード)") +
           QStringLiteral(" ON Mセクション.コード = M社員.セクションコード)") +
           QStringLiteral(" ON M部門.コード = M社員.部門コード)") + QStringLiteral(" ON M事業所.コード = M社員.事業所コード") +
           QStringLiteral(" WHERE M社員.コード = '") + C + QStringLiteral("'");
}

} // namespace

void wnd社員一覧::社員状態read(const QString& 社員コード) {
    社員状態情報& v = 社員状態;
    const QString& C = 社員コード;
    const QString D = ctx.sys.now().toString(QStringLiteral("yyyyMMdd"));
    // Each statement is read for its first row and closed; a failed open counts as no row.
    const auto read = [this](const QString& sql, const std::function<void(const db::Recordset&)>& take) {
        db::Recordset rs;
        const bool found = 業務SQLopen(ctx, rs, sql, true);
        if (found)
            take(rs);
        rs.close();
        return found;
    };

    // Status: retirement up to today outranks a leave that covers today.
    v.社員コード = C;
    v.在籍区分 = 0;
    v.在籍区分名 = QStringLiteral("在籍");
    if (read(QStringLiteral("SELECT T退職.退職日付") + QStringLiteral(" FROM ") + QStringLiteral(" T退職 ") +
                 QStringLiteral(" WHERE T退職.社員コード = '") + C + QStringLiteral("'") +
                 QStringLiteral(" AND T退職.退職日付 <= '") + D + QStringLiteral("'"),
             [](const db::Recordset&) {})) {
        v.在籍区分 = 2;
        v.在籍区分名 = QStringLiteral("退職");
    } else if (read(QStringLiteral("SELECT T休職.休職開始日付,T休職.休職終了日付") + QStringLiteral(" FROM ") +
                        QStringLiteral(" T休職 ") + QStringLiteral(" WHERE T休職.社員コード = '") + C +
                        QStringLiteral("'") + QStringLiteral(" AND T休職.休職開始日付 <= '") + D + QStringLiteral("'") +
                        QStringLiteral(" AND T休職.休職終了日付 >= '") + D + QStringLiteral("'"),
                    [](const db::Recordset&) {})) {
        v.在籍区分 = 1;
        v.在籍区分名 = QStringLiteral("休職");
    }

    // The organisation from the first source with a row: the latest transfer up
    // to today, the earliest one after it, the hiring, the master.
    const auto fromSource = [&v](const QString& 語) {
        return [&v, 語](const db::Recordset& rs) {
            氏名take(rs, QStringLiteral("社員名"), v);
            組織take(rs, 語, v);
        };
    };
    bool 未確定 = !read(異動SQL(QStringLiteral("異動"), C, D, true), fromSource(QStringLiteral("異動"))) &&
                  !read(異動SQL(QStringLiteral("前"), C, D, false), fromSource(QStringLiteral("前")));
    bool 不明 = false;
    if (未確定) {
        QString 採用事業所コード, 採用番号基準日付, 採用No;
        const bool master = read(QStringLiteral("SELECT *") + QStringLiteral(" FROM M社員") +
                                     QStringLiteral(" WHERE コード = '") + C + QStringLiteral("'"),
                                 [&](const db::Recordset& rs) {
                                     採用事業所コード = 文字列(rs, QStringLiteral("採用事業所コード"));
                                     採用番号基準日付 = 文字列(rs, QStringLiteral("採用番号基準日付"));
                                     採用No = 文字列(rs, QStringLiteral("採用No"));
                                 });
        if (master && !採用No.isEmpty())
            未確定 = !read(採用SQL(採用事業所コード, 採用番号基準日付, 採用No), fromSource(QStringLiteral("採用")));
        if (未確定)
            不明 = !read(社員SQL(C), [&v](const db::Recordset& rs) {
                氏名take(rs, QStringLiteral("氏名"), v);
                組織take(rs, QString(), v);
            });
    }

    // The name in force: the latest notice of a change of name up to today.
    read(QStringLiteral("SELECT T諸届.諸届氏名 AS 社員名,T諸届.諸届カナ氏名 AS カナ") + QStringLiteral(" FROM ") +
             QStringLiteral(" T諸届 ") + QStringLiteral(" WHERE T諸届.社員コード = '") + C + QStringLiteral("'") +
             QStringLiteral(" AND T諸届.諸届日付 <= '") + D + QStringLiteral("'") +
             QStringLiteral(" AND T諸届.諸届区分 = '1'") +
             QStringLiteral(" ORDER BY T諸届.諸届日付 DESC,T諸届.諸届No DESC"),
         [&v](const db::Recordset& rs) { 氏名take(rs, QStringLiteral("社員名"), v); });

    if (不明) {
        v.事業所コード = QStringLiteral("999");
        v.事業所名 = QStringLiteral("不明事業所");
        v.部門コード = QStringLiteral("999");
        v.部門名 = QStringLiteral("不明部門");
        v.セクションコード = QStringLiteral("999");
        v.セクション名 = QStringLiteral("不明セクション");
        v.役職コード = QStringLiteral("99");
        v.役職名 = QStringLiteral("不明役職");
        v.職責 = QStringLiteral("不明職責");
        v.就業形態コード = QStringLiteral("999");
        v.就業形態名 = QStringLiteral("不明就業形態");
        v.社員区分 = 7;
        v.社員区分名 = QStringLiteral("その他");
    }
}

bool wnd社員一覧::社員条件chk() const {
    const 社員状態情報& v = 社員状態;
    const auto 条件 = [this](short 区分, const QString& field) {
        return (s_.検索区分 == 区分 || s_.検索区分 == 0) && !field.trimmed().isEmpty();
    };
    if (s_.在籍区分 != s_.在籍区分最大 && s_.在籍区分 != v.在籍区分)
        return false;
    if (s_.社員区分 != s_.社員区分最大 && s_.社員区分 != v.社員区分)
        return false;
    if (条件(3, s_.名称) && !v.社員名.contains(s_.名称, Qt::CaseInsensitive))
        return false;
    if (条件(2, s_.カナ) && !v.カナ.contains(s_.カナ, Qt::CaseInsensitive))
        return false;
    const QString& 運用 = ctx.env.運用事業所コード;
    if (運用 != QStringLiteral("000") && v.事業所コード != QStringLiteral("000") && v.事業所コード != 運用)
        return false;
    if (条件(4, s_.部門コード) && v.部門コード != s_.部門コード)
        return false;
    if (条件(5, s_.セクションコード) && v.セクションコード != s_.セクションコード)
        return false;
    return true;
}
