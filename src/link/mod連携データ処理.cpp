// The link to an outside system: the second pair of connections, to the
// outside system's own environment and database.

#include "link/mod連携データ処理.h"

#include "platform/os/files.h"
#include "shell/modデータ処理.h"
#include "shell/値変換.h"

namespace {

const QString& sep() { return パス区切り(); }

// The slot in use, or none before 連携有無chk found one.
他業務情報型* 連携slot(Context& ctx) {
    const int n = ctx.others.連携番号;
    if (n < 0 || n >= static_cast<int>(std::size(ctx.others.slot)))
        return nullptr;
    return &ctx.others.slot[n];
}

void 接続設定(db::Connection& cn) {
    cn.connectionTimeout = 60;
    cn.commandTimeout = 30000;
    cn.cursorLocation = 3;
}

QString 環境接続文字列(const QString& provider, const QString& file) {
    return provider + QStringLiteral("User ID=;") + QStringLiteral("Password=;") + QStringLiteral("Data Source=") +
           file;
}

const QString& 動作環境SQL() {
    static const QString sql =
        QStringLiteral("SELECT * FROM 動作環境定義") + QStringLiteral(" WHERE 動作環境定義ID = '001'");
    return sql;
}

const QString& ユーザSQL() {
    static const QString sql = QStringLiteral("SELECT * FROM Mユーザ WHERE ID = '0001'");
    return sql;
}

// The outside system's office and installation kind from its environment row.
void 動作環境take(const db::Recordset& rs, 他業務情報型& s) {
    const db::Field office = rs.field(QStringLiteral("運用事業所コード"));
    s.運用事業所コード = office.isNull() ? QStringLiteral("000") : office.text();
    const db::Field kind = rs.field(QStringLiteral("インストール区分"));
    s.インストール区分 = kind.isNull() ? short(0) : 整数(kind.text());
    const db::Field update = rs.field(QStringLiteral("CL更新実行区分"));
    s.CL更新実行区分 = update.isNull() ? short(0) : 整数(update.text());
}

void 非空take(const db::Recordset& rs, const char* column, QString& into) {
    項目copy(rs.field(QString::fromUtf8(column)), into);
}

bool 連携なし(Context& ctx, const QString& sql) {
    エラー履歴add(ctx, sql + QStringLiteral("連携先がありません"));
    return false;
}

} // namespace

bool 連携有無chk(Context& ctx, const QString& 業務名) {
    auto& others = ctx.others;
    // Slots 0 up to and including 他業務件数; of two equal slots the lower wins.
    for (int i = 0; i <= others.他業務件数 && i < static_cast<int>(std::size(others.slot)); ++i) {
        const 他業務情報型& s = others.slot[i];
        if (s.業務名 == 業務名 && s.連携有無区分 == 1) {
            others.連携番号 = i;
            return true;
        }
    }
    return false;
}

bool 連携DBopen(Context& ctx) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return false;
    const QString コマンド = ctx.sys.commandLine().trimmed();
    if (!s->連携アプリフォルダ.isEmpty()) {
        if (!連携環境DBopen(ctx))
            return false;
        const QString 基準日時 = ctx.sys.now().addSecs(-60).toString(QStringLiteral("yyyyMMdd HHmmss"));
        if (ctx.link.起動連携情報.isEmpty())
            連携受信read(
                ctx, コマンド, 基準日時,
                [&ctx](db::Recordset& rs, const QString& sql) { return 連携環境SQLopen(ctx, rs, sql); },
                [&ctx](const QString& sql) { return 連携環境SQLexec(ctx, sql); });
    }
    return 連携業務DBopen(ctx);
}

void 連携DBclose(Context& ctx) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return;
    if (s->環境DB接続中) {
        s->環境DB接続.close();
        s->環境DB接続中 = false;
    }
    if (s->業務DB接続中) {
        s->業務DB接続.close();
        s->業務DB接続中 = false;
    }
}

