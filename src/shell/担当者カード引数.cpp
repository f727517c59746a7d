#include "shell/担当者カード引数.h"

#include <QList>

#include <utility>

namespace {

// The fields behind the office of the run, in their order, with their widths.
struct 欄 {
    const char16_t* 名前;
    int 幅;
    QString 担当者カード条件::*値;
};

const QList<欄>& 範囲欄() {
    using C = 担当者カード条件;
    static const QList<欄> fields{
        {u"事業所コード(自)", 3, &C::事業所コード自},
        {u"事業所コード(至)", 3, &C::事業所コード至},
        {u"部門コード(自)", 3, &C::部門コード自},
        {u"部門コード(至)", 3, &C::部門コード至},
        {u"セクションコード(自)", 3, &C::セクションコード自},
        {u"セクションコード(至)", 3, &C::セクションコード至},
        {u"役職コード(自)", 2, &C::役職コード自},
        {u"役職コード(至)", 2, &C::役職コード至},
        {u"担当者コード(自)", 5, &C::担当者コード自},
        {u"担当者コード(至)", 5, &C::担当者コード至},
    };
    return fields;
}

// Mode, the ranges and the two classes.
constexpr int 固定部分 = 1 + 3 + 3 + 3 + 3 + 3 + 3 + 2 + 2 + 5 + 5 + 1 + 1;

QString 欄make(const QString& value, int width) { return value.leftJustified(width, QLatin1Char(' '), true); }

// Codes are letters and digits; nothing else may reach a statement.
bool コード文字(const QString& code) {
    for (const QChar ch : code) {
        if (ch.unicode() > 0x7f || !ch.isLetterOrNumber())
            return false;
    }
    return true;
}

QString 誤り(const QString& detail) {
    return QStringLiteral("担当者カードの引数が正しくありません。") + QChar(13) + detail;
}

QString 引用(const QString& text) { return QStringLiteral("\"") + text + QStringLiteral("\""); }

} // namespace

QString 担当者カードプログラム名() {
#ifdef Q_OS_WIN
    return QStringLiteral("担当者カード.exe");
#else
    return QStringLiteral("担当者カード");
#endif
}

QString 担当者カード引数make(const 担当者カード条件& 条件) {
    QString text = 条件.操作事業所コード + 条件.モード;
    for (const 欄& f : 範囲欄())
        text += 欄make(条件.*(f.値), f.幅);
    return text + 条件.在籍区分 + 条件.社員区分;
}

bool 担当者カード引数parse(const QString& 引数, 担当者カード条件& 条件, QString& エラー) {
    const QString text = 引数.trimmed();
    const qsizetype officeLength = text.size() - 固定部分;
    if (officeLength < 1 || officeLength > 3) {
        エラー = 誤り(QStringLiteral("長さは %1 から %2 文字です (%3 文字): ")
                          .arg(固定部分 + 1)
                          .arg(固定部分 + 3)
                          .arg(text.size()) +
                      引用(text));
        return false;
    }
    担当者カード条件 out;
    out.操作事業所コード = text.left(officeLength);
    if (!コード文字(out.操作事業所コード)) {
        エラー = 誤り(QStringLiteral("操作事業所コードは英数字です: ") + 引用(out.操作事業所コード));
        return false;
    }
    qsizetype at = officeLength;
    out.モード = text.mid(at, 1);
    if (out.モード != QLatin1String("0") && out.モード != QLatin1String("1")) {
        エラー = 誤り(QStringLiteral("モードは 0 (印刷) か 1 (プレビュ) です: ") + 引用(out.モード));
        return false;
    }
    at += 1;
    for (const 欄& f : 範囲欄()) {
        const QString raw = text.mid(at, f.幅);
        const QString code = raw.trimmed();
        // Left-aligned and padded with blanks, or all blanks.
        if (欄make(code, f.幅) != raw || !コード文字(code)) {
            エラー = 誤り(QString::fromUtf16(f.名前) + QStringLiteral("は %1 桁の左詰めの英数字です: ").arg(f.幅) +
                          引用(raw));
            return false;
        }
        out.*(f.値) = code;
        at += f.幅;
    }
    out.在籍区分 = text.mid(at, 1);
    out.社員区分 = text.mid(at + 1, 1);
    for (const auto& [name, value] : {std::pair{u"在籍区分", out.在籍区分}, std::pair{u"社員区分", out.社員区分}}) {
        if (value != QLatin1String("*") && !(value.at(0) >= QLatin1Char('0') && value.at(0) <= QLatin1Char('9'))) {
            エラー = 誤り(QString::fromUtf16(name) + QStringLiteral("は数字一桁か * です: ") + 引用(value));
            return false;
        }
    }
    条件 = out;
    return true;
}
