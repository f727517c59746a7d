// Access records: one row of T閲覧 per record shown, numbered from the series
// "01110" and drawn again while the number is taken.

#include "numbers/mod番号設定.h"
#include "numbers_fixture.h"

using testdb::Engine;

namespace {

const QStringList kColumns{
    QStringLiteral("事業所コード"),     QStringLiteral("番号基準日付"), QStringLiteral("閲覧No"),
    QStringLiteral("閲覧日付"),         QStringLiteral("閲覧時刻"),     QStringLiteral("担当者コード"),
    QStringLiteral("担当者名"),         QStringLiteral("閲覧情報"),     QStringLiteral("伝票事業所コード"),
    QStringLiteral("伝票番号基準日付"), QStringLiteral("伝票No"),       QStringLiteral("キー項目"),
    QStringLiteral("閲覧区分"),         QStringLiteral("閲覧メモ"),     QStringLiteral("承認日付"),
    QStringLiteral("承認者コード"),     QStringLiteral("承認区分"),     QStringLiteral("ユーザID"),
    QStringLiteral("登録日付"),         QStringLiteral("更新日付")};

class AccessRecords : public NumbersTest {
protected:
    void SetUp() override {
        NumbersTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        ctx().op.操作担当者コード = QStringLiteral("00012");
        ctx().op.氏名 = QStringLiteral("山田 太郎");
    }
    void show(const QString& code) {
        閲覧insert(ctx(), QStringLiteral("担当者登録"), QString(), QString(), QString(), code);
    }
    QStringList records() const { return rows(QStringLiteral("T閲覧"), {QStringLiteral("閲覧No")}); }
    QStringList fullRecords() const {
        return tree->mainRows(QStringLiteral("SELECT * FROM T閲覧 ORDER BY 閲覧No"), kColumns);
    }
    QString serial() const {
        return tree
            ->mainRows(QStringLiteral("SELECT 連番 FROM A番号情報 WHERE 番号ID = '01110'"), {QStringLiteral("連番")})
            .value(0);
    }
    // Rows of another client for office 001 under the base date 99999999, numbered first to last.
    void takeNumbers(int first, int last) {
        for (int start = first; start <= last; start += 100) {
            QStringList values;
            for (int n = start; n <= std::min(last, start + 99); ++n)
                values.append(QStringLiteral("('001', '99999999', '%1', '00099')").arg(n, 8, 10, QLatin1Char('0')));
            execute(QStringLiteral("INSERT INTO T閲覧 (事業所コード, 番号基準日付, 閲覧No, キー項目) VALUES ") +
                    values.join(QStringLiteral(", ")));
        }
    }
    QStringList boundErrors() const {
        QStringList out;
        for (const QString& e : newErrors())
            if (e.startsWith(QStringLiteral("エラー T閲覧の閲覧No")))
                out.append(e);
        return out;
    }
};

TEST_P(AccessRecords, ShowingARecordWritesOneRow) {
    show(QStringLiteral("00034"));
    EXPECT_EQ(fullRecords(), QStringList{QStringLiteral(
                                 "001|99999999|00000001|20261121|09:30:00|00012|山田 太郎|担当者登録||||00034|0|||"
                                 "|0|tanaka00012PC-01|20261121 093000|")});
    EXPECT_EQ(serial(), QStringLiteral("00000001"));
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(AccessRecords, ShowingTheSameRecordTwiceGivesTwoNumbers) {
    show(QStringLiteral("00034"));
    show(QStringLiteral("00034"));
    EXPECT_EQ(records(), (QStringList{QStringLiteral("00000001"), QStringLiteral("00000002")}));
    EXPECT_EQ(serial(), QStringLiteral("00000002"));
}

TEST_P(AccessRecords, TakenNumbersAreDrawnAgain) {
    takeNumbers(1, 3);
    show(QStringLiteral("00034"));
    EXPECT_EQ(
        tree->mainRows(QStringLiteral("SELECT * FROM T閲覧 WHERE キー項目 = '00034'"), {QStringLiteral("閲覧No")}),
        QStringList{QStringLiteral("00000004")});
    EXPECT_EQ(serial(), QStringLiteral("00000004"));
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(AccessRecords, RowGoesUnderTheRunsOfficeAndTheNumberUnderTheInstallations) {
    ctx().company.伝票番号管理区分 = 1;
    ctx().run.操作事業所コード = QStringLiteral("003");
    ctx().env.運用事業所コード = QStringLiteral("002");
    show(QStringLiteral("00034"));
    EXPECT_EQ(rows(QStringLiteral("A事業所別番号情報"), {QStringLiteral("事業所コード"), QStringLiteral("連番")}),
              QStringList{QStringLiteral("002|00000001")});
    EXPECT_EQ(rows(QStringLiteral("T閲覧"), {QStringLiteral("事業所コード"), QStringLiteral("閲覧No")}),
              QStringList{QStringLiteral("003|00000001")});
}

TEST_P(AccessRecords, DatedSeriesGivesTheBaseDateOfToday) {
    execute(QStringLiteral("UPDATE A番号情報 SET 連番種類 = '1' WHERE 番号ID = '01110'"));
    tree->sys.clock = QDateTime(QDate(2026, 5, 1), QTime(8, 15, 7));
    show(QStringLiteral("00034"));
    EXPECT_EQ(rows(QStringLiteral("T閲覧"), {QStringLiteral("番号基準日付"), QStringLiteral("閲覧No"),
                                             QStringLiteral("閲覧日付"), QStringLiteral("閲覧時刻")}),
              QStringList{QStringLiteral("20270331|00000001|20260501|08:15:07")});
}

TEST_P(AccessRecords, ClockIsReadAnewForEachTimeValue) {
    tree->sys.clock = QDateTime(QDate(2026, 11, 21), QTime(23, 59, 58));
    tree->sys.advance = true;
    show(QStringLiteral("00034"));
    EXPECT_EQ(rows(QStringLiteral("T閲覧"),
                   {QStringLiteral("閲覧日付"), QStringLiteral("閲覧時刻"), QStringLiteral("登録日付")}),
              QStringList{QStringLiteral("20261121|00:00:00|20261122 000001")});
}

TEST_P(AccessRecords, FailedNumberShowsTheMessagesAndTheRowIsStillWritten) {
    execute(QStringLiteral("DELETE FROM A番号情報 WHERE 番号ID = '01110'"));
    show(QStringLiteral("00034"));
    EXPECT_EQ(tree->messages.texts(), (QStringList{QStringLiteral("番号情報に問題が発生設定できませんでした。"),
                                                   QStringLiteral("番号情報に問題が発生設定できませんでした。")}));
    EXPECT_EQ(rows(QStringLiteral("T閲覧"), {QStringLiteral("番号基準日付"), QStringLiteral("閲覧No")}),
              QStringList{QStringLiteral("|00000000")});
}

TEST_P(AccessRecords, ValuesGoInWithoutQuoteDoublingAndAFailedInsertIsLogged) {
    show(QStringLiteral("O'Neil"));
    EXPECT_TRUE(records().isEmpty());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_TRUE(loggedError(QStringLiteral("INSERT INTO [T閲覧] ([事業所コード]")));
    EXPECT_TRUE(newErrors().value(0).contains(QStringLiteral(",''O''Neil'',''0''")))
        << newErrors().join(QLatin1Char('\n')).toStdString();
    // The number was drawn all the same.
    EXPECT_EQ(serial(), QStringLiteral("00000001"));
}

TEST_P(AccessRecords, ThousandthDrawingThatIsFreeIsWritten) {
    takeNumbers(1, 999);
    show(QStringLiteral("00034"));
    EXPECT_EQ(
        tree->mainRows(QStringLiteral("SELECT * FROM T閲覧 WHERE キー項目 = '00034'"), {QStringLiteral("閲覧No")}),
        QStringList{QStringLiteral("00001000")});
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(AccessRecords, DrawingStopsAfterAThousandTakenNumbers) {
    takeNumbers(1, 1000);
    show(QStringLiteral("00034"));
    EXPECT_EQ(serial(), QStringLiteral("00001000"));
    EXPECT_EQ(boundErrors(), QStringList{QStringLiteral("エラー T閲覧の閲覧No「00001000」(事業所コード 001、"
                                                        "番号基準日付 99999999) は1000回引き直しても使用済みのまま"
                                                        "です。この番号で書き込みます。")});
    // The row goes in with the last number drawn, which the table refuses.
    EXPECT_TRUE(loggedError(QStringLiteral(
        "INSERT INTO [T閲覧] ([事業所コード],[番号基準日付],[閲覧No],[閲覧日付],[閲覧時刻],[担当者コード]"
        ",[担当者名],[閲覧情報],[伝票事業所コード],[伝票番号基準日付],[伝票No],[キー項目],[閲覧区分]"
        ",[閲覧メモ],[承認日付],[承認者コード],[承認区分],[ユーザID],[登録日付],[更新日付])"
        " VALUES ('001','99999999','00001000','20261121','09:30:00','00012','山田 太郎','担当者登録'"
        ",'','','','00034','0','','','','0','tanaka00012PC-01','20261121 093000','')")))
        << newErrors().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(
        tree->mainRows(QStringLiteral("SELECT * FROM T閲覧 WHERE キー項目 = '00034'"), {QStringLiteral("閲覧No")}),
        QStringList{});
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(AccessRecords, EmptyNumberIsStoredOnceAndTheNextShowingStopsAtTheBound) {
    execute(QStringLiteral("UPDATE A番号情報 SET 連番種類 = '5' WHERE 番号ID = '01110'"));
    show(QStringLiteral("00034"));
    EXPECT_EQ(rows(QStringLiteral("T閲覧"),
                   {QStringLiteral("番号基準日付"), QStringLiteral("閲覧No"), QStringLiteral("キー項目")}),
              QStringList{QStringLiteral("88888888||00034")});
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();

    show(QStringLiteral("00035"));
    EXPECT_EQ(rows(QStringLiteral("T閲覧"),
                   {QStringLiteral("番号基準日付"), QStringLiteral("閲覧No"), QStringLiteral("キー項目")}),
              QStringList{QStringLiteral("88888888||00034")});
    EXPECT_EQ(boundErrors(), QStringList{QStringLiteral("エラー T閲覧の閲覧No「」(事業所コード 001、番号基準日付 "
                                                        "88888888) は1000回引き直しても使用済みのままです。"
                                                        "この番号で書き込みます。")});
    EXPECT_TRUE(loggedError(QStringLiteral("INSERT INTO [T閲覧] ([事業所コード],[番号基準日付],[閲覧No]")));
    EXPECT_EQ(newErrors().size(), 2) << newErrors().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rows(QStringLiteral("A期日別番号情報"), {QStringLiteral("期日"), QStringLiteral("連番")}),
              QStringList{QStringLiteral("88888888|00000000")});
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Engines, AccessRecords, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
