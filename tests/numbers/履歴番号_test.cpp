// History numbers: base dates by kind, plain and per-office drawing, the rows
// of the B number tables and the failures.

#include "numbers/mod基本履歴番号.h"
#include "numbers_fixture.h"

using testdb::Engine;

namespace {

const QStringList kDefinition{QStringLiteral("基本ID"), QStringLiteral("連番種類"), QStringLiteral("履歴連番")};
const QStringList kDated{QStringLiteral("基本ID"), QStringLiteral("期日"), QStringLiteral("履歴連番")};
const QStringList kOffice{QStringLiteral("事業所コード"), QStringLiteral("基本ID"), QStringLiteral("履歴連番")};
const QStringList kOfficeDated{QStringLiteral("事業所コード"), QStringLiteral("基本ID"), QStringLiteral("期日"),
                               QStringLiteral("履歴連番")};

class HistoryNumbers : public NumbersTest {
protected:
    void setKind(const QString& kind) {
        execute(QStringLiteral("UPDATE B履歴番号情報 SET 連番種類 = '") + kind +
                QStringLiteral("' WHERE 基本ID = '210'"));
    }
    void setCounter(const QString& value) {
        execute(QStringLiteral("UPDATE B履歴番号情報 SET 履歴連番 = '") + value +
                QStringLiteral("' WHERE 基本ID = '210'"));
    }
    QString draw(const QString& baseDate) {
        return 履歴番号get(ctx(), QStringLiteral("210"), baseDate, QStringLiteral("001"));
    }
    QStringList definition() const { return rows(QStringLiteral("B履歴番号情報"), kDefinition); }
    QStringList dated() const { return rows(QStringLiteral("B期日別履歴番号情報"), kDated); }
    QStringList office() const { return rows(QStringLiteral("B事業所別履歴番号情報"), kOffice); }
    QStringList officeDated() const { return rows(QStringLiteral("B事業所別期日別履歴番号情報"), kOfficeDated); }
};

TEST_P(HistoryNumbers, Kind0GivesTheBaseDate99999999) {
    EXPECT_EQ(履歴基準日get(ctx(), QStringLiteral("210")), QStringLiteral("99999999"));
}

TEST_P(HistoryNumbers, Kind0DrawsFromTheDefinitionRow) {
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000001"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000002"));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|0|00000002")});
    EXPECT_TRUE(dated().isEmpty());
    EXPECT_TRUE(office().isEmpty());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(HistoryNumbers, Kind1OnTheFirstOfMayGivesTheFiscalYearEndAndCreatesItsRow) {
    setKind(QStringLiteral("1"));
    tree->sys.clock = QDateTime(QDate(2026, 5, 1), QTime(10, 0, 0));
    const QString baseDate = 履歴基準日get(ctx(), QStringLiteral("210"));
    EXPECT_EQ(baseDate, QStringLiteral("20270331"));
    EXPECT_EQ(draw(baseDate), QStringLiteral("00000001"));
    EXPECT_EQ(dated(), QStringList{QStringLiteral("210|20270331|00000001")});
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|1|00000000")});
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(HistoryNumbers, SecondDrawingGivesTheNextNumberAndANewBaseDateStartsAgain) {
    setKind(QStringLiteral("1"));
    EXPECT_EQ(draw(QStringLiteral("20270331")), QStringLiteral("00000001"));
    EXPECT_EQ(draw(QStringLiteral("20270331")), QStringLiteral("00000002"));
    EXPECT_EQ(draw(QStringLiteral("20280331")), QStringLiteral("00000001"));
    EXPECT_EQ(dated(), (QStringList{QStringLiteral("210|20270331|00000002"), QStringLiteral("210|20280331|00000001")}));
}

TEST_P(HistoryNumbers, Kind2GivesTheMonthPeriodEnd) {
    setKind(QStringLiteral("2"));
    ctx().company.決算日 = 20;
    EXPECT_EQ(履歴基準日get(ctx(), QStringLiteral("210")), QStringLiteral("20261220"));
    ctx().company.決算日 = 31;
    EXPECT_EQ(履歴基準日get(ctx(), QStringLiteral("210")), QStringLiteral("20261130"));
}

TEST_P(HistoryNumbers, Kind3GivesToday) {
    setKind(QStringLiteral("3"));
    EXPECT_EQ(履歴基準日get(ctx(), QStringLiteral("210")), QStringLiteral("20261121"));
}

TEST_P(HistoryNumbers, Kind7GivesTheBaseDate88888888AndDrawsFromTheDefinitionRow) {
    setKind(QStringLiteral("7"));
    const QString baseDate = 履歴基準日get(ctx(), QStringLiteral("210"));
    EXPECT_EQ(baseDate, QStringLiteral("88888888"));
    EXPECT_EQ(draw(baseDate), QStringLiteral("00000001"));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|7|00000001")});
    EXPECT_TRUE(dated().isEmpty());
}

TEST_P(HistoryNumbers, NegativeKindDrawsFromTheDefinitionRow) {
    setKind(QStringLiteral("-1"));
    EXPECT_EQ(履歴基準日get(ctx(), QStringLiteral("210")), QStringLiteral("88888888"));
    EXPECT_EQ(draw(QStringLiteral("88888888")), QStringLiteral("00000001"));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|-1|00000001")});
    EXPECT_TRUE(dated().isEmpty());
}

TEST_P(HistoryNumbers, KindThatIsNoNumberCountsAs0) {
    setKind(QStringLiteral("x"));
    EXPECT_EQ(履歴基準日get(ctx(), QStringLiteral("210")), QStringLiteral("99999999"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000001"));
    EXPECT_TRUE(dated().isEmpty());
}

TEST_P(HistoryNumbers, UnknownBaseIdHasNoBaseDate) {
    EXPECT_EQ(履歴基準日get(ctx(), QStringLiteral("999")), QString());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(HistoryNumbers, Counter99999999GivesNineDigits) {
    setCounter(QStringLiteral("99999999"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("100000000"));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|0|100000000")});
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("100000001"));
}

TEST_P(HistoryNumbers, StoredMinusOneGives00000001) {
    setCounter(QStringLiteral("-1"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000001"));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|0|00000001")});
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(HistoryNumbers, CounterThatIsNoNumberCountsAs0) {
    setCounter(QStringLiteral("abc"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000001"));
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|0|00000001")});
}

TEST_P(HistoryNumbers, UnknownBaseIdGives00000000AndTwoMessages) {
    EXPECT_EQ(履歴番号get(ctx(), QStringLiteral("999"), QStringLiteral("99999999"), QStringLiteral("001")),
              QStringLiteral("00000000"));
    EXPECT_EQ(tree->messages.texts(), (QStringList{QStringLiteral("履歴番号情報に問題が発生設定できませんでした。"),
                                                   QStringLiteral("番号情報に問題が発生設定できませんでした。")}));
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::Ok);
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|0|00000000")});
    EXPECT_TRUE(dated().isEmpty());
    EXPECT_TRUE(newErrors().isEmpty());
}

TEST_P(HistoryNumbers, UnknownBaseIdPerOfficeGivesTheSameTwoMessages) {
    ctx().company.伝票番号管理区分 = 1;
    EXPECT_EQ(履歴番号get(ctx(), QStringLiteral("999"), QStringLiteral("99999999"), QStringLiteral("001")),
              QStringLiteral("00000000"));
    EXPECT_EQ(tree->messages.texts(), (QStringList{QStringLiteral("履歴番号情報に問題が発生設定できませんでした。"),
                                                   QStringLiteral("番号情報に問題が発生設定できませんでした。")}));
    EXPECT_TRUE(office().isEmpty());
}

TEST_P(HistoryNumbers, PerOfficeKind0CreatesTheOfficeRowOnFirstUse) {
    ctx().company.伝票番号管理区分 = 1;
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000001"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QStringLiteral("00000002"));
    EXPECT_EQ(office(), QStringList{QStringLiteral("001|210|00000002")});
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|0|00000000")});
    EXPECT_EQ(履歴番号get(ctx(), QStringLiteral("210"), QStringLiteral("99999999"), QStringLiteral("002")),
              QStringLiteral("00000001"));
    EXPECT_EQ(office(), (QStringList{QStringLiteral("001|210|00000002"), QStringLiteral("002|210|00000001")}));
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

TEST_P(HistoryNumbers, PerOfficeKind7UsesTheOfficeRow) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("7"));
    EXPECT_EQ(draw(QStringLiteral("88888888")), QStringLiteral("00000001"));
    EXPECT_EQ(office(), QStringList{QStringLiteral("001|210|00000001")});
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|7|00000000")});
    EXPECT_TRUE(officeDated().isEmpty());
}

TEST_P(HistoryNumbers, PerOfficeDatedRowThatIsMissingIsNotCreatedAndGivesNoNumber) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("1"));
    EXPECT_EQ(draw(QStringLiteral("20270331")), QString());
    EXPECT_TRUE(officeDated().isEmpty());
    EXPECT_TRUE(office().isEmpty());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    // The check of the definition row names a table that is not in its FROM.
    EXPECT_TRUE(loggedError(QStringLiteral("SELECT B履歴番号情報.* FROM B履歴番号情報"
                                           " WHERE B事業所別履歴番号情報.基本ID = '210'")))
        << newErrors().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(newErrors().size(), 1);
}

TEST_P(HistoryNumbers, PerOfficeDatedRowThatExistsIsDrawn) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("3"));
    execute(QStringLiteral("INSERT INTO B事業所別期日別履歴番号情報 (事業所コード, 基本ID, 期日, 履歴連番)"
                           " VALUES ('001', '210', '20261121', '00000041')"));
    EXPECT_EQ(draw(QStringLiteral("20261121")), QStringLiteral("00000042"));
    EXPECT_EQ(draw(QStringLiteral("20261121")), QStringLiteral("00000043"));
    EXPECT_EQ(officeDated(), QStringList{QStringLiteral("001|210|20261121|00000043")});
    EXPECT_TRUE(newErrors().isEmpty()) << newErrors().join(QLatin1Char('\n')).toStdString();
}

