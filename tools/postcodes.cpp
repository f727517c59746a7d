#include "tools/postcodes.h"

#include "tools/postcode_file.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace setup {

namespace {

const QString kSample = QStringLiteral(":/setup/postcodes.json");
constexpr int kNpmTimeoutMs = 180000;
constexpr int kTarTimeoutMs = 120000;

// Gathers the rows for M郵便番号, leaving out rows that repeat one already
// taken: its key is the postcode with both parts of the address.
class Collector {
public:
    // The package's entries ("_" and seven digits, prefecture, city, town, ...);
    // its other entries are passed over.
    void add(const QJsonArray& entries) {
        static const QRegularExpression code(QStringLiteral("^_(\\d{3})(\\d{4})$"));
        for (const QJsonValue& value : entries) {
            const QJsonArray entry = value.toArray();
            if (entry.size() < 4)
                continue;
            const auto m = code.match(entry.at(0).toString());
            if (!m.hasMatch())
                continue;
            addRow({m.captured(1) + QLatin1Char('-') + m.captured(2), entry.at(1).toString() + entry.at(2).toString(),
                    townArea(entry.at(3).toString())});
        }
    }
    void addRows(const QList<QStringList>& rows) {
        for (const QStringList& row : rows)
            addRow(row);
    }
    QList<QStringList> take() { return std::move(rows_); }

private:
    void addRow(const QStringList& row) {
        const QString key = row.join(QChar(0x1f));
        if (seen_.contains(key))
            return;
        seen_.insert(key);
        rows_.append(row);
    }

    QSet<QString> seen_;
    QList<QStringList> rows_;
};

bool readSample(Collector& collector, QString& error) {
    QFile file(kSample);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("同梱の郵便番号データを読めません");
        return false;
    }
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll());
    collector.add(doc.object().value(QStringLiteral("entries")).toArray());
    return true;
}

// One file of the package: a JSONP call around the array of entries.
bool readPackageFile(const QString& path, Collector& collector, QString& error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("郵便番号データを読めません: ") + path;
        return false;
    }
    const QByteArray text = file.readAll();
    const qsizetype open = text.indexOf('(');
    const qsizetype close = text.lastIndexOf(')');
    if (open < 0 || close <= open) {
        error = QStringLiteral("郵便番号データの形式が違います: ") + path;
        return false;
    }
    QJsonParseError parse;
    const QJsonDocument doc = QJsonDocument::fromJson(text.mid(open + 1, close - open - 1), &parse);
    if (parse.error != QJsonParseError::NoError || !doc.isArray()) {
        error = QStringLiteral("郵便番号データの形式が違います: %1 (%2)").arg(path, parse.errorString());
        return false;
    }
    collector.add(doc.array());
    return true;
}

bool runTool(const QString& program, const QStringList& arguments, const QString& folder, int timeoutMs,
             QString& error) {
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForStarted()) {
        error = QStringLiteral("%1 を起動できません").arg(program);
        return false;
    }
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        error = QStringLiteral("%1 が時間内に終わりませんでした").arg(program);
        return false;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString output = QString::fromLocal8Bit(process.readAll()).trimmed();
        error = QStringLiteral("%1 が失敗しました (終了コード %2)").arg(program).arg(process.exitCode());
        if (!output.isEmpty())
            error += QStringLiteral(": ") + output.right(400);
        return false;
    }
    return true;
}

// Unpacks the package's postcode files and reads them all.
bool readPackage(const QString& tgz, Collector& collector, QString& error) {
    QTemporaryDir work;
    if (!work.isValid()) {
        error = QStringLiteral("作業フォルダを作成できません");
        return false;
    }
    if (!runTool(QStringLiteral("tar"),
                 {QStringLiteral("-xzf"), QFileInfo(tgz).absoluteFilePath(), QStringLiteral("-C"), work.path()},
                 work.path(), kTarTimeoutMs, error))
        return false;
    const QDir json(work.filePath(QStringLiteral("package/json")));
    const QStringList files = json.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    if (files.isEmpty()) {
        error = QStringLiteral("郵便番号データのパッケージに package/json がありません: ") + tgz;
        return false;
    }
    for (const QString& name : files) {
        if (!readPackageFile(json.filePath(name), collector, error))
            return false;
    }
    return true;
}

// Fetches the pinned package with npm into the folder; the path of the .tgz.
bool fetchPackage(const QString& folder, QString& tgz, QString& error) {
    if (!runTool(QStringLiteral("npm"),
                 {QStringLiteral("pack"), QString::fromLatin1(kPostcodePackage), QStringLiteral("--silent"),
                  QStringLiteral("--fetch-retries=1"), QStringLiteral("--fetch-timeout=60000")},
                 folder, kNpmTimeoutMs, error))
        return false;
    const QStringList found = QDir(folder).entryList({QStringLiteral("*.tgz")}, QDir::Files);
    if (found.isEmpty()) {
        error = QStringLiteral("npm pack がパッケージを作りませんでした");
        return false;
    }
    tgz = QDir(folder).filePath(found.first());
    return true;
}

// The largest all-Japan file taken: the published one is under 20 MB.
constexpr qint64 kMaxCsvBytes = 200LL * 1024 * 1024;
constexpr int kUnzipTimeoutMs = 120000;

