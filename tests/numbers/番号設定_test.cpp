// Document numbers of the A tables: base dates for a given date, the counter
// 連番, rows created with both counters, and the kinds that give no number.

#include "numbers/mod番号設定.h"
#include "numbers_fixture.h"

using testdb::Engine;

namespace {

const QStringList kDefinition{QStringLiteral("番号ID"), QStringLiteral("連番種類"), QStringLiteral("連番"),
                              QStringLiteral("履歴連番")};
const QStringList kDated{QStringLiteral("番号ID"), QStringLiteral("期日"), QStringLiteral("連番"),
                         QStringLiteral("履歴連番")};
const QStringList kOffice{QStringLiteral("事業所コード"), QStringLiteral("番号ID"), QStringLiteral("連番"),
                          QStringLiteral("履歴連番")};
const QStringList kOfficeDated{QStringLiteral("事業所コード"), QStringLiteral("番号ID"), QStringLiteral("期日"),
                               QStringLiteral("連番"), QStringLiteral("履歴連番")};

class DocumentNumbers : public NumbersTest {
protected:
    void setKind(const QString& kind) {
        execute(QStringLiteral("UPDATE A番号情報 SET 連番種類 = '") + kind +
                QStringLiteral("' WHERE 番号ID = '01110'"));
    }
    QString baseDate(const QString& date) { return 番号基準日get(ctx(), QStringLiteral("01110"), date); }
    QString draw(const QString& baseDate) {
        return 番号get(ctx(), QStringLiteral("01110"), baseDate, QStringLiteral("001"));
    }
    QStringList definition() const { return rows(QStringLiteral("A番号情報"), kDefinition); }
    QStringList dated() const { return rows(QStringLiteral("A期日別番号情報"), kDated); }
    QStringList office() const { return rows(QStringLiteral("A事業所別番号情報"), kOffice); }
    QStringList officeDated() const { return rows(QStringLiteral("A事業所別期日別番号情報"), kOfficeDated); }
};

TEST_P(DocumentNumbers, Kind5CreatesTheDatedRowAndGivesNoNumber) {
    setKind(QStringLiteral("5"));
    const QString date = baseDate(QStringLiteral("20261121"));
    EXPECT_EQ(date, QStringLiteral("88888888"));
    EXPECT_EQ(draw(date), QString());
    EXPECT_EQ(dated(), QStringList{QStringLiteral("01110|88888888|00000000|00000000")});
    EXPECT_EQ(definition(), QStringList{QStringLiteral("01110|5|00000000|00000000")});
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(DocumentNumbers, NegativeKindCreatesTheDatedRowAndGivesNoNumber) {
    setKind(QStringLiteral("-2"));
    EXPECT_EQ(draw(QStringLiteral("88888888")), QString());
    EXPECT_EQ(dated(), QStringList{QStringLiteral("01110|88888888|00000000|00000000")});
    EXPECT_EQ(definition(), QStringList{QStringLiteral("01110|-2|00000000|00000000")});
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(DocumentNumbers, Kind0DrawsTheDefinitionRowsSerial) {
    EXPECT_EQ(baseDate(QStringLiteral("20261121")), QStringLiteral("99999999"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000001"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000002"));
    // 履歴連番 is not this family's counter.
    EXPECT_EQ(definition(), QStringList{QStringLiteral("01110|0|00000002|00000000")});
    EXPECT_TRUE(dated().isEmpty());
    EXPECT_TRUE(office().isEmpty());
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(DocumentNumbers, Kind0PerOfficeCreatesTheOfficeRowOnFirstUse) {
    ctx().company.伝票番号管理区分 = 1;
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000001"));
    EXPECT_EQ(office(), QStringList{QStringLiteral("001|01110|00000001|00000000")});
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000002"));
    EXPECT_EQ(office(), QStringList{QStringLiteral("001|01110|00000002|00000000")});
    EXPECT_EQ(definition(), QStringList{QStringLiteral("01110|0|00000000|00000000")});
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(DocumentNumbers, TodayGiven99999999WithKind3IsToday) {
    setKind(QStringLiteral("3"));
    EXPECT_EQ(baseDate(QStringLiteral("99999999")), QStringLiteral("20261121"));
}

TEST_P(DocumentNumbers, TodayGiven99999999WorksOutThePeriodEndsFromToday) {
    setKind(QStringLiteral("1"));
    EXPECT_EQ(baseDate(QStringLiteral("99999999")), QStringLiteral("20270331"));
    setKind(QStringLiteral("2"));
    EXPECT_EQ(baseDate(QStringLiteral("99999999")), QStringLiteral("20261130"));
}

TEST_P(DocumentNumbers, GivenDateIsUsedForTheCandidates) {
    setKind(QStringLiteral("1"));
    EXPECT_EQ(baseDate(QStringLiteral("20260501")), QStringLiteral("20270331"));
    EXPECT_EQ(baseDate(QStringLiteral("20260331")), QStringLiteral("20260331"));
    setKind(QStringLiteral("2"));
    EXPECT_EQ(baseDate(QStringLiteral("20260214")), QStringLiteral("20260228"));
    setKind(QStringLiteral("3"));
    EXPECT_EQ(baseDate(QStringLiteral("20250102")), QStringLiteral("20250102"));
    setKind(QStringLiteral("4"));
    EXPECT_EQ(baseDate(QStringLiteral("20250102")), QStringLiteral("88888888"));
}

TEST_P(DocumentNumbers, UnknownNumberIdHasNoBaseDate) {
    EXPECT_EQ(番号基準日get(ctx(), QStringLiteral("09999"), QStringLiteral("20261121")), QString());
}

TEST_P(DocumentNumbers, UnknownNumberIdGives00000000AndTheMessageTwice) {
    EXPECT_EQ(番号get(ctx(), QStringLiteral("09999"), QStringLiteral("99999999"), QStringLiteral("001")),
              QStringLiteral("00000000"));
    EXPECT_EQ(tree->messages.texts(), (QStringList{QStringLiteral("番号情報に問題が発生設定できませんでした。"),
                                                   QStringLiteral("番号情報に問題が発生設定できませんでした。")}));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("01110|0|00000000|00000000")});
    EXPECT_TRUE(dated().isEmpty());
}

TEST_P(DocumentNumbers, DatedRowIsCreatedWithBothCountersAndDrawn) {
    setKind(QStringLiteral("1"));
    EXPECT_EQ(draw(QStringLiteral("20270331")), QStringLiteral("00000001"));
    EXPECT_EQ(draw(QStringLiteral("20270331")), QStringLiteral("00000002"));
    EXPECT_EQ(draw(QStringLiteral("20280331")), QStringLiteral("00000001"));
    EXPECT_EQ(dated(), (QStringList{QStringLiteral("01110|20270331|00000002|00000000"),
                                    QStringLiteral("01110|20280331|00000001|00000000")}));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("01110|1|00000000|00000000")});
}

TEST_P(DocumentNumbers, Serial99999999GivesNineDigits) {
    execute(QStringLiteral("UPDATE A番号情報 SET 連番 = '99999999' WHERE 番号ID = '01110'"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("100000000"));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("01110|0|100000000|00000000")});
}

