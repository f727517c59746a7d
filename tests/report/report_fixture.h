#pragma once

// The staff card report program on an installation tree: the built program
// copied into the tree's prgbin, staff rows, pictures in the photo folder, and
// what its PDF files hold as the poppler tools read them.

#include "shell/担当者カード引数.h"
#include "support/installation.h"

#include <QColor>
#include <QFile>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <QMap>

#include <gtest/gtest.h>

#include <memory>

// What a run of a program gave back.
struct ProgramRun {
    int exitCode = -1;
    bool crashed = false;
    QString out;
    QString err;
};

// A portrait-like picture: a head and shoulders on a light background.
inline bool writePhoto(const QString& path, int width = 600, int height = 800) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(0xc8, 0xdc, 0xf0));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x33, 0x3a, 0x4a));
    p.drawEllipse(QRectF(width * 0.1, height * 0.62, width * 0.8, height * 0.7));
    p.setBrush(QColor(0xf1, 0xc9, 0xa5));
    p.drawEllipse(QRectF(width * 0.3, height * 0.2, width * 0.4, height * 0.45));
    p.setBrush(QColor(0x2a, 0x22, 0x1c));
    p.drawChord(QRectF(width * 0.29, height * 0.17, width * 0.42, height * 0.3), 0, 180 * 16);
    p.end();
    return image.save(path, "JPG", 90);
}

// A seal: a red ring with a name inside, on a transparent ground.
inline bool writeSeal(const QString& path, const QString& name) {
    QImage image(240, 240, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor red(0xc8, 0x1e, 0x1e);
    QPen pen(red);
    pen.setWidth(12);
    p.setPen(pen);
    p.drawEllipse(QRectF(10, 10, 220, 220));
    QFont font(QStringLiteral("Noto Serif CJK JP"));
    font.setPixelSize(90);
    font.setBold(true);
    p.setFont(font);
    p.drawText(QRectF(10, 10, 220, 220), Qt::AlignCenter, name);
    p.end();
    return image.save(path, "PNG");
}

namespace report_test {

// Runs a program with these arguments and waits for its end.
inline ProgramRun runProgram(const QString& program, const QStringList& arguments) {
    QProcess p;
    p.setProgram(program);
    p.setArguments(arguments);
    p.start();
    ProgramRun run;
    if (!p.waitForStarted(10000) || !p.waitForFinished(120000)) {
        p.kill();
        p.waitForFinished(5000);
        run.crashed = true;
        return run;
    }
    run.crashed = p.exitStatus() != QProcess::NormalExit;
    run.exitCode = p.exitCode();
    run.out = QString::fromUtf8(p.readAllStandardOutput());
    run.err = QString::fromUtf8(p.readAllStandardError());
    return run;
}

// The built report program in a tree's prgbin, where the card starts it.
inline QString installProgram(const TestInstallation& tree) {
    const QString target = tree.path(QStringLiteral("prgbin/") + 担当者カードプログラム名());
    if (!QFile::exists(target)) {
        EXPECT_TRUE(QFile::copy(QStringLiteral(STAFF_REPORT_PROGRAM), target));
    }
    return target;
}

// The run history of the report program: the 摘要 of each of its rows, in order.
inline QStringList reportHistory(const TestInstallation& tree) {
    return tree.configRows(QStringLiteral("SELECT 摘要 FROM プログラム稼動履歴 WHERE プログラムID = '担当者カード' "
                                          "ORDER BY rowid"),
                           {QStringLiteral("摘要")});
}

// The text of a PDF file in the reading order of its pages, pages split by form feeds.
inline QStringList pdfPages(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-enc"), QStringLiteral("UTF-8"), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        return {QStringLiteral("pdftotext failed: ") + QString::fromUtf8(p.readAllStandardError())};
    QStringList pages = QString::fromUtf8(p.readAllStandardOutput()).split(QChar(0x0c));
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
        pages.removeLast();
    return pages;
}

// The number of pages as the PDF's own information tells it.
inline int pdfPageCount(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdfinfo"), {pdf});
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        return -1;
    const QRegularExpressionMatch m =
        QRegularExpression(QStringLiteral("^Pages:\\s+(\\d+)"), QRegularExpression::MultilineOption)
            .match(QString::fromUtf8(p.readAllStandardOutput()));
    return m.hasMatch() ? m.captured(1).toInt() : -1;
}

// The images of each page, by "pdfimages -list": page number to the
// number of pictures drawn there (masks not counted).
inline QMap<int, int> pdfImagesPerPage(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdfimages"), {QStringLiteral("-list"), pdf});
    QMap<int, int> perPage;
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        return perPage;
    const QStringList lines = QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString& line : lines.mid(2)) {
        const QStringList cols = line.simplified().split(QLatin1Char(' '));
        if (cols.size() > 2 && cols.at(2) == QLatin1String("image"))
            perPage[cols.at(0).toInt()] += 1;
    }
    return perPage;
}

// The text without blanks and line breaks, so that wrapped lines read as one.
inline QString joined(const QString& text) {
    QString s = text;
    s.remove(QRegularExpression(QStringLiteral("\\s")));
    return s;
}

inline bool popplerInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty() &&
           !QStandardPaths::findExecutable(QStringLiteral("pdfimages")).isEmpty() &&
           !QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty();
}

} // namespace report_test

class ReportFixture : public ::testing::TestWithParam<testdb::Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(out.isValid());
    }
    void TearDown() override { tree.reset(); }

    QString installProgram() { return report_test::installProgram(*tree); }
    ProgramRun runProgram(const QStringList& arguments) { return report_test::runProgram(installProgram(), arguments); }
    QStringList reportHistory() const { return report_test::reportHistory(*tree); }

    // A staff row with its organisation; the classes "0" and "1".
    void addStaff(const QString& code, const QString& name, const QString& office, const QString& more = QString(),
                  const QString& moreValues = QString()) {
        ASSERT_TRUE(tree->mainExecute(
            QStringLiteral(
                "INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,セクションコード,役職コード,在籍区分,"
                "社員区分%1) VALUES ('%2','%3','%4','003','003','05','0','1'%5)")
                .arg(more.isEmpty() ? QString() : QStringLiteral(",") + more, code, name, office,
                     moreValues.isEmpty() ? QString() : QStringLiteral(",") + moreValues)));
    }

    // The company's photo folder.
    QString photoFolder() const {
        const QStringList rows = tree->mainRows(QStringLiteral("SELECT 写真フォルダ FROM Mユーザ WHERE ID = '0001'"),
                                                {QStringLiteral("写真フォルダ")});
        return rows.size() == 1 ? rows.first() : QString();
    }

    // The argument text of a range of staff codes in one office.
    static QString rangeText(const QString& office, const QString& from, const QString& to,
                             const QString& mode = QStringLiteral("0")) {
        担当者カード条件 c;
        c.操作事業所コード = QStringLiteral("000");
        c.モード = mode;
        c.事業所コード自 = office;
        c.事業所コード至 = office;
        c.担当者コード自 = from;
        c.担当者コード至 = to;
        return 担当者カード引数make(c);
    }

    std::unique_ptr<TestInstallation> tree;
    QTemporaryDir out;
};

// The PDF checks read files with the poppler tools (Debian package poppler-utils).
#define REQUIRE_POPPLER()                                                                                              \
    do {                                                                                                               \
        ASSERT_TRUE(report_test::popplerInstalled())                                                                   \
            << "pdftotext, pdfinfo and pdfimages are missing (poppler-utils)";                                         \
    } while (0)
