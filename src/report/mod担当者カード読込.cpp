#include "report/mod担当者カード読込.h"

#include "platform/os/files.h"
#include "shell/modデータ処理.h"
#include "toolkit/mod基本項目.h"
#include "toolkit/mod項目編集.h"

#include <QDate>

namespace {

// A statement with its flag: whether it has a WHERE yet.
struct 文 {
    QString sql;
    bool 結合済 = false;
    void add(const QString& condition) {
        sql += 結合済 ? QStringLiteral(" AND ") : QStringLiteral(" WHERE ");
        sql += condition;
        結合済 = true;
    }
};

// A code range of the conditions. The whole range of the field ("000" to
// "999") sets no condition, so that rows without that code come too; a blank
// end is open.
void 範囲add(文& q, const QString& column, const QString& from, const QString& to, int width) {
    if (from == QString(width, QLatin1Char('0')) && to == QString(width, QLatin1Char('9')))
        return;
    if (!from.isEmpty())
        q.add(column + QStringLiteral(" >= '") + from + QStringLiteral("'"));
    if (!to.isEmpty())
        q.add(column + QStringLiteral(" <= '") + to + QStringLiteral("'"));
}

QString 文字(const db::Recordset& rs, const char* column) {
    return rs.field(QString::fromUtf8(column)).text().trimmed();
}

bool 日付形式(const QString& text) {
    if (text.size() != 8)
        return false;
    for (const QChar ch : text) {
        if (ch < QLatin1Char('0') || ch > QLatin1Char('9'))
            return false;
    }
    return true;
}

QDate 日付値(const QString& text) {
    return 日付形式(text) ? QDate::fromString(text, QStringLiteral("yyyyMMdd")) : QDate();
}

// The first photo of a code: the first file by name that begins with the code.
QString 写真最初path(const QString& folder, const QString& code) {
    if (code.isEmpty() || folder.isEmpty())
        return QString();
    const QStringList names = os::listFolder(folder, code + QStringLiteral("*"));
    for (const QString& name : names) {
        const QString path = folder + QLatin1Char('/') + name;
        if (os::fileExists(path))
            return path;
    }
    return QString();
}

} // namespace

QString 担当者カードSQLmake(const 担当者カード条件& 条件, const QString& db) {
    const QString 項目 = QStringLiteral(
        " M担当者.*, M事業所.名称 AS 事業所名, M部門.名称 AS 部門名, Mセクション.名称 AS セクション名,"
        " M役職.名称 AS 役職名, K性別区分.名称 AS 性別名, K在籍区分.名称 AS 在籍区分名, K社員区分.名称 AS 社員区分名");
    文 q;
    if (db == QLatin1String("A") || db == QLatin1String("S")) {
        q.sql =
            QStringLiteral("SELECT") + 項目 +
            QStringLiteral(" FROM K社員区分 RIGHT JOIN (K在籍区分 RIGHT JOIN (K性別区分 RIGHT JOIN (M役職 RIGHT JOIN "
                           "(Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M担当者 ON M事業所.コード = "
                           "M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) ON Mセクション.コード = "
                           "M担当者.セクションコード) ON M役職.コード = M担当者.役職コード) ON K性別区分.区分 = "
                           "M担当者.性別区分) ON K在籍区分.区分 = M担当者.在籍区分) ON K社員区分.区分 = "
                           "M担当者.社員区分");
    } else if (db == QLatin1String("O")) {
        q.sql =
            QStringLiteral("SELECT") + 項目 +
            QStringLiteral(" FROM K社員区分,K在籍区分,K性別区分,M役職,Mセクション,M部門,M事業所,M担当者") +
            QStringLiteral(" WHERE M事業所.コード(+) = M担当者.事業所コード AND M部門.コード(+) = M担当者.部門コード"
                           " AND Mセクション.コード(+) = M担当者.セクションコード AND M役職.コード(+) = "
                           "M担当者.役職コード AND K性別区分.区分(+) = M担当者.性別区分 AND K在籍区分.区分(+) = "
                           "M担当者.在籍区分 AND K社員区分.区分(+) = M担当者.社員区分");
        q.結合済 = true;
    } else {
        return QString();
    }
    範囲add(q, QStringLiteral("M担当者.事業所コード"), 条件.事業所コード自, 条件.事業所コード至, 3);
    範囲add(q, QStringLiteral("M担当者.部門コード"), 条件.部門コード自, 条件.部門コード至, 3);
    範囲add(q, QStringLiteral("M担当者.セクションコード"), 条件.セクションコード自, 条件.セクションコード至, 3);
    範囲add(q, QStringLiteral("M担当者.役職コード"), 条件.役職コード自, 条件.役職コード至, 2);
    範囲add(q, QStringLiteral("M担当者.コード"), 条件.担当者コード自, 条件.担当者コード至, 5);
    if (条件.在籍区分 != QLatin1String("*"))
        q.add(QStringLiteral("M担当者.在籍区分 = '") + 条件.在籍区分 + QStringLiteral("'"));
    if (条件.社員区分 != QLatin1String("*"))
        q.add(QStringLiteral("M担当者.社員区分 = '") + 条件.社員区分 + QStringLiteral("'"));
    return q.sql + QStringLiteral(" ORDER BY M担当者.コード");
}