TEST_P(DocumentNumbers, PerOfficeDatedRowThatIsMissingIsNotCreated) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("3"));
    EXPECT_EQ(draw(QStringLiteral("20261121")), QString());
    EXPECT_TRUE(officeDated().isEmpty());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_TRUE(
        loggedError(QStringLiteral("SELECT A番号情報.* FROM A番号情報 WHERE A事業所別番号情報.番号ID = '01110'")))
        << newErrors().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(newErrors().size(), 1);
}

TEST_P(DocumentNumbers, PerOfficeDatedRowThatExistsIsDrawn) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("2"));
    execute(QStringLiteral("INSERT INTO A事業所別期日別番号情報 (事業所コード, 番号ID, 期日, 連番, 履歴連番)"
                           " VALUES ('001', '01110', '20261130', '00000009', '00000005')"));
    EXPECT_EQ(draw(QStringLiteral("20261130")), QStringLiteral("00000010"));
    EXPECT_EQ(officeDated(), QStringList{QStringLiteral("001|01110|20261130|00000010|00000005")});
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(DocumentNumbers, PerOfficeKind5TriesTheDatedRowAndGivesNoNumber) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("5"));
    EXPECT_EQ(draw(QStringLiteral("88888888")), QString());
    EXPECT_TRUE(officeDated().isEmpty());
    EXPECT_TRUE(office().isEmpty());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_TRUE(
        loggedError(QStringLiteral("SELECT A番号情報.* FROM A番号情報 WHERE A事業所別番号情報.番号ID = '01110'")));
}