bool 連携環境DBopen(Context& ctx) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return false;
    const QString& app = s->連携アプリフォルダ;
    s->prgbinフォルダ = app + sep() + QStringLiteral("prgbin");
    s->共通confフォルダ = app + sep() + QStringLiteral("conf");
    s->gnrdbパス = app + sep() + QStringLiteral("data") + sep() + QStringLiteral("gnrdb.mdb");
    s->manualフォルダ = app + sep() + QStringLiteral("manual");
    s->共通reportフォルダ = app + sep() + QStringLiteral("report");

    // Every failure up to the connection of the run ends here.
    const auto failed = [&](const db::Error& e) {
        s->環境DB接続中 = false;
        ctx.msg.show(QStringLiteral("連携syb_open ERROR") + QString::number(e.number) + QLatin1Char(' ') +
                         e.description + QChar(13) + QStringLiteral("sysopen error"),
                     ui::Buttons::Ok, 1);
        return false;
    };

    {
        // The outside system's own definition outranks M他業務連携.
        db::Connection file;
        if (!file.open(環境接続文字列(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;"),
                                      s->共通confフォルダ + sep() + QStringLiteral("usrcnfg.mdb"))))
            return failed(file.lastError());
        db::Recordset rs;
        if (!rs.open(QStringLiteral("SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'"), file))
            return failed(rs.lastError());
        if (!rs.eof()) {
            非空take(rs, "db", s->連携DB);
            非空take(rs, "dbmw", s->連携DBMW);
            非空take(rs, "ドライバ名", s->連携ドライバ名);
            非空take(rs, "データベース名", s->連携データベース名);
            非空take(rs, "サーバー名", s->連携サーバー名);
            非空take(rs, "接続文字列", s->連携接続文字列);
            非空take(rs, "ユーザーID", s->連携ユーザーID);
            非空take(rs, "パスワード", s->連携パスワード);
            非空take(rs, "データソース名", s->連携データソース名);
            非空take(rs, "プロバイダ名", s->プロバイダ名);
        }
        rs.close();
        if (!rs.open(動作環境SQL(), file))
            return failed(rs.lastError());
        if (!rs.eof())
            動作環境take(rs, *s);
        rs.close();
        file.close();
    }

    switch (s->インストール区分) {
    case 0:
        s->confフォルダ = s->共通confフォルダ;
        s->reportフォルダ = s->共通reportフォルダ;
        break;
    case 1: {
        const QString root = s->prgbinフォルダ.left(s->prgbinフォルダ.indexOf(QStringLiteral("prgbin")));
        const QString user = root + QStringLiteral("users") + sep() + ctx.terminal.ユーザ名;
        s->confフォルダ = user + sep() + QStringLiteral("conf");
        s->reportフォルダ = user + sep() + QStringLiteral("report");
        連携利用者環境copy(ctx);
        break;
    }
    default:
        break;
    }

    接続設定(s->環境DB接続);
    if (!s->環境DB接続.open(環境接続文字列(QStringLiteral("Provider=Microsoft.Jet.OLEdb.4.0;"),
                                           s->confフォルダ + sep() + QStringLiteral("usrcnfg.mdb;"))))
        return failed(s->環境DB接続.lastError());
    s->環境DB接続中 = true;

    db::Recordset rs;
    if (連携環境SQLopen(ctx, rs, 動作環境SQL()))
        動作環境take(rs, *s);
    rs.close();
    return s->環境DB接続中;
}

bool 連携環境DBreopen(Context& ctx) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return false;
    if (s->環境DB接続中) {
        s->環境DB接続.close();
        s->環境DB接続中 = false;
    }
    接続設定(s->環境DB接続);
    s->環境DB接続中 = s->環境DB接続.open(環境接続文字列(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;"),
                                                        s->confフォルダ + sep() + QStringLiteral("usrcnfg.mdb;")));
    return s->環境DB接続中;
}

void 連携利用者環境copy(Context& ctx) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return;
    // A step that fails leaves a row in the run history, and the next one runs.
    const auto report = [&](const QString& what) {
        エラー履歴add(ctx, what + QStringLiteral(" User ConfF=") + s->confフォルダ + QStringLiteral(" User Report =") +
                                s->reportフォルダ);
    };
    const auto copy = [&](const QString& folder, const QString& name) {
        const QString from = folder == s->confフォルダ ? s->共通confフォルダ : s->共通reportフォルダ;
        if (!os::copyFile(from + sep() + name, folder + sep() + name))
            report(QStringLiteral("ファイルをコピーできません: ") + from + sep() + name);
    };

    フォルダ作成make(ctx, s->confフォルダ + sep());
    if (!os::fileExists(s->confフォルダ + sep() + QStringLiteral("usrcnfg.mdb")))
        copy(s->confフォルダ, QStringLiteral("usrcnfg.mdb"));

    // The report databases are copied once. A shared file that is missing is
    // no reason to pass over in silence: its copy fails and says so.
    フォルダ作成make(ctx, s->reportフォルダ + sep());
    if (os::fileExists(s->reportフォルダ + sep() + QStringLiteral("repdb.mdb")))
        return;
    ctx.wait.show();
    copy(s->reportフォルダ, QStringLiteral("repdb.mdb"));
    copy(s->reportフォルダ, QStringLiteral("repfrmdb.mdb"));
    // The report forms' linked tables follow the user's own copy, where the
    // desktop database tool could be registered; the form file opens with the
    // default engine.
    if (ctx.DBツール登録 && ctx.DBツール登録(ctx))
        帳票リンクrefresh(ctx, s->reportフォルダ + sep() + QStringLiteral("repfrmdb.mdb"), QString(),
                          s->reportフォルダ + sep() + QStringLiteral("repdb.mdb"), report);
    ctx.wait.close();
}