和暦表示::和暦表示(Context& ctx) : ctx_(ctx) {
    db::Recordset rs;
    if (業務SQLopen(ctx, rs, QStringLiteral("SELECT * FROM K年号区分"))) {
        for (; !rs.eof(); rs.moveNext())
            年号名_.insert(rs.field(QStringLiteral("区分")).text().trimmed(),
                           rs.field(QStringLiteral("名称")).text().trimmed());
    }
    rs.close();
}

QString 和暦表示::日付(const QString& yyyymmdd) const {
    const QString text = yyyymmdd.trimmed();
    if (!日付形式(text))
        return text;
    const QString month = QString::number(text.mid(4, 2).toInt());
    const QString day = QString::number(text.mid(6, 2).toInt());
    short era = 0;
    QString year;
    const auto open = [this](db::Recordset& rs, const QString& sql) { return 業務SQLopen(ctx_, rs, sql); };
    QString 年 = QString::number(text.left(4).toInt());
    if (年号日付conv(open, text, era, year) && era != 0 && 年号名_.contains(QString::number(era))) {
        const int n = year.toInt();
        年 = 年号名_.value(QString::number(era)) + (n == 1 ? QStringLiteral("元") : QString::number(n));
    }
    return 年 + QStringLiteral("年") + month + QStringLiteral("月") + day + QStringLiteral("日");
}

int 和暦表示::満年齢(const QString& 生年月日, const QString& 基準日) {
    const QDate birth = 日付値(生年月日.trimmed());
    const QDate at = 日付値(基準日.trimmed());
    if (!birth.isValid() || !at.isValid() || at < birth)
        return -1;
    int age = at.year() - birth.year();
    if (at.month() < birth.month() || (at.month() == birth.month() && at.day() < birth.day()))
        --age;
    return age;
}

bool 担当者カード読込(Context& ctx, const 担当者カード条件& 条件, QList<担当者カード行>& 行, QString& 文) {
    行.clear();
    文 = 担当者カードSQLmake(条件, ctx.conn.db);
    db::Recordset rs;
    const bool found = 業務SQLopen(ctx, rs, 文);
    if (!found) {
        const bool ran = rs.isOpen();
        rs.close();
        return ran;
    }
    // Without a photo folder the cards go without pictures.
    const QString base = ctx.company.写真フォルダ.trimmed();
    const QString 写真folder = base.isEmpty() ? QString() : base + QStringLiteral("/担当者");
    const QString 印folder = base.isEmpty() ? QString() : base + QStringLiteral("/担当者印");
    QList<担当者カード行> rows;
    for (; !rs.eof(); rs.moveNext()) {
        担当者カード行 r;
        r.コード = 文字(rs, "コード");
        r.氏名 = 文字(rs, "氏名");
        if (r.氏名.isEmpty())
            r.氏名 = (文字(rs, "姓") + QLatin1Char(' ') + 文字(rs, "名")).trimmed();
        r.カナ = 文字(rs, "カナ");
        if (r.カナ.isEmpty())
            r.カナ = (文字(rs, "カナ姓") + QLatin1Char(' ') + 文字(rs, "カナ名")).trimmed();
        // Kana are kept in half-width characters; the card shows them full-width.
        r.カナ = 全角conv(r.カナ);
        r.性別区分 = 文字(rs, "性別区分");
        r.性別名 = 文字(rs, "性別名");
        r.生年月日 = 文字(rs, "生年月日");
        r.郵便番号 = 文字(rs, "郵便番号");
        r.住所A = 文字(rs, "住所A");
        r.住所B = 文字(rs, "住所B");
        r.住所C = 文字(rs, "住所C");
        r.電話 = 文字(rs, "電話");
        r.携帯電話 = 文字(rs, "携帯電話");
        r.EMAIL = 文字(rs, "EMAIL");
        r.事業所コード = 文字(rs, "事業所コード");
        r.事業所名 = 文字(rs, "事業所名");
        r.部門コード = 文字(rs, "部門コード");
        r.部門名 = 文字(rs, "部門名");
        r.セクションコード = 文字(rs, "セクションコード");
        r.セクション名 = 文字(rs, "セクション名");
        r.役職コード = 文字(rs, "役職コード");
        r.役職名 = 文字(rs, "役職名");
        r.職責 = 文字(rs, "職責");
        r.ログインID = 文字(rs, "ログインID");
        r.在籍区分 = 文字(rs, "在籍区分");
        r.在籍区分名 = 文字(rs, "在籍区分名");
        r.社員区分 = 文字(rs, "社員区分");
        r.社員区分名 = 文字(rs, "社員区分名");
        r.入社日付 = 文字(rs, "入社日付");
        r.退社日付 = 文字(rs, "退社日付");
        r.担当者メモ = rs.field(QStringLiteral("担当者メモ")).text();
        r.写真path = 写真最初path(写真folder, r.コード);
        if (const QString seal = 文字(rs, "担当者印file"); !seal.isEmpty() && !印folder.isEmpty()) {
            const QString path = 印folder + QLatin1Char('/') + seal;
            if (os::fileExists(path))
                r.担当者印path = path;
        }
        rows.append(r);
    }
    rs.close();
    // The era forms after the rows: their reads go over the same connection.
    const 和暦表示 和暦(ctx);
    for (担当者カード行& r : rows) {
        r.生年月日表示 = 和暦.日付(r.生年月日);
        r.入社日付表示 = 和暦.日付(r.入社日付);
        r.退社日付表示 = 和暦.日付(r.退社日付);
    }
    行 = rows;
    return true;
}
