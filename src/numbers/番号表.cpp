#include "numbers/番号表.h"

#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "toolkit/mod基本項目.h"

#include <cmath>

namespace {

QString ゼロ番号() { return QStringLiteral("00000000"); }

QString 連番種類() { return QStringLiteral("連番種類"); }

// One counter row: its table, the WHERE that finds it, the read of the
// definition row that must succeed before the row is created, and the INSERT
// that creates it.
struct 番号行 {
    QString 表;
    QString WHERE;
    QString 確認SELECT;
    QString INSERT;
};

QString 表SELECT(const QString& 表, const QString& where) {
    return QStringLiteral("SELECT ") + 表 + QStringLiteral(".*") + QStringLiteral(" FROM ") + 表 + where;
}

QString 定義WHERE(const 番号表& t, const QString& 表, const QString& id) {
    return QStringLiteral(" WHERE ") + 表 + QLatin1Char('.') + t.キー + QStringLiteral(" = '") + id + QLatin1Char('\'');
}

QString 定義SELECT(const 番号表& t, const QString& id) { return 表SELECT(t.定義表, 定義WHERE(t, t.定義表, id)); }

// "INSERT INTO [table] ([a],[b],[counters...]) VALUES ('a','b','00000000'...)"
QString 作成INSERT(const 番号表& t, const QString& 表, QStringList 列, QStringList 値) {
    for (const QString& counter : t.作成項目) {
        列.append(counter);
        値.append(ゼロ番号());
    }
    return QStringLiteral("INSERT INTO [") + 表 + QStringLiteral("] ") + QStringLiteral("([") +
           列.join(QStringLiteral("],[")) + QStringLiteral("])") + QStringLiteral(" VALUES ") + QStringLiteral("('") +
           値.join(QStringLiteral("','")) + QStringLiteral("')");
}

QString 期日項目() { return QStringLiteral("期日"); }

QString 事業所項目() { return QStringLiteral("事業所コード"); }

番号行 期日別行(const 番号表& t, const QString& id, const QString& 期日) {
    return {t.期日別表,
            QStringLiteral(" WHERE ") + t.期日別表 + QLatin1Char('.') + t.キー + QStringLiteral(" = '") + id +
                QStringLiteral("' AND ") + t.期日別表 + QStringLiteral(".期日 = '") + 期日 + QLatin1Char('\''),
            定義SELECT(t, id), 作成INSERT(t, t.期日別表, {t.キー, 期日項目()}, {id, 期日})};
}

番号行 事業所別行(const 番号表& t, const QString& id, const QString& 事業所コード) {
    return {t.事業所別表,
            QStringLiteral(" WHERE ") + t.事業所別表 + QStringLiteral(".事業所コード = '") + 事業所コード +
                QStringLiteral("' AND ") + t.事業所別表 + QLatin1Char('.') + t.キー + QStringLiteral(" = '") + id +
                QLatin1Char('\''),
            定義SELECT(t, id), 作成INSERT(t, t.事業所別表, {事業所項目(), t.キー}, {事業所コード, id})};
}

// The check before a per-office dated row names the per-office table in its
// WHERE but not in its FROM. It never succeeds, so per-office dated counters
// work only with rows that are already in the table. Kept as it stands, so that
// the numbering behaves as it always has.
番号行 事業所別期日別行(const 番号表& t, const QString& id, const QString& 期日, const QString& 事業所コード) {
    const QString& 表 = t.事業所別期日別表;
    return {表,
            QStringLiteral(" WHERE ") + 表 + QStringLiteral(".事業所コード = '") + 事業所コード +
                QStringLiteral("' AND ") + 表 + QLatin1Char('.') + t.キー + QStringLiteral(" = '") + id +
                QStringLiteral("' AND ") + 表 + QStringLiteral(".期日 = '") + 期日 + QLatin1Char('\''),
            表SELECT(t.定義表, 定義WHERE(t, t.事業所別表, id)),
            作成INSERT(t, 表, {事業所項目(), t.キー, 期日項目()}, {事業所コード, id, 期日})};
}

// The stored counter plus one as eight digits. A text that is not a number
// counts as 0; a result of "00000000" (a stored -1) becomes "00000001". There
// is no wrap: after 99999999 comes 100000000.
QString 次番号(const QString& stored) {
    const double value = std::round(数値(stored) + 1);
    QString digits = QString::number(std::fabs(value), 'f', 0).rightJustified(8, QLatin1Char('0'));
    if (value < 0)
        digits.prepend(QLatin1Char('-'));
    return digits == ゼロ番号() ? QStringLiteral("00000001") : digits;
}

QString 連番UPDATE(const 番号表& t, const QString& 表, const QString& value, const QString& where) {
    return QStringLiteral("UPDATE ") + 表 + QStringLiteral(" SET ") + QLatin1Char(' ') + t.連番項目 +
           QStringLiteral(" = '") + value + QLatin1Char('\'') + where;
}

// Creates the counter row when it is missing and the definition row is found.
void 行確保(Context& ctx, const 番号行& 行) {
    db::Recordset rs;
    const bool exists = 業務SQLopen(ctx, rs, 表SELECT(行.表, 行.WHERE));
    rs.close();
    if (exists)
        return;
    const bool defined = 業務SQLopen(ctx, rs, 行.確認SELECT);
    rs.close();
    if (defined)
        業務SQLexec(ctx, 行.INSERT);
}

// Reads the row's counter, raises it and writes it back. A row that cannot be
// read gives the empty text; the UPDATE with it still runs and matches nothing.
QString 行draw(Context& ctx, const 番号表& t, const 番号行& 行) {
    db::Recordset rs;
    QString value;
    if (業務SQLopen(ctx, rs, 表SELECT(行.表, 行.WHERE)))
        value = 次番号(rs.field(t.連番項目).text());
    rs.close();
    業務SQLexec(ctx, 連番UPDATE(t, 行.表, value, 行.WHERE));
    return value;
}

QString 番号draw(Context& ctx, const 番号表& t, const QString& id, const QString& 基準日, const QString& 事業所コード,
                 bool 事業所別) {
    db::Recordset rs;
    const bool defined = 業務SQLopen(ctx, rs, 定義SELECT(t, id));
    const short kind = defined ? 整数(rs.field(連番種類()).text()) : 0;
    const QString 定義連番 = defined ? rs.field(t.連番項目).text() : QString();
    rs.close();
    if (!defined) {
        ctx.msg.show(t.問題文);
        return ゼロ番号();
    }

    const bool 期日別 = kind > 0 && kind < 4;
    const bool 無番号 = t.種類外無番号 && !期日別 && kind != 0;
    const 番号行 dated = 事業所別 ? 事業所別期日別行(t, id, 基準日, 事業所コード) : 期日別行(t, id, 基準日);
    if (期日別 || 無番号)
        行確保(ctx, dated);
    if (期日別)
        return 行draw(ctx, t, dated);
    if (無番号)
        return QString();

    if (事業所別) {
        const 番号行 office = 事業所別行(t, id, 事業所コード);
        行確保(ctx, office);
        return 行draw(ctx, t, office);
    }
    const QString value = 次番号(定義連番);
    業務SQLexec(ctx, 連番UPDATE(t, t.定義表, value, 定義WHERE(t, t.定義表, id)));
    return value;
}

} // namespace

