#include "staff/mod担当者保存.h"

#include "numbers/mod基本履歴番号.h"
#include "platform/os/files.h"
#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "shell/暗証番号.h"
#include "staff/mod写真図面.h"
#include "staff/mod担当者登録.h"
#include "toolkit/mod項目編集.h"

#include <QCoreApplication>
#include <QLabel>

namespace {

QString 日時(const Context& ctx) {
    return ctx.sys.now().toString(QStringLiteral("yyyyMMdd HHmmss"));
}

QString ユーザID(const Context& ctx) {
    return ctx.terminal.ユーザID + ctx.op.操作担当者コード + ctx.terminal.コンピュータ名;
}

// The columns of M担当者 in the order of the INSERT, with whether a text
// column is put through the quote doubling.
struct Column {
    const char* name;
    bool quoted;
};

const Column kColumns[] = {
    {"コード", false},           {"姓", true},                {"名", true},
    {"氏名", true},              {"カナ姓", true},            {"カナ名", true},
    {"カナ", true},              {"性別区分", false},         {"生年月日", false},
    {"郵便番号", false},         {"住所A", true},             {"住所B", true},
    {"住所C", true},             {"電話", false},             {"携帯電話", false},
    {"職責", true},              {"EMAIL", true},             {"担当者メモ", true},
    {"事業所コード", false},     {"部門コード", false},       {"セクションコード", false},
    {"役職コード", false},       {"ログインID", true},        {"在籍区分", false},
    {"社員区分", false},         {"入社日付", false},         {"退社日付", false},
    {"担当者印file", false},     {"電話番号", false},         {"携帯電話番号", false},
    {"社員コード", false},       {"暗証番号", true},          {"処理分類0操作許可", false},
    {"処理分類1操作許可", false}, {"処理分類2操作許可", false}, {"処理分類3操作許可", false},
    {"処理分類4操作許可", false}, {"処理分類5操作許可", false}, {"処理分類6操作許可", false},
    {"処理分類7操作許可", false}, {"処理分類8操作許可", false}, {"処理分類9操作許可", false},
    {"操作許可", false},         {"入力許可", false},         {"修正許可", false},
    {"削除許可", false},         {"印刷許可", false},         {"プレビュ許可", false},
    {"テキスト出力許可", false}, {"イメージ出力許可", false}, {"ユーザID", false},
    {"登録日付", false},         {"更新日付", false}};

// The values written from the screen record, in column order.
QStringList recordValues(Context& ctx) {
    const 担当者情報型& r = ctx.担当者情報;
    QStringList v{r.コード,
                  引用符conv(r.姓),
                  引用符conv(r.名),
                  引用符conv(r.氏名),
                  引用符conv(r.カナ姓),
                  引用符conv(r.カナ名),
                  引用符conv(r.カナ),
                  QString::number(r.性別区分),
                  r.生年月日,
                  r.郵便番号,
                  引用符conv(r.住所A),
                  引用符conv(r.住所B),
                  引用符conv(r.住所C),
                  r.電話,
                  r.携帯電話,
                  引用符conv(r.職責),
                  引用符conv(r.EMAIL),
                  引用符conv(r.担当者メモ),
                  r.事業所コード,
                  r.部門コード,
                  r.セクションコード,
                  r.役職コード,
                  引用符conv(r.ログインID),
                  QString::number(r.在籍区分),
                  QString::number(r.社員区分),
                  r.入社日付,
                  r.退社日付,
                  r.担当者印file,
                  数字抽出conv(r.電話),
                  数字抽出conv(r.携帯電話),
                  r.社員コード,
                  引用符conv(暗証番号encode(ctx, r.暗証番号))};
    for (const QString& flag : r.処理分類操作許可)
        v.append(flag);
    v << r.操作許可 << r.入力許可 << r.修正許可 << r.削除許可 << r.印刷許可 << r.プレビュ許可 << r.テキスト出力許可
      << r.イメージ出力許可 << ユーザID(ctx) << r.登録日付 << r.更新日付;
    return v;
}

// ",姓,名,...,更新日付)" behind the first column.
QString furtherNames() {
    QString names;
    for (size_t i = 1; i < std::size(kColumns); ++i)
        names += QLatin1Char(',') + QString::fromUtf8(kColumns[i].name);
    return names + QLatin1Char(')');
}

// "('v1','v2',...,'vn')"
QString valueList(const QStringList& values) {
    QString text = QStringLiteral("('") + values.first() + QStringLiteral("'");
    for (qsizetype i = 1; i < values.size(); ++i)
        text += QStringLiteral(",'") + values.at(i) + QStringLiteral("'");
    return text + QStringLiteral(")");
}

// The INSERT of one row of the maintenance log; only the first five names are bracketed.
QString logInsert(const Context& ctx, const QString& base, const QString& number, bool black, const QStringList& values) {
    QStringList all{ctx.run.操作事業所コード, base, number, black ? QStringLiteral("1") : QStringLiteral("0")};
    all += values;
    return QStringLiteral("INSERT INTO [L担当者] ") + QStringLiteral("([保守事業所コード]") +
           QStringLiteral(",[保守番号基準日付]") + QStringLiteral(",[保守履歴No]") + QStringLiteral(",[赤黒区分]") +
           QStringLiteral(",[コード]") + furtherNames() + QStringLiteral(" VALUES ") + valueList(all);
}

void logOutcome(Context& ctx, bool ok) {
    ctx.screen.処理結果区分 = ok ? 1 : 3;
    ctx.screen.処理結果文 = ok ? QString() : QStringLiteral("登録済です。登録できませんでした。");
}

void 電話帳(Context& ctx) {
    const 担当者情報型& r = ctx.担当者情報;
    電話番号upsert(ctx, r.電話, r.氏名, r.郵便番号, r.住所A, r.住所B, r.住所C, 0);
    電話番号upsert(ctx, r.携帯電話, r.氏名, r.郵便番号, r.住所A, r.住所B, r.住所C, 0);
}

QString sealFolder(const Context& ctx) {
    return ctx.company.写真フォルダ + QStringLiteral("/担当者印");
}

} // namespace

