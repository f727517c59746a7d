#include "report/mod担当者カード描画.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QImageReader>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <QTextLayout>

#include <utility>

namespace {

// Captions in a gothic face, entries and the title in a mincho face.
const char16_t* const kGothic = u"Noto Sans CJK JP";
const char16_t* const kMincho = u"Noto Serif CJK JP";

const QColor kShade(0xee, 0xee, 0xee);
const QColor kCaption(0x30, 0x30, 0x30);
const QColor kFaint(0xa0, 0xa0, 0xa0);

constexpr double kThin = 0.2;  // mm, the rules inside a box
constexpr double kThick = 0.5; // mm, the frame of a box
constexpr double kPad = 2.0;   // mm, text from the rules
constexpr double kCaptionPt = 8;
constexpr double kValuePt = 10.5;
constexpr double kMinPt = 5.5;
// A line in smaller type than this is broken into lines instead.
constexpr double kOneLinePt = 8;
// Pictures go on paper at no more than this many dots per inch.
constexpr double kPictureDpi = 300;

// The lines of a text broken to a width: at its line ends, then between words
// or characters as the language allows, anywhere in a word longer than a line.
QStringList wrapped(const QString& text, const QFont& font, double width, const QPaintDevice* device) {
    QStringList lines;
    for (const QString& part : text.split(QLatin1Char('\n'))) {
        if (part.isEmpty()) {
            lines.append(QString());
            continue;
        }
        QTextLayout layout(part, font, device);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            QString piece = part.mid(line.textStart(), line.textLength());
            // The blank at a break stays behind; an indent at a line's start is kept.
            while (!piece.isEmpty() && piece.back().isSpace())
                piece.chop(1);
            lines.append(piece);
        }
        layout.endLayout();
    }
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

// A sheet measured in millimetres from the edge of the paper.
class Sheet {
public:
    explicit Sheet(QPainter& painter)
        : p_(painter), sx_(painter.device()->logicalDpiX() / 25.4), sy_(painter.device()->logicalDpiY() / 25.4) {}

    QRectF rect(double x, double y, double w, double h) const { return QRectF(x * sx_, y * sy_, w * sx_, h * sy_); }

    static QFont font(const char16_t* family, double pt, bool bold = false) {
        QFont f(QString::fromUtf16(family));
        f.setStyleHint(family == kMincho ? QFont::Serif : QFont::SansSerif);
        f.setPointSizeF(pt);
        f.setBold(bold);
        // The same shapes on paper, in the preview and in a PDF.
        f.setHintingPreference(QFont::PreferNoHinting);
        // Characters go on the sheet by the font's own table, unshaped: a PDF's
        // text map knows only those glyphs, and digits shaped among Latin
        // letters ("s00001@...") would be lost to a search or a copy.
        f.setStyleStrategy(QFont::PreferNoShaping);
        return f;
    }

    void pen(double widthMm, const QColor& colour = Qt::black, Qt::PenStyle style = Qt::SolidLine) {
        QPen pen(colour);
        pen.setWidthF(widthMm * sx_);
        pen.setStyle(style);
        pen.setJoinStyle(Qt::MiterJoin);
        p_.setPen(pen);
        p_.setBrush(Qt::NoBrush);
    }

    void frame(double x, double y, double w, double h, double widthMm) {
        pen(widthMm);
        p_.drawRect(rect(x, y, w, h));
    }

    void hline(double x1, double x2, double y, double widthMm) {
        pen(widthMm);
        p_.drawLine(QPointF(x1 * sx_, y * sy_), QPointF(x2 * sx_, y * sy_));
    }

    void fill(double x, double y, double w, double h, const QColor& colour) { p_.fillRect(rect(x, y, w, h), colour); }

