// Registration of the installation's folders with the desktop database tool.

#include "client/modクライアント処理.h"

#include "shell/modデータ処理.h"

#include <QList>

namespace {

using Hive = os::Registry::Hive;
using Access = os::Registry::Access;
using Key = os::Registry::Key;

// Texts are read into buffers of this many characters, the terminator included.
constexpr int kバッファ長 = 256;

// A version of the tool: the folder names that tell it, the key of its trusted
// locations below the Office key ("" for none), and whether it needs the level.
struct 版情報 {
    QString 名前;
    QString 大文字名;
    QString 信頼場所キー;
    bool レベル;
};

const QList<版情報>& 版一覧() {
    // The last two are one version out of step with their folder names.
    static const QList<版情報> list = {
        {QStringLiteral("Office9"), QStringLiteral("OFFICE9"), QString(), false},
        {QStringLiteral("Office10"), QStringLiteral("OFFICE10"), QString(), false},
        {QStringLiteral("Office11"), QStringLiteral("OFFICE11"), QString(), true},
        {QStringLiteral("Office12"), QStringLiteral("OFFICE12"),
         QStringLiteral("12.0\\Access\\Security\\Trusted Locations"), false},
        {QStringLiteral("Office14"), QStringLiteral("OFFICE14"),
         QStringLiteral("14.0\\Access\\Security\\Trusted Locations"), false},
        {QStringLiteral("Office15"), QStringLiteral("OFFICE15"),
         QStringLiteral("15.0\\Access\\Security\\Trusted Locations"), false},
        {QStringLiteral("Office16"), QStringLiteral("OFFICE16"),
         QStringLiteral("16.0\\Access\\Security\\Trusted Locations"), false},
        {QStringLiteral("Office17"), QStringLiteral("OFFICE17"),
         QStringLiteral("16.0\\Access\\Security\\Trusted Locations"), false},
        {QStringLiteral("Office18"), QStringLiteral("OFFICE18"),
         QStringLiteral("17.0\\Access\\Security\\Trusted Locations"), false},
    };
    return list;
}

const QString& 書込不可() {
    static const QString text = QStringLiteral("書き込みできません。");
    return text;
}

// The number at the head of a text, as the registry names carry it: blanks
// skipped, a sign, then digits up to the first other character; 0 when none.
qint64 数値(const QString& text) {
    qsizetype i = 0;
    const auto skipBlanks = [&] {
        while (i < text.size() && (text.at(i) == QLatin1Char(' ') || text.at(i) == QLatin1Char('\t')))
            ++i;
    };
    skipBlanks();
    bool negative = false;
    if (i < text.size() && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+'))) {
        negative = text.at(i) == QLatin1Char('-');
        ++i;
    }
    qint64 value = 0;
    for (; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char(' ') || c == QLatin1Char('\t'))
            continue;
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            break;
        if (value < 100000000000000000LL)
            value = value * 10 + (c.unicode() - u'0');
    }
    return negative ? -value : value;
}

// The format "###": the number without leading zeros, and nothing for 0.
QString 番号fmt(qint64 value) { return value == 0 ? QString() : QString::number(value); }

// The number behind "Location" in a location key's name.
qint64 場所番号(const QString& name) { return 数値(name.mid(8)); }

// Points the tool's file association at the tool. False only when the key
// cannot be opened.
bool 関連付けset(Context& ctx, const QString& 実行パス) {
    os::Registry& reg = *ctx.registry;
    Key key = 0;
    if (!reg.open(Hive::CurrentUser, QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Extensions"),
                  Access::Full, key))
        return false;
    QString value;
    if (!reg.queryText(key, QStringLiteral("mdb"), kバッファ長, value))
        value.clear();
    const QString 実行ファイル = 実行パス + QStringLiteral("MSACCESS.EXE");
    if (value != 実行ファイル && !reg.setText(key, QStringLiteral("mdb"), 実行ファイル))
        ctx.msg.show(書込不可());
    reg.close(key);
    return true;
}

// The lowest security level for the version that has no trusted locations.
bool レベルset(Context& ctx, bool 回答) {
    os::Registry& reg = *ctx.registry;
    Key key = 0;
    if (!reg.create(Hive::CurrentUser, QStringLiteral("Software\\Microsoft\\Office\\11.0\\Access\\Security"),
                    Access::Full, key))
        return 回答;
    if (!reg.setNumber(key, QStringLiteral("Level"), 1))
        ctx.msg.show(書込不可());
    reg.close(key);
    return true;
}