void 担当者save(Context& ctx) {
    if (ctx.screen.新規フラグ) {
        担当者insert(ctx);
        if (ctx.screen.単独起動フラグ && ctx.screen.処理結果区分 == 1)
            ctx.link.終了連携情報 = ctx.担当者情報.コード;
    } else {
        担当者update(ctx);
    }
    担当者印save(ctx);
}

QString コード重複chk(Context& ctx) {
    QString code = ctx.担当者情報.コード;
    // The count of passes stops where a 16-bit count would overflow.
    for (int pass = 1; pass <= 32767; ++pass) {
        QCoreApplication::processEvents();
        db::Recordset rs;
        const bool taken = 業務SQLopen(ctx, rs,
                                       QStringLiteral("SELECT TOP 1 コード") + QStringLiteral(" FROM M担当者") +
                                           QStringLiteral(" WHERE コード = '") + code + QStringLiteral("'"));
        rs.close();
        if (!taken)
            return code;
        code = QStringLiteral("%1").arg(static_cast<qint64>(数値(code)) + 1, 5, 10, QLatin1Char('0')).left(5);
        if (auto* notice = ctx.主画面 ? ctx.主画面->findChild<QLabel*>(QStringLiteral("お知らせ")) : nullptr)
            notice->setText(QStringLiteral("コード重複チェック"));
    }
    return QString();
}

void 担当者insert(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    const QString free = コード重複chk(ctx);
    if (free.isEmpty()) {
        ctx.screen.処理結果区分 = 0;
        ctx.screen.処理結果文 = QStringLiteral("最大件数を超えました。登録できません。");
        return;
    }
    if (free == r.コード) {
        ctx.screen.処理結果区分 = 1;
        ctx.screen.処理結果文.clear();
    } else {
        r.コード = free;
        ctx.screen.処理結果区分 = 2;
        ctx.screen.処理結果文 = QStringLiteral("最新コード:") + free + QStringLiteral("で登録しました。");
    }
    r.登録日付 = 日時(ctx);
    const QString sql = QStringLiteral("INSERT INTO M担当者 ") + QStringLiteral("(コード") + furtherNames() +
                        QStringLiteral(" VALUES ") + valueList(recordValues(ctx));
    if (!業務SQLexec(ctx, sql, true)) {
        ctx.screen.処理結果区分 = 0;
        ctx.screen.処理結果文 = QStringLiteral("登録できませんでした。");
        return;
    }
    // The code the duplicate check chose is not announced: the notice stays empty.
    ctx.screen.処理結果区分 = 1;
    ctx.screen.処理結果文.clear();
    担当者log黒(ctx);
    電話帳(ctx);
}

void 担当者update(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    担当者log赤(ctx);
    r.更新日付 = 日時(ctx);
    const QStringList values = recordValues(ctx);
    QString sql = QStringLiteral("UPDATE M担当者 SET") + QStringLiteral(" コード = '") + values.first() + QStringLiteral("'");
    for (size_t i = 1; i < std::size(kColumns); ++i) {
        const QString name = QString::fromUtf8(kColumns[i].name);
        if (name == QStringLiteral("登録日付"))
            continue;
        sql += QLatin1Char(',') + name + QStringLiteral(" = '") + values.at(static_cast<qsizetype>(i)) +
               QStringLiteral("'");
    }
    sql += QStringLiteral(" WHERE コード = '") + r.コード + QStringLiteral("'");
    if (!業務SQLexec(ctx, sql, true)) {
        ctx.screen.処理結果区分 = 4;
        ctx.screen.処理結果文 = QStringLiteral("既に削除されています。修正できませんでした。");
        return;
    }
    ctx.screen.処理結果区分 = 5;
    ctx.screen.処理結果文.clear();
    担当者log黒(ctx);
    電話帳(ctx);
}

void 担当者log黒(Context& ctx) {
    const QString base = 履歴基準日get(ctx, QStringLiteral("210"));
    const QString number = 履歴番号get(ctx, QStringLiteral("210"), base, ctx.run.操作事業所コード);
    logOutcome(ctx, 業務SQLexec(ctx, logInsert(ctx, base, number, true, recordValues(ctx)), false));
}

