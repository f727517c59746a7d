// The program's title line: display name, office and operator.

#include "access/mod操作許可.h"
#include "access_fixture.h"

#include <QLabel>
#include <QWidget>

namespace access_test {
namespace {

class Title : public AccessTest {
protected:
    // The installation works for the office; the company read takes it over.
    void workFor(const QString& office) {
        ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE 動作環境定義 SET 運用事業所コード = '") + office +
                                        QStringLiteral("' WHERE 動作環境定義ID = '001'")));
        tree->newContext();
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
        ユーザ情報read(ctx());
    }
    QWidget screen;
    QLabel* prg_ttl = [this] {
        auto* label = new QLabel(&screen);
        label->setObjectName(QStringLiteral("prg_ttl"));
        return label;
    }();
};

TEST_P(Title, HeadOfficeOfACompanyWithOfficesShowsTheWholeCompanyAndTheOperator) {
    workFor(QStringLiteral("000"));
    addStaff(QStringLiteral("00001"), QStringLiteral("佐藤 一郎"));
    ctx().op.操作担当者コード = QStringLiteral("00001");
    ASSERT_TRUE(操作担当者read(ctx(), QStringLiteral("00001")));
    ctx().主画面 = &screen;
    ASSERT_GT(ctx().事業所件数, 0);
    EXPECT_EQ(プログラム見出しset(ctx()), QStringLiteral("担当者登録(全社)「佐藤 一郎」"));
    EXPECT_EQ(prg_ttl->text(), QStringLiteral("担当者登録(全社)「佐藤 一郎」"));
    EXPECT_EQ(ctx().運用事業所名, QStringLiteral("本社"));
}

TEST_P(Title, ABranchShowsItsNameAndNoOperatorWhenThereIsNone) {
    workFor(QStringLiteral("001"));
    ctx().主画面 = &screen;
    EXPECT_EQ(プログラム見出しset(ctx()), QStringLiteral("担当者登録(大阪支店)"));
    EXPECT_EQ(prg_ttl->text(), QStringLiteral("担当者登録(大阪支店)"));
    EXPECT_EQ(ctx().運用事業所名, QStringLiteral("大阪支店"));
}

TEST_P(Title, HeadOfficeOfACompanyWithoutOfficesShowsTheNameAlone) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM M事業所 WHERE コード <> '000'")));
    workFor(QStringLiteral("000"));
    EXPECT_EQ(ctx().事業所件数, 0);
    EXPECT_EQ(プログラム見出しset(ctx()), QStringLiteral("担当者登録"));
}

TEST_P(Title, ABranchWithABlankNameShowsNoBrackets) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M事業所 SET 名称 = '  ' WHERE コード = '002'")));
    workFor(QStringLiteral("002"));
    EXPECT_EQ(プログラム見出しset(ctx()), QStringLiteral("担当者登録"));
}

TEST_P(Title, AnOfficeCodeWithoutRowShowsNoOffice) {
    workFor(QStringLiteral("009"));
    EXPECT_EQ(ctx().env.運用事業所コード, QStringLiteral("000"));
    EXPECT_EQ(プログラム見出しset(ctx()), QStringLiteral("担当者登録(全社)"));
}

TEST_P(Title, WithoutMainScreenTheTitleIsOnlyReturned) {
    workFor(QStringLiteral("001"));
    ASSERT_EQ(ctx().主画面, nullptr);
    EXPECT_EQ(プログラム見出しset(ctx()), QStringLiteral("担当者登録(大阪支店)"));
    EXPECT_EQ(prg_ttl->text(), QString());
}

INSTANTIATE_TEST_SUITE_P(Engines, Title, ::testing::Values(Engine::Sqlite, Engine::Postgres), testdb::engineParamName);

} // namespace
} // namespace access_test
