// The report program as a process on an installation tree: its PDF files as
// the poppler tools read them, its exit codes and messages, and the rows it
// leaves in the run history.

#include "report_fixture.h"

#include <QDir>

using testdb::Engine;
using namespace report_test;

namespace {

using ReportProgram = ReportFixture;

TEST_P(ReportProgram, OneRecordMakesOnePageWithItsCodeNameAndOffice) {
    REQUIRE_POPPLER();
    addStaff(QStringLiteral("00001"), QStringLiteral("山田 太郎"), QStringLiteral("001"),
             QStringLiteral("カナ,生年月日,入社日付,電話,EMAIL"),
             QStringLiteral("'ﾔﾏﾀﾞ ﾀﾛｳ','19800115','20190501','03-1234-5678','taro.yamada2026@example.jp'"));
    addStaff(QStringLiteral("00002"), QStringLiteral("鈴木 花子"), QStringLiteral("001"));
    const QString pdf = out.filePath(QStringLiteral("one.pdf"));
    const QString text = rangeText(QStringLiteral("001"), QStringLiteral("00001"), QStringLiteral("00001"));
    const ProgramRun run = runProgram({text, QStringLiteral("--pdf"), pdf});
    ASSERT_FALSE(run.crashed);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(pdfPageCount(pdf), 1);
    const QStringList pages = pdfPages(pdf);
    ASSERT_EQ(pages.size(), 1);
    const QString page = pages.first();
    EXPECT_TRUE(page.contains(QStringLiteral("担当者カード")));
    EXPECT_TRUE(page.contains(QStringLiteral("00001")));
    EXPECT_TRUE(page.contains(QStringLiteral("山田 太郎"))) << page.toStdString();
    EXPECT_TRUE(page.contains(QStringLiteral("大阪支店")));
    EXPECT_FALSE(page.contains(QStringLiteral("鈴木 花子")));
    // The kana full-width, the dates in their era, the company at the head.
    EXPECT_TRUE(page.contains(QStringLiteral("ヤマダ")));
    EXPECT_TRUE(page.contains(QStringLiteral("昭和55年1月15日"))) << page.toStdString();
    EXPECT_TRUE(page.contains(QStringLiteral("令和元年5月1日")));
    EXPECT_TRUE(page.contains(QStringLiteral("03-1234-5678")));
    // Digits among Latin letters read back as well.
    EXPECT_TRUE(page.contains(QStringLiteral("taro.yamada2026@example.jp"))) << page.toStdString();
    EXPECT_TRUE(page.contains(QStringLiteral("生年月日")));
    EXPECT_TRUE(
        QRegularExpression(QStringLiteral("印刷日\\s+(令和|平成)(元|\\d+)年\\d+月\\d+日")).match(page).hasMatch())
        << page.toStdString();

    // Its own rows in the run history: the start with the text, the output end, the end.
    const QStringList history = reportHistory();
    ASSERT_EQ(history.size(), 3) << history.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(history.at(0), QStringLiteral("開始 ") + text);
    EXPECT_TRUE(history.at(1).startsWith(QStringLiteral("出力終了 SELECT M担当者.*"))) << history.at(1).toStdString();
    EXPECT_TRUE(history.at(1).contains(QStringLiteral("M担当者.コード >= ''00001''")));
    EXPECT_EQ(history.at(2), QStringLiteral("終了"));
    // And its usage row under its own name.
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT プログラムID FROM 使用状況"), {QStringLiteral("プログラムID")}),
              QStringList{QStringLiteral("担当者カード")});
}