void 担当者log赤(Context& ctx) {
    // The number is drawn before the row is read, and used up even when it is gone.
    const QString base = 履歴基準日get(ctx, QStringLiteral("210"));
    const QString number = 履歴番号get(ctx, QStringLiteral("210"), base, ctx.run.操作事業所コード);
    db::Recordset rs;
    if (!業務SQLopen(ctx, rs,
                     QStringLiteral("SELECT * FROM M担当者 WHERE コード = '") + ctx.担当者情報.コード +
                         QStringLiteral("'"))) {
        rs.close();
        return;
    }
    QStringList values;
    for (const Column& c : kColumns) {
        const QString name = QString::fromUtf8(c.name);
        const QString value = rs.field(name).text();
        if (name == QStringLiteral("更新日付"))
            values.append(日時(ctx)); // the moment of the change
        else
            values.append(c.quoted ? 引用符conv(value) : value);
    }
    rs.close();
    logOutcome(ctx, 業務SQLexec(ctx, logInsert(ctx, base, number, false, values), false));
}

void 電話番号upsert(Context& ctx, const QString& 電話, const QString& 名称, const QString& 郵便番号,
                    const QString& 住所A, const QString& 住所B, const QString& 住所C, short 法人個人区分) {
    if (電話.trimmed().size() < 7)
        return;
    const QString digits = 数字抽出conv(電話);
    if (digits.trimmed().size() < 7)
        return;
    db::Recordset rs;
    const bool exists = 業務SQLopen(ctx, rs,
                                    QStringLiteral("SELECT * FROM M電話番号 WHERE 電話番号 = '") + digits +
                                        QStringLiteral("'"));
    rs.close();
    const QString now = QStringLiteral("'") + 日時(ctx) + QStringLiteral("'");
    const QString kind = QString::number(法人個人区分);
    QString sql;
    if (!exists) {
        sql = QStringLiteral("INSERT INTO M電話番号 (") + QStringLiteral("電話,") + QStringLiteral("名称,") +
              QStringLiteral("郵便番号,") + QStringLiteral("住所A,") + QStringLiteral("住所B,") +
              QStringLiteral("住所C,") + QStringLiteral("電話番号,") + QStringLiteral("法人個人区分,") +
              QStringLiteral("ユーザID,") + QStringLiteral("登録日付) ") + QStringLiteral("VALUES ('") + 電話 +
              QStringLiteral("', '") + 引用符conv(名称) + QStringLiteral("', '") + 郵便番号 + QStringLiteral("', '") +
              引用符conv(住所A) + QStringLiteral("', '") + 引用符conv(住所B) + QStringLiteral("', '") +
              引用符conv(住所C) + QStringLiteral("', '") + digits + QStringLiteral("', '") + kind +
              QStringLiteral("', '") + ユーザID(ctx) + QStringLiteral("', ") + now + QStringLiteral(")");
    } else {
        sql = QStringLiteral("UPDATE M電話番号 SET ") + QStringLiteral("電話 = '") + 電話 + QStringLiteral("', ") +
              QStringLiteral("名称 = '") + 引用符conv(名称) + QStringLiteral("', ") + QStringLiteral("郵便番号 = '") +
              郵便番号 + QStringLiteral("', ") + QStringLiteral("住所A = '") + 引用符conv(住所A) + QStringLiteral("', ") +
              QStringLiteral("住所B = '") + 引用符conv(住所B) + QStringLiteral("', ") + QStringLiteral("住所C = '") +
              引用符conv(住所C) + QStringLiteral("', ") + QStringLiteral("法人個人区分 = '") + kind +
              QStringLiteral("', ") + QStringLiteral("ユーザID = '") + ユーザID(ctx) + QStringLiteral("', ") +
              QStringLiteral("更新日付 = ") + now + QStringLiteral(" WHERE 電話番号 = '") + digits +
              QStringLiteral("'");
    }
    業務SQLexec(ctx, sql, false);
}

void 担当者印save(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    if (r.取込担当者印path.isEmpty())
        return;
    const QString source = r.取込担当者印path;
    const QString name = source.mid(source.lastIndexOf(QLatin1Char('/')) + 1);
    if (!ファイル存在chk(source) || !name.contains(QLatin1Char('.')))
        return;
    if (!r.担当者印file.isEmpty())
        担当者印delete(ctx);
    r.担当者印file = r.コード.trimmed() + extensionOf(name, 5);
    フォルダ作成make(ctx, sealFolder(ctx) + QLatin1Char('/') + r.担当者印file);
    ファイル複写copy(source, sealFolder(ctx) + QLatin1Char('/') + r.担当者印file);
}

void 担当者印delete(Context& ctx) {
    const QString file = ctx.担当者情報.担当者印file;
    if (!file.isEmpty() && ファイル存在chk(sealFolder(ctx) + QLatin1Char('/') + file))
        os::removeFile(sealFolder(ctx) + QLatin1Char('/') + file);
}