// With the dated table gone every statement on it fails and is logged, which
// shows the texts of the drawing; the number is empty and nothing is shown.
TEST_P(HistoryNumbers, StatementsOfTheDatedDrawing) {
    setKind(QStringLiteral("1"));
    execute(QStringLiteral("DROP TABLE B期日別履歴番号情報"));
    EXPECT_EQ(draw(QStringLiteral("20270331")), QString());
    const QString where =
        QStringLiteral(" WHERE B期日別履歴番号情報.基本ID = '210' AND B期日別履歴番号情報.期日 = '20270331'");
    EXPECT_TRUE(loggedError(QStringLiteral("SELECT B期日別履歴番号情報.* FROM B期日別履歴番号情報") + where));
    EXPECT_TRUE(loggedError(QStringLiteral("INSERT INTO [B期日別履歴番号情報] ([基本ID],[期日],[履歴連番])"
                                           " VALUES ('210','20270331','00000000')")));
    EXPECT_TRUE(loggedError(QStringLiteral("UPDATE B期日別履歴番号情報 SET  履歴連番 = ''") + where));
    EXPECT_EQ(newErrors().size(), 4) << newErrors().join(QLatin1Char('\n')).toStdString(); // the SELECT twice
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|1|00000000")});
}

TEST_P(HistoryNumbers, StatementsOfThePerOfficeDrawing) {
    ctx().company.伝票番号管理区分 = 1;
    execute(QStringLiteral("DROP TABLE B事業所別履歴番号情報"));
    EXPECT_EQ(draw(QStringLiteral("99999999")), QString());
    const QString where =
        QStringLiteral(" WHERE B事業所別履歴番号情報.事業所コード = '001' AND B事業所別履歴番号情報.基本ID = '210'");
    EXPECT_TRUE(loggedError(QStringLiteral("SELECT B事業所別履歴番号情報.* FROM B事業所別履歴番号情報") + where));
    EXPECT_TRUE(loggedError(QStringLiteral("INSERT INTO [B事業所別履歴番号情報] ([事業所コード],[基本ID],[履歴連番])"
                                           " VALUES ('001','210','00000000')")));
    EXPECT_TRUE(loggedError(QStringLiteral("UPDATE B事業所別履歴番号情報 SET  履歴連番 = ''") + where));
    EXPECT_EQ(newErrors().size(), 4) << newErrors().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(definition(), QStringList{QStringLiteral("210|0|00000000")});
}