TEST_P(DocumentNumbers, StatementsOfTheDatedDrawing) {
    setKind(QStringLiteral("3"));
    execute(QStringLiteral("DROP TABLE A期日別番号情報"));
    EXPECT_EQ(draw(QStringLiteral("20261121")), QString());
    const QString where =
        QStringLiteral(" WHERE A期日別番号情報.番号ID = '01110' AND A期日別番号情報.期日 = '20261121'");
    EXPECT_TRUE(loggedError(QStringLiteral("SELECT A期日別番号情報.* FROM A期日別番号情報") + where));
    EXPECT_TRUE(loggedError(QStringLiteral("INSERT INTO [A期日別番号情報] ([番号ID],[期日],[連番],[履歴連番])"
                                           " VALUES ('01110','20261121','00000000','00000000')")));
    EXPECT_TRUE(loggedError(QStringLiteral("UPDATE A期日別番号情報 SET  連番 = ''") + where));
    EXPECT_EQ(newErrors().size(), 4) << newErrors().join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(DocumentNumbers, StatementsOfThePerOfficeDrawing) {
    ctx().company.伝票番号管理区分 = 1;
    execute(QStringLiteral("DROP TABLE A事業所別番号情報"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QString());
    const QString where =
        QStringLiteral(" WHERE A事業所別番号情報.事業所コード = '001' AND A事業所別番号情報.番号ID = '01110'");
    EXPECT_TRUE(loggedError(QStringLiteral("SELECT A事業所別番号情報.* FROM A事業所別番号情報") + where));
    EXPECT_TRUE(loggedError(QStringLiteral("INSERT INTO [A事業所別番号情報] ([事業所コード],[番号ID],[連番],[履歴連番])"
                                           " VALUES ('001','01110','00000000','00000000')")));
    EXPECT_TRUE(loggedError(QStringLiteral("UPDATE A事業所別番号情報 SET  連番 = ''") + where));
    EXPECT_EQ(newErrors().size(), 4) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(DocumentNumbers, StatementsOfThePerOfficeDatedDrawing) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("1"));
    execute(QStringLiteral("DROP TABLE A事業所別期日別番号情報"));
    EXPECT_EQ(draw(QStringLiteral("20270331")), QString());
    const QString where = QStringLiteral(" WHERE A事業所別期日別番号情報.事業所コード = '001'"
                                         " AND A事業所別期日別番号情報.番号ID = '01110'"
                                         " AND A事業所別期日別番号情報.期日 = '20270331'");
    EXPECT_TRUE(loggedError(QStringLiteral("SELECT A事業所別期日別番号情報.* FROM A事業所別期日別番号情報") + where));
    EXPECT_TRUE(loggedError(QStringLiteral("UPDATE A事業所別期日別番号情報 SET  連番 = ''") + where));
    EXPECT_EQ(newErrors().size(), 4) << newErrors().join(QLatin1Char('\n')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Engines, DocumentNumbers, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