QString 番号基準日choose(Context& ctx, const 番号表& 表, const QString& id, const QString& 日付) {
    const QString 年度末日 = 年度末日get(日付, ctx.company.決算月, ctx.company.決算日);
    const QString 月度末日 = 月度末日get(日付, ctx.company.決算月, ctx.company.決算日);
    db::Recordset rs;
    QString 基準日;
    if (業務SQLopen(ctx, rs, 定義SELECT(表, id))) {
        switch (整数(rs.field(連番種類()).text())) {
        case 0:
            基準日 = QStringLiteral("99999999");
            break;
        case 1:
            基準日 = 年度末日;
            break;
        case 2:
            基準日 = 月度末日;
            break;
        case 3:
            基準日 = 日付;
            break;
        default:
            基準日 = QStringLiteral("88888888");
            break;
        }
    }
    rs.close();
    return 基準日;
}

QString 番号採番(Context& ctx, const 番号表& 表, const QString& id, const QString& 基準日,
                 const QString& 事業所コード) {
    const QString value = 番号draw(ctx, 表, id, 基準日, 事業所コード, ctx.company.伝票番号管理区分 != 0);
    if (value == ゼロ番号())
        ctx.msg.show(QStringLiteral("番号情報に問題が発生設定できませんでした。"));
    return value;
}