bool readAllJapan(const QByteArray& content, const QString& name, Collector& collector, QString& error,
                  const std::function<void(const QString&)>& progress) {
    const AllJapanRows file = readAllJapanCsv(content, name);
    if (!file.ok) {
        error = file.error;
        return false;
    }
    progress(QStringLiteral("郵便番号データ: %1 行を読みました (続きの行をまとめて %2 件)")
                 .arg(file.records)
                 .arg(file.rows.size()));
    collector.addRows(file.rows);
    return true;
}

bool readWhole(const QString& path, QByteArray& content, QString& error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("郵便番号データを読めません: %1 (%2)").arg(path, file.errorString());
        return false;
    }
    if (file.size() > kMaxCsvBytes) {
        error = QStringLiteral("郵便番号データとしては大きすぎます (%1 バイト): %2").arg(file.size()).arg(path);
        return false;
    }
    content = file.readAll();
    return true;
}

// A zip file that holds the CSV file: the one member whose name ends in ".csv".
bool readAllJapanZip(const QString& zip, Collector& collector, QString& error,
                     const std::function<void(const QString&)>& progress) {
    if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty()) {
        error = QStringLiteral("zip ファイルを開く unzip がありません (Debian パッケージ unzip): ") + zip;
        return false;
    }
    QTemporaryDir work;
    if (!work.isValid()) {
        error = QStringLiteral("作業フォルダを作成できません");
        return false;
    }
    if (!runTool(QStringLiteral("unzip"),
                 {QStringLiteral("-qq"), QStringLiteral("-o"), QFileInfo(zip).absoluteFilePath(), QStringLiteral("-d"),
                  work.path()},
                 work.path(), kUnzipTimeoutMs, error)) {
        // The first part of the message says how unzip ended; the rest is its own lengthy explanation.
        error = QStringLiteral("zip ファイルを展開できません (壊れているか、途中で切れています): %1 (%2)")
                    .arg(zip, error.section(QStringLiteral(": "), 0, 0));
        return false;
    }
    QStringList found;
    QDirIterator it(work.path(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (path.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive))
            found.append(path);
    }
    if (found.size() != 1) {
        error = found.isEmpty()
                    ? QStringLiteral("zip ファイルに CSV ファイルがありません: ") + zip
                    : QStringLiteral("zip ファイルに CSV ファイルが %1 つあります。一つだけにしてください: %2")
                          .arg(found.size())
                          .arg(zip);
        return false;
    }
    QByteArray content;
    const QString member = QDir(work.path()).relativeFilePath(found.first());
    return readWhole(found.first(), content, error) &&
           readAllJapan(content, zip + QLatin1Char('/') + member, collector, error, progress);
}

// A file at hand: the npm package (.tgz), the all-Japan CSV file or a zip of it,
// told apart by their first bytes rather than by their names.
bool readFile(const QString& path, Collector& collector, QString& error,
              const std::function<void(const QString&)>& progress) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("郵便番号データを読めません: %1 (%2)").arg(path, file.errorString());
        return false;
    }
    const QByteArray head = file.read(4);
    file.close();
    if (head.startsWith("\x1f\x8b"))
        return readPackage(path, collector, error);
    if (head.startsWith("PK\x03\x04") || head.startsWith("PK\x05\x06"))
        return readAllJapanZip(path, collector, error, progress);
    QByteArray content;
    return readWhole(path, content, error) && readAllJapan(content, path, collector, error, progress);
}

} // namespace

bool npmAvailable() { return !QStandardPaths::findExecutable(QStringLiteral("npm")).isEmpty(); }

PostcodeRows readPostcodes(Postcodes mode, const QString& packageFile,
                           const std::function<void(const QString&)>& progressGiven, bool sampleWhenOffline) {
    const std::function<void(const QString&)> progress =
        progressGiven ? progressGiven : [](const QString&) {}; // a caller may want no progress lines
    PostcodeRows result;
    Collector collector;
    switch (mode) {
    case Postcodes::Fixture:
        result.ok = readSample(collector, result.error);
        break;
    case Postcodes::File:
        progress(QStringLiteral("郵便番号データを読んでいます: ") + packageFile);
        result.ok = readFile(packageFile, collector, result.error, progress);
        break;
    case Postcodes::Npm: {
        progress(QStringLiteral("郵便番号データを npm から取得しています: ") + QString::fromLatin1(kPostcodePackage));
        QTemporaryDir download;
        QString tgz;
        QString why;
        if (download.isValid() && fetchPackage(download.path(), tgz, why) && readPackage(tgz, collector, why)) {
            result.ok = true;
            break;
        }
        if (!download.isValid())
            why = QStringLiteral("作業フォルダを作成できません");
        if (!sampleWhenOffline) {
            result.error = QStringLiteral("郵便番号データを npm から取得できませんでした: ") + why;
            break;
        }
        result.note =
            QStringLiteral("郵便番号データを取得できませんでした (%1)。同梱の見本データだけを登録しました。").arg(why);
        progress(result.note);
        collector = Collector();
        result.ok = readSample(collector, result.error);
        break;
    }
    }
    result.rows = collector.take();
    if (result.ok && result.rows.isEmpty()) {
        result.ok = false;
        result.error = QStringLiteral("郵便番号データに行がありません");
    }
    return result;
}

} // namespace setup