bool 連携業務DBopen(Context& ctx) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return false;
    // A row that names its database alone, with no outside environment to
    // give the provider, is reached with the provider of this installation.
    const QString provider = s->プロバイダ名.isEmpty() ? ctx.conn.プロバイダ名 : s->プロバイダ名;
    const QString head = QStringLiteral("Provider=") + provider + QStringLiteral(";") + QStringLiteral("User ID=") +
                         s->連携ユーザーID + QStringLiteral(";") + QStringLiteral("Password=") + s->連携パスワード +
                         QStringLiteral(";");
    QString text;
    if (s->連携DB == QLatin1String("A")) {
        text = head + QStringLiteral("Data Source=") + s->連携データソース名 + QStringLiteral(";");
        ctx.folders.Accessデータパス = s->連携データソース名.trimmed();
    } else if (s->連携DB == QLatin1String("S")) {
        text = head + QStringLiteral("Data Source=") + s->連携サーバー名 + QStringLiteral(";") +
               QStringLiteral("Initial Catalog=") + s->連携データベース名 + QStringLiteral(";");
    } else if (s->連携DB == QLatin1String("O")) {
        text = head + QStringLiteral("Data Source=") + s->連携データソース名 + QStringLiteral(";");
    }
    if (!text.isEmpty()) {
        接続設定(s->業務DB接続);
        s->業務DB接続.setDialect(s->連携DB);
        if (!s->業務DB接続.open(text)) {
            s->業務DB接続中 = false;
            const db::Error& e = s->業務DB接続.lastError();
            エラー履歴add(ctx, QStringLiteral("連携db_OPEN ERROR") + QString::number(e.number) + QLatin1Char(' ') +
                                   e.description);
            return false;
        }
    }
    // With an unknown letter nothing is open, and the read below fails.
    s->業務DB接続中 = true;
    db::Recordset rs;
    if (連携SQLopen(ctx, rs, ユーザSQL())) {
        const db::Field f = rs.field(QStringLiteral("更新実行区分"));
        s->更新実行区分 = f.isNull() ? short(0) : 整数(f.text());
    }
    rs.close();
    s->業務DB接続中 = 連携ユーザ情報read(ctx);
    return s->業務DB接続中;
}

bool 連携ユーザ情報read(Context& ctx) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return false;
    db::Recordset rs;
    const bool found = 連携SQLopen(ctx, rs, ユーザSQL());
    if (found) {
        非空take(rs, "写真フォルダ", s->写真フォルダ);
        非空take(rs, "ドキュメントフォルダ", s->ドキュメントフォルダ);
        非空take(rs, "総合振込ファイル", s->総合振込ファイル);
        非空take(rs, "基本読込フォルダ", s->基本読込フォルダ);
        非空take(rs, "帳票イメージフォルダ", s->帳票イメージフォルダ);
        非空take(rs, "その他読込ファイル", s->その他読込ファイル);
        非空take(rs, "本支店連携フォルダ", s->本支店連携フォルダ);
        非空take(rs, "テキスト出力フォルダ", s->テキスト出力フォルダ);
        非空take(rs, "BACKUPフォルダ", s->BACKUPフォルダ);
    }
    rs.close();
    return found;
}

bool 連携SQLopen(Context& ctx, db::Recordset& rs, const QString& sql, bool 履歴) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return 連携なし(ctx, sql);
    if (!rs.open(sql, s->業務DB接続)) {
        エラー履歴add(ctx, sql + rs.lastError().description);
        return false;
    }
    if (履歴)
        出力終了履歴add(ctx, sql);
    return !rs.bof() && !rs.eof();
}

bool 連携環境SQLopen(Context& ctx, db::Recordset& rs, const QString& sql) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return 連携なし(ctx, sql);
    if (!rs.open(sql, s->環境DB接続)) {
        if (!sql.contains(QStringLiteral("プログラム稼動履歴"), Qt::CaseInsensitive))
            エラー履歴add(ctx, sql + rs.lastError().description);
        return false;
    }
    return !rs.bof() && !rs.eof();
}

bool 連携環境SQLexec(Context& ctx, const QString& sql) {
    他業務情報型* s = 連携slot(ctx);
    if (!s)
        return 連携なし(ctx, sql);
    if (!s->環境DB接続.execute(sql)) {
        if (!sql.contains(QStringLiteral("プログラム稼動履歴"), Qt::CaseInsensitive))
            エラー履歴add(ctx, sql + s->環境DB接続.lastError().description);
        return false;
    }
    return true;
}