TEST_P(HistoryNumbers, StatementsOfThePerOfficeDatedDrawing) {
    ctx().company.伝票番号管理区分 = 1;
    setKind(QStringLiteral("2"));
    execute(QStringLiteral("DROP TABLE B事業所別期日別履歴番号情報"));
    EXPECT_EQ(draw(QStringLiteral("20261130")), QString());
    const QString where = QStringLiteral(" WHERE B事業所別期日別履歴番号情報.事業所コード = '001'"
                                         " AND B事業所別期日別履歴番号情報.基本ID = '210'"
                                         " AND B事業所別期日別履歴番号情報.期日 = '20261130'");
    EXPECT_TRUE(
        loggedError(QStringLiteral("SELECT B事業所別期日別履歴番号情報.* FROM B事業所別期日別履歴番号情報") + where));
    EXPECT_TRUE(loggedError(QStringLiteral("SELECT B履歴番号情報.* FROM B履歴番号情報"
                                           " WHERE B事業所別履歴番号情報.基本ID = '210'")));
    EXPECT_TRUE(loggedError(QStringLiteral("UPDATE B事業所別期日別履歴番号情報 SET  履歴連番 = ''") + where));
    EXPECT_EQ(newErrors().size(), 4) << newErrors().join(QLatin1Char('\n')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Engines, HistoryNumbers, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
