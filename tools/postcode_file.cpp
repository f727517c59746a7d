#include "tools/postcode_file.h"

#include <QStringDecoder>

#include <iconv.h>

#include <optional>

namespace setup {

namespace {

constexpr int kColumns = 15;
// Columns, counted from 0.
constexpr int kLocalCode = 0;
constexpr int kPostcode = 2;
constexpr int kPrefecture = 6;
constexpr int kMunicipality = 7;
constexpr int kTown = 8;
constexpr int kFirstFlag = 9;

const QChar kOpen(0xFF08);  // （
const QChar kClose(0xFF09); // ）

qsizetype lineAt(const QByteArray& bytes, qsizetype offset) {
    return QByteArrayView(bytes).first(offset).count('\n') + 1;
}

// Code page 932 to Unicode through the C library. On a byte sequence that is
// not code page 932 the offset of its first byte is given instead.
std::optional<QString> fromCp932(const QByteArray& bytes, qsizetype& badOffset, QString& error) {
    iconv_t cd = iconv_open("UTF-8", "CP932");
    if (cd == reinterpret_cast<iconv_t>(-1)) {
        error = QStringLiteral("この環境の iconv は CP932 を扱えません");
        return std::nullopt;
    }
    // One byte of code page 932 (a half-width kana) becomes at most three of UTF-8.
    QByteArray out(bytes.size() * 3 + 16, Qt::Uninitialized);
    char* in = const_cast<char*>(bytes.constData());
    std::size_t inLeft = static_cast<std::size_t>(bytes.size());
    char* to = out.data();
    std::size_t outLeft = static_cast<std::size_t>(out.size());
    const std::size_t done = iconv(cd, &in, &inLeft, &to, &outLeft);
    iconv_close(cd);
    if (done == static_cast<std::size_t>(-1)) {
        badOffset = in - bytes.constData();
        return std::nullopt;
    }
    out.truncate(out.size() - static_cast<qsizetype>(outLeft));
    return QString::fromUtf8(out);
}

std::optional<QString> strictUtf8(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

bool hasNonAscii(QByteArrayView bytes) {
    for (const char c : bytes) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return true;
    }
    return false;
}

// One CSV record: fields separated by commas, each plain or in double quotes
// with doubled quotes inside.
bool splitRecord(QStringView line, QStringList& fields, QString& problem) {
    fields.clear();
    qsizetype i = 0;
    const qsizetype n = line.size();
    while (true) {
        QString field;
        if (i < n && line[i] == QLatin1Char('"')) {
            ++i;
            while (true) {
                if (i >= n) {
                    problem = QStringLiteral("引用符 \" が閉じていません");
                    return false;
                }
                if (line[i] == QLatin1Char('"')) {
                    if (i + 1 < n && line[i + 1] == QLatin1Char('"')) {
                        field += QLatin1Char('"');
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                field += line[i++];
            }
            if (i < n && line[i] != QLatin1Char(',')) {
                problem = QStringLiteral("引用符 \" で閉じた項目の後に , がありません");
                return false;
            }
        } else {
            const qsizetype comma = line.indexOf(QLatin1Char(','), i);
            const qsizetype end = comma < 0 ? n : comma;
            field = line.mid(i, end - i).toString();
            if (field.contains(QLatin1Char('"'))) {
                problem = QStringLiteral("引用符 \" が項目の途中にあります");
                return false;
            }
            i = end;
        }
        fields.append(field);
        if (i >= n)
            return true;
        ++i; // the comma
    }
}

bool digits(const QString& text, qsizetype count) {
    if (text.size() != count)
        return false;
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

bool checkRecord(const QStringList& f, QString& problem) {
    if (f.size() != kColumns) {
        problem = QStringLiteral("列の数が %1 ではありません (%2 列)").arg(kColumns).arg(f.size());
        return false;
    }
    if (!digits(f.at(kLocalCode), 5)) {
        problem = QStringLiteral("1 列目の全国地方公共団体コードが数字5桁ではありません: ") + f.at(kLocalCode);
        return false;
    }
    if (!digits(f.at(kPostcode), 7)) {
        problem = QStringLiteral("3 列目の郵便番号が数字7桁ではありません: ") + f.at(kPostcode);
        return false;
    }
    if (f.at(kPrefecture).trimmed().isEmpty() || f.at(kMunicipality).trimmed().isEmpty()) {
        problem = QStringLiteral("7 列目の都道府県名か 8 列目の市区町村名が空です");
        return false;
    }
    for (int column = kFirstFlag; column < kColumns; ++column) {
        if (!digits(f.at(column), 1)) {
            problem = QStringLiteral("%1 列目が数字1桁ではありません: %2").arg(column + 1).arg(f.at(column));
            return false;
        }
    }
    return true;
}

// A town area still waiting for its closing parenthesis.
struct OpenTown {
    QString postcode, prefecture, municipality, town;
    qsizetype line = 0;
};

bool stillOpen(const QString& town) { return town.count(kOpen) > town.count(kClose); }

} // namespace

QString townArea(const QString& published) {
    if (published == QStringLiteral("以下に掲載がない場合") ||
        published.endsWith(QStringLiteral("の次に番地がくる場合")))
        return {};
    if (published.endsWith(QStringLiteral("一円")) && published != QStringLiteral("一円"))
        return {};
    return published;
}

AllJapanRows readAllJapanCsv(const QByteArray& content, const QString& name) {
    AllJapanRows result;
    const auto refuse = [&](qsizetype line, const QString& problem) {
        result.rows.clear();
        result.error =
            QStringLiteral("郵便番号データの形式が違います: %1 の %2 行目: %3").arg(name).arg(line).arg(problem);
        return result;
    };

    // Text has no NUL bytes; a picture, an archive or a program has plenty.
    if (const qsizetype nul = content.indexOf('\0'); nul >= 0)
        return refuse(lineAt(content, nul),
                      QStringLiteral("テキストファイルではありません (CSV ファイルを指定してください)"));

    QString text;
    static const QByteArray bom("\xEF\xBB\xBF");
    if (content.startsWith(bom)) {
        const auto utf8 = strictUtf8(QByteArrayView(content).sliced(bom.size()));
        if (!utf8)
            return refuse(1, QStringLiteral("UTF-8 の印で始まりますが、UTF-8 として読めません"));
        text = *utf8;
    } else if (const auto utf8 = hasNonAscii(content) ? strictUtf8(content) : std::nullopt) {
        text = *utf8;
    } else {
        qsizetype bad = -1;
        QString error;
        const auto cp932 = fromCp932(content, bad, error);
        if (!cp932) {
            if (!error.isEmpty()) {
                result.error = error;
                return result;
            }
            return refuse(lineAt(content, bad), bad >= content.size() - 1
                                                    ? QStringLiteral("ファイルが文字の途中で終わっています")
                                                    : QStringLiteral("シフトJIS (コードページ932) として読めません"));
        }
        text = *cp932;
    }

    std::optional<OpenTown> open;
    const auto add = [&result](const QString& postcode, const QString& prefecture, const QString& municipality,
                               const QString& town) {
        result.rows.append(
            {postcode.left(3) + QLatin1Char('-') + postcode.mid(3), prefecture + municipality, townArea(town)});
    };

    const QStringList lines = text.split(QLatin1Char('\n'));
    QStringList fields;
    QString problem;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QStringView line(lines.at(i));
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        if (line.trimmed().isEmpty())
            continue;
        const qsizetype number = i + 1;
        if (!splitRecord(line, fields, problem) || !checkRecord(fields, problem))
            return refuse(number, problem);
        ++result.records;
        const QString& postcode = fields.at(kPostcode);
        const QString& prefecture = fields.at(kPrefecture);
        const QString& municipality = fields.at(kMunicipality);
        const QString& town = fields.at(kTown);
        if (open) {
            if (open->postcode == postcode && open->prefecture == prefecture && open->municipality == municipality) {
                open->town += town;
                if (!stillOpen(open->town)) {
                    add(open->postcode, open->prefecture, open->municipality, open->town);
                    open.reset();
                }
                continue;
            }
            // Another postcode before the parenthesis closed: the town area is taken as far as it went.
            add(open->postcode, open->prefecture, open->municipality, open->town);
            open.reset();
        }
        if (stillOpen(town)) {
            open = OpenTown{postcode, prefecture, municipality, town, number};
            continue;
        }
        add(postcode, prefecture, municipality, town);
    }
    if (open)
        return refuse(open->line, QStringLiteral("町域名の （ が閉じないままファイルが終わっています "
                                                 "(ファイルが途中で切れていませんか)"));
    if (result.records == 0) {
        result.error = QStringLiteral("郵便番号データに行がありません: ") + name;
        return result;
    }
    result.ok = true;
    return result;
}

} // namespace setup