    // Text in the area, whole: on one line in smaller type down to a
    // readable size, then (or at once, for a paragraph) broken into lines in
    // smaller type down to the smallest. Only beyond that is the last line
    // that fits cut with an ellipsis.
    void text(const QRectF& mm, const QString& text, QFont font, int align, bool paragraph = false,
              const QColor& colour = Qt::black) {
        if (text.trimmed().isEmpty())
            return;
        const QRectF area = rect(mm.x(), mm.y(), mm.width(), mm.height());
        p_.setPen(colour);
        const double start = font.pointSizeF();
        if (!paragraph && !text.contains(QLatin1Char('\n'))) {
            for (double pt = start; pt >= kOneLinePt; pt -= 0.5) {
                font.setPointSizeF(pt);
                const QFontMetricsF fm(font, p_.device());
                if (fm.horizontalAdvance(text) <= area.width() && fm.height() <= area.height()) {
                    p_.setFont(font);
                    p_.drawText(area, align | Qt::TextSingleLine, text);
                    return;
                }
            }
        }
        QStringList lines;
        for (double pt = start;; pt -= 0.5) {
            font.setPointSizeF(qMax(pt, kMinPt));
            const QFontMetricsF fm(font, p_.device());
            lines = wrapped(text, font, area.width(), p_.device());
            if (lines.size() * fm.lineSpacing() <= area.height() + 0.5 || pt <= kMinPt)
                break;
        }
        const QFontMetricsF fm(font, p_.device());
        const int fit = qMax(1, static_cast<int>((area.height() + 0.5) / fm.lineSpacing()));
        if (lines.size() > fit) {
            lines = lines.mid(0, fit);
            lines.last() = fm.elidedText(lines.last() + QStringLiteral("…"), Qt::ElideRight, area.width());
        }
        const double height = lines.size() * fm.lineSpacing();
        double y = area.top();
        if (align & Qt::AlignVCenter)
            y += (area.height() - height) / 2;
        p_.setFont(font);
        for (const QString& line : lines) {
            p_.drawText(QRectF(area.left(), y, area.width(), fm.lineSpacing()),
                        (align & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter | Qt::TextSingleLine, line);
            y += fm.lineSpacing();
        }
    }

    // A picture within the area, its proportions kept, centred.
    void picture(double x, double y, double w, double h, const QString& path) {
        QImageReader reader(path);
        reader.setAutoTransform(true);
        // Decoded no larger than the paper needs: a camera's photo stays small.
        const QSize most(qRound(w / 25.4 * kPictureDpi), qRound(h / 25.4 * kPictureDpi));
        const QSize size = reader.size();
        if (size.isValid() && (size.width() > most.width() || size.height() > most.height()))
            reader.setScaledSize(size.scaled(most, Qt::KeepAspectRatio));
        QImage image = reader.read();
        if (image.isNull())
            return;
        if (image.width() > most.width() || image.height() > most.height())
            image = image.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        const QRectF box = rect(x, y, w, h);
        QSizeF shown = QSizeF(image.size()).scaled(box.size(), Qt::KeepAspectRatio);
        const QRectF target(box.x() + (box.width() - shown.width()) / 2, box.y() + (box.height() - shown.height()) / 2,
                            shown.width(), shown.height());
        p_.drawImage(target, image);
    }

    QPainter& painter() { return p_; }

private:
    QPainter& p_;
    double sx_;
    double sy_;
};

// The form's columns: the left edge, the width, the caption column.
constexpr double kLeft = 15;
constexpr double kWidth = 180;
constexpr double kRight = kLeft + kWidth;
constexpr double kCaptionW = 25;
constexpr double kPictureW = 36; // the column of the photo and the seal
constexpr double kRow = 11;

// A caption cell: shaded, its text in the smaller gothic type.
void caption(Sheet& s, double x, double y, double w, double h, const QString& text) {
    s.fill(x, y, w, h, kShade);
    s.frame(x, y, w, h, kThin);
    s.text(QRectF(x + kPad, y, w - 2 * kPad, h), text, Sheet::font(kGothic, kCaptionPt),
           Qt::AlignLeft | Qt::AlignVCenter, false, kCaption);
}

// An entry cell: ruled, its text in the mincho type.
void entry(Sheet& s, double x, double y, double w, double h, const QString& text, double pt = kValuePt) {
    s.frame(x, y, w, h, kThin);
    s.text(QRectF(x + kPad, y, w - 2 * kPad, h), text, Sheet::font(kMincho, pt), Qt::AlignLeft | Qt::AlignVCenter);
}

// A caption and its entry across the given width.
void field(Sheet& s, double x, double y, double w, const QString& title, const QString& text, double h = kRow,
           double captionW = kCaptionW) {
    caption(s, x, y, captionW, h, title);
    entry(s, x + captionW, y, w - captionW, h, text);
}

// Two captions with their entries on one row of the full width.
void pair(Sheet& s, double y, const QString& t1, const QString& v1, const QString& t2, const QString& v2) {
    const double half = kWidth / 2;
    field(s, kLeft, y, half, t1, v1);
    field(s, kLeft + half, y, half, t2, v2);
}

// The heading of a box.
void heading(Sheet& s, double y, const QString& text) {
    s.text(QRectF(kLeft, y, kWidth, 6), QStringLiteral("■ ") + text, Sheet::font(kGothic, 9.5, true),
           Qt::AlignLeft | Qt::AlignVCenter);
}

// "003  営業部": a code with its name; the code alone when the name is gone.
QString codeName(const QString& code, const QString& name) {
    if (code.isEmpty())
        return name;
    return name.isEmpty() ? code : code + QStringLiteral("  ") + name;
}

QString postcode(const QString& code) {
    if (code.isEmpty())
        return QString();
    bool digits = code.size() == 7;
    for (const QChar ch : code)
        digits = digits && ch >= QLatin1Char('0') && ch <= QLatin1Char('9');
    return QStringLiteral("〒") + (digits ? code.left(3) + QLatin1Char('-') + code.mid(3) : code);
}

void pictureFrame(Sheet& s, double x, double y, double w, double h, const QString& path, const QString& empty,
                  Qt::PenStyle style) {
    if (!path.isEmpty())
        s.picture(x + 0.5, y + 0.5, w - 1, h - 1, path);
    s.pen(kThin, Qt::black, style);
    s.painter().drawRect(s.rect(x, y, w, h));
    if (path.isEmpty())
        s.text(QRectF(x, y, w, h), empty, Sheet::font(kGothic, 8), Qt::AlignCenter, false, kFaint);
}

} // namespace

void 担当者カードdraw(QPainter& painter, const 担当者カード見出し& 見出し, const 担当者カード行& r, int 頁, int 頁数) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    Sheet s(painter);