// Makes the report folder a trusted location of the version: the location that
// already names it is written again, otherwise a new one is made.
bool 信頼場所set(Context& ctx, const 版情報& 版, bool 回答) {
    os::Registry& reg = *ctx.registry;
    const QString& sep = パス区切り();
    const QString 場所 = ctx.folders.reportフォルダ + sep;
    const QString 親キー = QStringLiteral("Software\\Microsoft\\Office\\") + 版.信頼場所キー;
    // Only one version tells the user about locations it cannot read.
    const bool 読込報告 = 版.名前 == QLatin1String("Office14");

    Key key = 0;
    if (!reg.open(Hive::CurrentUser, 親キー, Access::Full, key) &&
        !reg.create(Hive::CurrentUser, 親キー, Access::Full, key))
        return 回答;

    bool 列挙 = true;
    if (ctx.folders.reportフォルダ.contains(sep + sep)) {
        // A folder on another machine is trusted only when network locations are.
        if (!reg.setNumber(key, QStringLiteral("AllowNetworkLocations"), 1)) {
            ctx.msg.show(書込不可());
            列挙 = false;
        }
    }

    QString 最小名, 最大名, 一致名;
    int 件数 = 0;
    if (列挙) {
        QString name;
        for (int i = 0; reg.enumerate(key, i, name); ++i) {
            name = name.trimmed();
            // Names compare as texts, so "Location10" comes before "Location9".
            if (件数 == 0 || name < 最小名)
                最小名 = name;
            if (name > 最大名)
                最大名 = name;
            ++件数;

            Key sub = 0;
            if (!reg.open(Hive::CurrentUser, 親キー + QStringLiteral("\\") + name, Access::Read, sub)) {
                if (読込報告)
                    ctx.msg.show(QStringLiteral("オープンできません。"));
                continue;
            }
            QString path;
            if (reg.queryText(sub, QStringLiteral("Path"), kバッファ長, path)) {
                if (path.contains(場所, Qt::CaseInsensitive))
                    一致名 = name;
            } else if (読込報告) {
                ctx.msg.show(QStringLiteral("オープンできません。"));
            }
            reg.close(sub);
        }
    }
    reg.close(key);

    Key 場所キー = 0;
    bool 開いた = false;
    if (!一致名.isEmpty()) {
        開いた = reg.open(Hive::CurrentUser, 親キー + QStringLiteral("\\") + 一致名, Access::Full, 場所キー);
    } else {
        QString 新名;
        if (件数 == 0) {
            新名 = QStringLiteral("\\Location0");
        } else {
            // Below the lowest number while there is room, else above the highest.
            const qint64 n = 場所番号(最小名);
            新名 = n > 0 ? QStringLiteral("\\Location") + 番号fmt(n - 1)
                         : QStringLiteral("\\Location") + 番号fmt(場所番号(最大名) + 1);
        }
        開いた = reg.create(Hive::CurrentUser, 親キー + 新名, Access::Full, 場所キー);
        if (!開いた)
            ctx.msg.show(QStringLiteral("設定できません。"));
    }
    if (開いた) {
        if (!reg.setText(場所キー, QStringLiteral("Path"), 場所))
            ctx.msg.show(書込不可());
        if (!reg.setNumber(場所キー, QStringLiteral("AllowSubfolder"), 1))
            ctx.msg.show(書込不可());
        reg.close(場所キー);
    }
    return true;
}

} // namespace

bool DBツール登録(Context& ctx) {
    os::Registry& reg = *ctx.registry;
    Key key = 0;
    if (!reg.open(Hive::LocalMachine,
                  QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\MSACCESS.EXE"), Access::Read,
                  key))
        return false;

    bool 回答 = false;
    QString path;
    if (reg.queryText(key, QStringLiteral("Path"), kバッファ長, path)) {
        ctx.folders.Access実行パス = path;
        // The first version whose folder name the tool's folder holds, in either
        // of its two spellings exactly, decides.
        for (const 版情報& 版 : 版一覧()) {
            if (!path.contains(版.名前, Qt::CaseSensitive) && !path.contains(版.大文字名, Qt::CaseSensitive))
                continue;
            回答 = 関連付けset(ctx, path);
            if (版.レベル)
                回答 = レベルset(ctx, 回答);
            if (!版.信頼場所キー.isEmpty())
                回答 = 信頼場所set(ctx, 版, 回答);
            break;
        }
    }
    reg.close(key);
    return 回答;
}