TEST_P(ReportProgram, ARangeMakesOnePagePerRecordInCodeOrder) {
    REQUIRE_POPPLER();
    addStaff(QStringLiteral("00003"), QStringLiteral("佐藤 三郎"), QStringLiteral("002"));
    addStaff(QStringLiteral("00001"), QStringLiteral("山田 太郎"), QStringLiteral("000"));
    addStaff(QStringLiteral("00002"), QStringLiteral("鈴木 花子"), QStringLiteral("001"));
    addStaff(QStringLiteral("00004"), QStringLiteral("範囲 外"), QStringLiteral("000"));
    // Every office, staff 00001 to 00003.
    担当者カード条件 c;
    c.操作事業所コード = QStringLiteral("000");
    c.事業所コード自 = QStringLiteral("000");
    c.事業所コード至 = QStringLiteral("999");
    c.担当者コード自 = QStringLiteral("00001");
    c.担当者コード至 = QStringLiteral("00003");
    const QString pdf = out.filePath(QStringLiteral("range.pdf"));
    const ProgramRun run = runProgram({担当者カード引数make(c), QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(pdfPageCount(pdf), 3);
    const QStringList pages = pdfPages(pdf);
    ASSERT_EQ(pages.size(), 3);
    const QStringList codes{QStringLiteral("00001"), QStringLiteral("00002"), QStringLiteral("00003")};
    const QStringList names{QStringLiteral("山田 太郎"), QStringLiteral("鈴木 花子"), QStringLiteral("佐藤 三郎")};
    const QStringList offices{QStringLiteral("本社"), QStringLiteral("大阪支店"), QStringLiteral("名古屋支店")};
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(pages.at(i).contains(codes.at(i))) << i;
        EXPECT_TRUE(pages.at(i).contains(names.at(i))) << pages.at(i).toStdString();
        EXPECT_TRUE(pages.at(i).contains(offices.at(i))) << pages.at(i).toStdString();
        EXPECT_TRUE(QRegularExpression(QStringLiteral("\\b%1\\s*/\\s*3\\b").arg(i + 1)).match(pages.at(i)).hasMatch());
    }
    EXPECT_FALSE(pages.join(QString()).contains(QStringLiteral("範囲 外")));
}

TEST_P(ReportProgram, APhotoAndASealAreOnTheirRecordsPage) {
    REQUIRE_POPPLER();
    const QString photos = photoFolder();
    ASSERT_FALSE(photos.isEmpty());
    ASSERT_TRUE(QDir().mkpath(photos + QStringLiteral("/担当者")));
    ASSERT_TRUE(QDir().mkpath(photos + QStringLiteral("/担当者印")));
    addStaff(QStringLiteral("00001"), QStringLiteral("写真 無し"), QStringLiteral("000"));
    addStaff(QStringLiteral("00002"), QStringLiteral("写真 有り"), QStringLiteral("000"),
             QStringLiteral("担当者印file"), QStringLiteral("'00002.png'"));
    // The first photo by name is the one on the card; the second is not.
    ASSERT_TRUE(writePhoto(photos + QStringLiteral("/担当者/00002.jpg")));
    ASSERT_TRUE(writePhoto(photos + QStringLiteral("/担当者/00002_001.jpg"), 300, 300));
    ASSERT_TRUE(writeSeal(photos + QStringLiteral("/担当者印/00002.png"), QStringLiteral("有")));
    // A seal named in the record whose file has gone leaves its box empty.
    addStaff(QStringLiteral("00003"), QStringLiteral("印 紛失"), QStringLiteral("000"), QStringLiteral("担当者印file"),
             QStringLiteral("'00003.png'"));
    const QString pdf = out.filePath(QStringLiteral("pictures.pdf"));
    const ProgramRun run =
        runProgram({rangeText(QStringLiteral("000"), QStringLiteral("00001"), QStringLiteral("00003")),
                    QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    ASSERT_EQ(pdfPageCount(pdf), 3);
    const QMap<int, int> images = pdfImagesPerPage(pdf);
    EXPECT_EQ(images.value(1), 0);
    EXPECT_EQ(images.value(2), 2) << "the photo and the seal";
    EXPECT_EQ(images.value(3), 0);
    EXPECT_TRUE(pdfPages(pdf).at(1).contains(QStringLiteral("写真 有り")));
}

TEST_P(ReportProgram, LongEntriesAreWrittenWhole) {
    REQUIRE_POPPLER();
    // Entries at the card's byte limits (a name of 40, an address line of 40,
    // duties, login and mail of 127), and a memo of several lines.
    const QString name = QStringLiteral("長谷川部長代理兼営業推進本部付特別顧問");
    const QString address = QStringLiteral("北海道札幌市中央区北一条西二丁目一番地");
    const QString duties = QStringLiteral("営業推進本部付特別顧問として全社の営業戦略立案と新規顧客開拓の統括を担当し、"
                                          "各支店の営業会議に出席して助言を行う");
    const QString login = QString(QStringLiteral("login.")).repeated(21) + QStringLiteral("x");
    const QString mail = QString(QStringLiteral("m")).repeated(100) + QStringLiteral("@sales.example.co.jp1234567");
    const QString memo = QString(QStringLiteral("顧客訪問の記録は毎週金曜日にまとめて提出すること。\n")).repeated(8);
    ASSERT_EQ(login.size(), 127);
    ASSERT_EQ(mail.size(), 127);
    addStaff(QStringLiteral("00001"), name, QStringLiteral("000"),
             QStringLiteral("担当者メモ,住所A,住所B,住所C,職責,ログインID,EMAIL"),
             QStringLiteral("'%1','%2','%2','%2','%3','%4','%5'").arg(memo, address, duties, login, mail));
    const QString pdf = out.filePath(QStringLiteral("long.pdf"));
    const ProgramRun run = runProgram(
        {rangeText(QStringLiteral("000"), QStringLiteral("00001"), QStringLiteral("00001")), QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QString page = joined(pdfPages(pdf).value(0));
    for (const QString& entry : {name, address + address, duties, login, mail, memo})
        EXPECT_TRUE(page.contains(joined(entry))) << entry.toStdString() << "\n" << page.toStdString();
    EXPECT_FALSE(page.contains(QStringLiteral("…")));
}

TEST_P(ReportProgram, NoStaffInTheRangesSaysSoAndEndsWithItsCode) {
    addStaff(QStringLiteral("00001"), QStringLiteral("山田 太郎"), QStringLiteral("000"));
    const QString pdf = out.filePath(QStringLiteral("none.pdf"));
    const QString text = rangeText(QStringLiteral("000"), QStringLiteral("00500"), QStringLiteral("00600"));
    const ProgramRun run = runProgram({text, QStringLiteral("--pdf"), pdf});
    ASSERT_FALSE(run.crashed);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.err.contains(QStringLiteral("該当する担当者がありません。"))) << run.err.toStdString();
    EXPECT_FALSE(QFile::exists(pdf));
    EXPECT_EQ(reportHistory(), (QStringList{QStringLiteral("開始 ") + text, QStringLiteral("終了")}));
}

TEST_P(ReportProgram, APdfThatCannotBeWrittenIsAnErrorWithItsRow) {
    addStaff(QStringLiteral("00001"), QStringLiteral("山田 太郎"), QStringLiteral("000"));
    const QString pdf = out.filePath(QStringLiteral("no-such-folder/card.pdf"));
    const ProgramRun run =
        runProgram({rangeText(QStringLiteral("000"), QStringLiteral("00001"), QStringLiteral("00001")),
                    QStringLiteral("--pdf"), pdf});
    ASSERT_FALSE(run.crashed);
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_TRUE(run.err.contains(QStringLiteral("PDF ファイルを作成できません: ") + pdf)) << run.err.toStdString();
    const QStringList history = reportHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_EQ(history.at(1), QStringLiteral("エラー PDF ファイルを作成できません: ") + pdf);
    EXPECT_EQ(history.at(2), QStringLiteral("終了"));
}

TEST_P(ReportProgram, MalformedArgumentsAreRefusedBeforeAnythingIsOpened) {
    const QString pdf = out.filePath(QStringLiteral("bad.pdf"));
    struct Case {
        QStringList arguments;
        QString message;
    };
    const QList<Case> cases{
        {{QStringLiteral("--pdf"), pdf}, QStringLiteral("担当者カードの引数がありません。")},
        {{QStringLiteral("0001"), QStringLiteral("--pdf"), pdf}, QStringLiteral("長さは 36 から 38 文字です")},
        {{QStringLiteral("00020000000009990009990099000010000101"), QStringLiteral("--pdf"), pdf},
         QStringLiteral("モードは 0 (印刷) か 1 (プレビュ) です")},
        {{QStringLiteral("000100000000099900099900990000100001"), QStringLiteral("0"), QStringLiteral("1"),
          QStringLiteral("--pdf"), pdf},
         QStringLiteral("3 個に分かれています")},
        {{QStringLiteral("00010000000009990009990099000010000101"), QStringLiteral("--pdf")},
         QStringLiteral("--pdf には書き出す PDF ファイルの名前を続けてください。")},
        {{QStringLiteral("00010000000009990009990099000010000101"), QStringLiteral("--colour"), QStringLiteral("--pdf"),
          pdf},
         QStringLiteral("知らないオプションです: --colour")},
    };
    for (const Case& c : cases) {
        const ProgramRun run = runProgram(c.arguments);
        ASSERT_FALSE(run.crashed) << c.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(run.exitCode, 2) << c.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(run.err.contains(c.message)) << run.err.toStdString();
    }
    EXPECT_FALSE(QFile::exists(pdf));
    EXPECT_TRUE(reportHistory().isEmpty());
}

TEST_P(ReportProgram, WithoutAScreenOnlyAPdfCanBeMade) {
    addStaff(QStringLiteral("00001"), QStringLiteral("山田 太郎"), QStringLiteral("000"));
    const ProgramRun run = runProgram(
        {rangeText(QStringLiteral("000"), QStringLiteral("00001"), QStringLiteral("00001"), QStringLiteral("1"))});
    ASSERT_FALSE(run.crashed);
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_TRUE(run.err.contains(QStringLiteral("画面がないため、印刷もプレビュもできません。")))
        << run.err.toStdString();
}

TEST_P(ReportProgram, OutsideAnInstallationTheDatabasesCannotBeUsed) {
    const QString program = out.filePath(QStringLiteral("担当者カード"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(STAFF_REPORT_PROGRAM), program));
    const QString pdf = out.filePath(QStringLiteral("lost.pdf"));
    const ProgramRun run = report_test::runProgram(
        program, {rangeText(QStringLiteral("000"), QStringLiteral("00001"), QStringLiteral("00001")),
                  QStringLiteral("--pdf"), pdf});
    ASSERT_FALSE(run.crashed);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("データベースが使用できません。"))) << run.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Engines, ReportProgram, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