    // The head: the company, the print date, the title with its double rule.
    s.text(QRectF(kLeft, 10, 120, 6), 見出し.会社名, Sheet::font(kGothic, 10), Qt::AlignLeft | Qt::AlignVCenter);
    s.text(QRectF(kRight - 70, 10, 70, 6), QStringLiteral("印刷日  ") + 見出し.印刷日, Sheet::font(kGothic, 9),
           Qt::AlignRight | Qt::AlignVCenter);
    s.text(QRectF(kLeft, 18, kWidth, 14), QStringLiteral("担当者カード"), Sheet::font(kMincho, 22, true),
           Qt::AlignCenter);
    s.hline(70, 140, 33.2, 0.3);
    s.hline(70, 140, 34.2, 0.3);

    // Personal: code, sex, kana, name, birth date beside the photo; address, telephones, mail.
    double y = 38;
    heading(s, y, QStringLiteral("個人情報"));
    y += 6;
    const double top = y;
    const double leftW = kWidth - kPictureW;
    caption(s, kLeft, y, kCaptionW, kRow, QStringLiteral("担当者コード"));
    entry(s, kLeft + kCaptionW, y, 44, kRow, r.コード, 12);
    caption(s, kLeft + kCaptionW + 44, y, 20, kRow, QStringLiteral("性別"));
    entry(s, kLeft + kCaptionW + 64, y, leftW - kCaptionW - 64, kRow, r.性別名.isEmpty() ? r.性別区分 : r.性別名);
    y += kRow;
    caption(s, kLeft, y, kCaptionW, 8, QStringLiteral("フリガナ"));
    entry(s, kLeft + kCaptionW, y, leftW - kCaptionW, 8, r.カナ, 9);
    y += 8;
    caption(s, kLeft, y, kCaptionW, 15, QStringLiteral("氏名"));
    entry(s, kLeft + kCaptionW, y, leftW - kCaptionW, 15, r.氏名, 18);
    y += 15;
    QString birth = r.生年月日表示;
    if (const int age = 和暦表示::満年齢(r.生年月日, 見出し.印刷日付); !birth.isEmpty() && age >= 0)
        birth += QStringLiteral("（満%1歳）").arg(age);
    field(s, kLeft, y, leftW, QStringLiteral("生年月日"), birth);
    y += kRow;
    // The photo column beside the four rows.
    s.frame(kLeft + leftW, top, kPictureW, y - top, kThin);
    pictureFrame(s, kLeft + leftW + 3, top + 2.5, 30, 40, r.写真path, QStringLiteral("写真"), Qt::SolidLine);

