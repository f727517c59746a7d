#include "tools/postcode_update.h"

#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "tools/postcodes.h"
#include "tools/rows.h"

#include <QDir>
#include <QFileInfo>

namespace setup {

namespace {

constexpr qsizetype kRowsPerStatement = 500;
constexpr qsizetype kRowsPerStep = 10000;

QString desktopText(const QString& file) {
    return QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=%1;").arg(file);
}

// The configuration database of the tree: the ".accdb" file wins over the ".mdb" one.
QString configurationFile(const QString& root) {
    for (const char* name : {"conf/usrcnfg.accdb", "conf/usrcnfg.mdb"}) {
        const QString path = QDir(root).filePath(QString::fromLatin1(name));
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

QString insertStatement(const QList<QStringList>& rows, qsizetype first, qsizetype last) {
    QString sql = QStringLiteral("INSERT INTO M郵便番号 (郵便番号, 住所A, 住所B) VALUES ");
    for (qsizetype i = first; i < last; ++i) {
        const QStringList& row = rows.at(i);
        if (i > first)
            sql += QStringLiteral(", ");
        sql += QLatin1Char('(') + quoted(row.at(0)) + QStringLiteral(", ") + quoted(row.at(1)) + QStringLiteral(", ") +
               quoted(row.at(2)) + QLatin1Char(')');
    }
    return sql;
}

} // namespace

QString installedMainConnection(const QString& root, QString& dialect, QString& error) {
    const QString config = configurationFile(root);
    if (config.isEmpty()) {
        error = QStringLiteral("インストール先ではありません (conf/usrcnfg.accdb がありません): ") + root;
        return {};
    }
    db::Connection connection;
    if (!connection.open(desktopText(config))) {
        error = QStringLiteral("環境データベースを開けません: %1 (%2)").arg(config, connection.lastError().description);
        return {};
    }
    db::Recordset rs;
    if (!rs.open(QStringLiteral("SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'"), connection) || rs.eof()) {
        error = QStringLiteral("環境データベースにデータベース定義 (GNR) がありません: ") + config;
        return {};
    }
    const auto text = [&rs](const char* column) { return rs.field(QString::fromUtf8(column)).text().trimmed(); };
    dialect = rs.field(QStringLiteral("db")).text();
    const QString head = QStringLiteral("Provider=%1;User ID=%2;Password=%3;")
                             .arg(text("プロバイダ名"), text("ユーザーID"), text("パスワード"));
    QString result;
    if (dialect == QLatin1String("A") || dialect == QLatin1String("O"))
        result = head + QStringLiteral("Data Source=%1;").arg(text("データソース名"));
    else if (dialect == QLatin1String("S"))
        result =
            head + QStringLiteral("Data Source=%1;Initial Catalog=%2;").arg(text("サーバー名"), text("データベース名"));
    else
        error =
            QStringLiteral("データベース定義の db が A, S, O のどれでもありません (\"%1\"): %2").arg(dialect, config);
    rs.close();
    return result;
}

Result updatePostcodes(const QString& rootGiven, Postcodes source, const QString& file,
                       const std::function<void(const QString&)>& progressGiven) {
    const auto progress = progressGiven ? progressGiven : [](const QString&) {};
    const QString root = QDir::cleanPath(QFileInfo(rootGiven).absoluteFilePath());
    if (!QFileInfo(root).isDir())
        return {false, QStringLiteral("インストール先フォルダがありません: ") + root};
    QString dialect;
    QString error;
    const QString mainText = installedMainConnection(root, dialect, error);
    if (mainText.isEmpty())
        return {false, error};
    if (source == Postcodes::File && !QFileInfo(file).isFile())
        return {false, QStringLiteral("郵便番号データのファイルが見つかりません: ") + file};

    // The whole source first: a file that is refused never reaches the database.
    const PostcodeRows postcodes = readPostcodes(source, file, progress, false);
    if (!postcodes.ok)
        return {false, postcodes.error + QStringLiteral("\n郵便番号データは入れ替えていません。")};
    const QList<QStringList>& rows = postcodes.rows;

    db::Connection main;
    main.setDialect(dialect);
    if (!main.open(mainText))
        return {false, QStringLiteral("業務データベースを開けません: ") + main.lastError().description};
    qsizetype before = -1;
    {
        db::Recordset count;
        if (!count.open(QStringLiteral("SELECT COUNT(*) AS 件数 FROM M郵便番号"), main) || count.eof())
            return {false,
                    QStringLiteral("業務データベースの M郵便番号 を読めません: ") + count.lastError().description};
        before = count.field(QStringLiteral("件数")).value.toLongLong();
    }

    // One transaction, so that a failure anywhere leaves the old rows; a lost
    // connection inside it is not reopened.
    const auto failed = [&](const QString& what) {
        const QString why = main.lastError().description.simplified();
        main.rollbackTransaction();
        return Result{false,
                      QStringLiteral("%1: %2\n郵便番号データは元のままです (%3 件)。").arg(what, why).arg(before)};
    };
    if (!main.beginTransaction())
        return {false, QStringLiteral("業務データベースでトランザクションを始められません: ") +
                           main.lastError().description.simplified()};
    progress(QStringLiteral("郵便番号を入れ替えています: 0 / %1 件").arg(rows.size()));
    if (!main.execute(QStringLiteral("DELETE FROM M郵便番号")))
        return failed(QStringLiteral("M郵便番号 の行を消せません"));
    for (qsizetype first = 0; first < rows.size(); first += kRowsPerStatement) {
        const qsizetype last = std::min(rows.size(), first + kRowsPerStatement);
        if (!main.execute(insertStatement(rows, first, last)))
            return failed(QStringLiteral("M郵便番号 に登録できません"));
        if (last % kRowsPerStep == 0 || last == rows.size())
            progress(QStringLiteral("郵便番号を入れ替えています: %1 / %2 件").arg(last).arg(rows.size()));
    }
    if (!main.commitTransaction())
        return {false, QStringLiteral("郵便番号の入れ替えを確定できません: %1\n郵便番号データは元のままです (%2 件)。")
                           .arg(main.lastError().description.simplified())
                           .arg(before)};
    QString message =
        QStringLiteral("郵便番号データを入れ替えました: %1 件 (前は %2 件): %3").arg(rows.size()).arg(before).arg(root);
    if (!postcodes.note.isEmpty())
        message += QLatin1Char('\n') + postcodes.note;
    return {true, message};
}

} // namespace setup