    const double addressH = 20;
    caption(s, kLeft, y, kCaptionW, addressH, QStringLiteral("住所"));
    s.frame(kLeft + kCaptionW, y, kWidth - kCaptionW, addressH, kThin);
    s.text(QRectF(kLeft + kCaptionW + kPad, y + 1.2, kWidth - kCaptionW - 2 * kPad, 5.5), postcode(r.郵便番号),
           Sheet::font(kMincho, 9), Qt::AlignLeft | Qt::AlignVCenter);
    QString address = r.住所A + r.住所B;
    if (!r.住所C.isEmpty())
        address += QLatin1Char('\n') + r.住所C;
    s.text(QRectF(kLeft + kCaptionW + kPad, y + 7, kWidth - kCaptionW - 2 * kPad, addressH - 8), address,
           Sheet::font(kMincho, kValuePt), Qt::AlignLeft | Qt::AlignTop, true);
    y += addressH;
    pair(s, y, QStringLiteral("電話"), r.電話, QStringLiteral("携帯電話"), r.携帯電話);
    y += kRow;
    field(s, kLeft, y, kWidth, QStringLiteral("E-mail"), r.EMAIL);
    y += kRow;
    s.frame(kLeft, top, kWidth, y - top, kThick);

    // Organisation and employment.
    y += 5;
    heading(s, y, QStringLiteral("所属・勤務"));
    y += 6;
    const double top2 = y;
    pair(s, y, QStringLiteral("事業所"), codeName(r.事業所コード, r.事業所名), QStringLiteral("部門"),
         codeName(r.部門コード, r.部門名));
    y += kRow;
    pair(s, y, QStringLiteral("セクション"), codeName(r.セクションコード, r.セクション名), QStringLiteral("役職"),
         codeName(r.役職コード, r.役職名));
    y += kRow;
    pair(s, y, QStringLiteral("職責"), r.職責, QStringLiteral("ログインID"), r.ログインID);
    y += kRow;
    pair(s, y, QStringLiteral("在籍区分"), codeName(r.在籍区分, r.在籍区分名), QStringLiteral("社員区分"),
         codeName(r.社員区分, r.社員区分名));
    y += kRow;
    pair(s, y, QStringLiteral("入社日付"), r.入社日付表示, QStringLiteral("退社日付"), r.退社日付表示);
    y += kRow;
    s.frame(kLeft, top2, kWidth, y - top2, kThick);

    // The memo and the seal.
    y += 5;
    heading(s, y, QStringLiteral("メモ・担当者印"));
    y += 6;
    const double memoH = 268 - y;
    const double memoW = kWidth - kCaptionW - kPictureW;
    caption(s, kLeft, y, kCaptionW, memoH, QStringLiteral("メモ"));
    s.frame(kLeft + kCaptionW, y, memoW, memoH, kThin);
    QString memo = r.担当者メモ;
    memo.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    s.text(QRectF(kLeft + kCaptionW + kPad, y + kPad, memoW - 2 * kPad, memoH - 2 * kPad), memo,
           Sheet::font(kMincho, kValuePt), Qt::AlignLeft | Qt::AlignTop, true);
    const double sealX = kLeft + kCaptionW + memoW;
    caption(s, sealX, y, kPictureW, 7, QStringLiteral("担当者印"));
    s.frame(sealX, y + 7, kPictureW, memoH - 7, kThin);
    const double sealSide = 28;
    pictureFrame(s, sealX + (kPictureW - sealSide) / 2, y + 7 + (memoH - 7 - sealSide) / 2, sealSide, sealSide,
                 r.担当者印path, QStringLiteral("印"), Qt::DashLine);
    s.frame(kLeft, y, kWidth, memoH, kThick);

    // The foot: the page of the run.
    s.text(QRectF(kLeft, 276, kWidth, 6), QStringLiteral("%1 / %2").arg(頁).arg(頁数), Sheet::font(kGothic, 8),
           Qt::AlignCenter, false, kCaption);
    painter.restore();
}

担当者カード頁::担当者カード頁(担当者カード見出し 見出し, QList<担当者カード行> 行)
    : 見出し_(std::move(見出し)), 行_(std::move(行)) {}

int 担当者カード頁::pageCount() const { return static_cast<int>(行_.size()); }

void 担当者カード頁::paintPage(QPainter& painter, int page) {
    if (page < 0 || page >= 行_.size())
        return;
    担当者カードdraw(painter, 見出し_, 行_.at(page), page + 1, pageCount());
}
