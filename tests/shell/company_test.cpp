// The company record, the installation's office and the outside systems, read
// at the start from a tree made by the installation tool.

#include "shell/modデータ処理.h"
#include "shell/暗証番号.h"
#include "support/installation.h"

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

class Company : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
    }
    // Opens both databases as a start does.
    void open() {
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
    }
    void main(const QString& sql) { ASSERT_TRUE(tree->mainExecute(sql)) << sql.toStdString(); }
    void config(const QString& sql) { ASSERT_TRUE(tree->configExecute(sql)) << sql.toStdString(); }
    QStringList environmentOffice() {
        return tree->configRows(QStringLiteral("SELECT 運用事業所コード FROM 動作環境定義"),
                                {QStringLiteral("運用事業所コード")});
    }
    // The stored form of a PIN under the tree's own key.
    QString enciphered(const QString& pin) {
        Context& scratch = tree->newContext();
        EXPECT_TRUE(環境DBopen(scratch));
        const QString stored = 暗証番号encode(scratch, pin);
        データ処理term(scratch);
        tree->newContext();
        return stored;
    }
    Context& ctx() { return tree->ctx(); }
    std::unique_ptr<TestInstallation> tree;
};

TEST_P(Company, HeadOfficeInstallationReadsCompanyOfficeAndOutsideSystems) {
    open();
    ASSERT_TRUE(ユーザ情報read(ctx()));
    const auto& u = ctx().company;
    EXPECT_EQ(u.ID, QStringLiteral("0001"));
    EXPECT_EQ(u.名称, QStringLiteral("株式会社さくら商事"));
    EXPECT_EQ(u.郵便番号, QStringLiteral("100-0005"));
    EXPECT_EQ(u.決算月, 3);
    EXPECT_EQ(u.決算日, 31);
    EXPECT_EQ(u.写真フォルダ, tree->path(QStringLiteral("photo")));
    EXPECT_EQ(u.ドキュメントフォルダ, tree->path(QStringLiteral("document")));
    EXPECT_EQ(u.登録日付, QStringLiteral("20240401 090000"));

    const auto& o = ctx().office;
    EXPECT_EQ(o.コード, QStringLiteral("000"));
    EXPECT_EQ(o.名称, QStringLiteral("本社"));
    EXPECT_EQ(ctx().env.運用事業所コード, QStringLiteral("000"));
    EXPECT_EQ(ctx().事業所件数, 2); // 大阪支店, 名古屋支店

    // Element i holds the row of the i-th code of "003", "002", "004", "005", "005".
    const auto& s = ctx().others.slot;
    EXPECT_EQ(s[0].コード, QStringLiteral("003"));
    EXPECT_EQ(s[0].業務名, QStringLiteral("財務会計"));
    EXPECT_EQ(s[1].業務名, QStringLiteral("人事就業管理"));
    EXPECT_EQ(s[2].業務名, QStringLiteral("給与計算"));
    EXPECT_EQ(s[3].業務名, QStringLiteral("販売管理"));
    EXPECT_EQ(s[4].業務名, QStringLiteral("販売管理"));
    EXPECT_EQ(s[4].コード, QStringLiteral("005"));
    EXPECT_EQ(s[5].業務名, QString());
    EXPECT_EQ(ctx().others.他業務件数, 5);

    // Nothing was rewritten and nothing failed.
    EXPECT_EQ(environmentOffice(), QStringList{QStringLiteral("000")});
    EXPECT_TRUE(tree->history().isEmpty()) << tree->history().join(QLatin1Char('\n')).toStdString();
}

TEST_P(Company, NumbersNullsAndPinsOfTheCompanyRow) {
    const QString privilege = enciphered(QStringLiteral("9999"));
    const QString system = enciphered(QStringLiteral("SYS1"));
    main(QStringLiteral(
             "UPDATE Mユーザ SET 現金決済金額 = '1234.56789', 手形サイト = ' 90', 売上単価少数以下桁数 = '2', "
             "売上数量少数以下桁数 = '1', 仕入単価少数以下桁数 = '3', 仕入数量少数以下桁数 = '4', "
             "在庫単価少数以下桁数 = '2', 在庫数量少数以下桁数 = '1', 重量少数以下桁数 = '3', "
             "決算月 = NULL, 住所A = NULL, 締日 = 'x', 暗証番号有無 = '1', 特権暗証番号 = '%1', "
             "システム特権暗証番号 = '%2', 更新実行区分 = '1' WHERE ID = '0001'")
             .arg(privilege, system));
    open();
    ASSERT_TRUE(ユーザ情報read(ctx()));
    const auto& u = ctx().company;
    EXPECT_DOUBLE_EQ(u.現金決済金額, 1234.5679); // four decimals
    EXPECT_EQ(u.手形サイト, 90);
    EXPECT_EQ(u.決算月, 0);        // null: its empty start value
    EXPECT_EQ(u.住所A, QString()); // null text: empty
    EXPECT_EQ(u.締日, 0);          // no number in the text
    EXPECT_EQ(u.特権暗証番号, QStringLiteral("9999"));
    EXPECT_EQ(u.システム特権暗証番号, QStringLiteral("SYS1"));
    EXPECT_EQ(u.更新実行区分, 1);
    // On the head office the gate takes the company's setting.
    EXPECT_EQ(ctx().pin.暗証番号有無, 1);

    // The derived decimal places of each kind of document.
    for (short d : u.売上単価桁数)
        EXPECT_EQ(d, 2);
    for (short d : u.売上数量桁数)
        EXPECT_EQ(d, 1);
    for (short d : u.仕入単価桁数)
        EXPECT_EQ(d, 3);
    for (short d : u.仕入数量桁数)
        EXPECT_EQ(d, 4);
    EXPECT_EQ(u.在庫単価桁数, 2);
    EXPECT_EQ(u.在庫数量桁数, 1);
    EXPECT_EQ(u.重量桁数, 3);
}

TEST_P(Company, MissingCompanyRowAnswersFalseAfterTheLaterSteps) {
    main(QStringLiteral("DELETE FROM Mユーザ"));
    open();
    EXPECT_FALSE(ユーザ情報read(ctx()));
    EXPECT_EQ(ctx().company.名称, QString());
    // The office, the outside systems and the count are read all the same.
    EXPECT_EQ(ctx().office.名称, QStringLiteral("本社"));
    EXPECT_EQ(ctx().others.slot[1].業務名, QStringLiteral("人事就業管理"));
    EXPECT_EQ(ctx().事業所件数, 2);
}

TEST_P(Company, UnknownOfficeIsRewrittenToTheHeadOffice) {
    config(QStringLiteral("UPDATE 動作環境定義 SET 運用事業所コード = '999'"));
    open();
    EXPECT_EQ(ctx().run.操作事業所コード, QStringLiteral("999"));
    ASSERT_TRUE(ユーザ情報read(ctx()));
    EXPECT_EQ(ctx().env.運用事業所コード, QStringLiteral("000"));
    EXPECT_EQ(environmentOffice(), QStringList{QStringLiteral("000")}); // also for later runs
    const QStringList h = tree->history();
    ASSERT_EQ(h.size(), 1);
    EXPECT_EQ(h.first(),
              QStringLiteral("000000000001|出力終了 UPDATE 動作環境定義 SET  運用事業所コード = ''000'' WHERE "
                             "動作環境定義ID = ''001''"));
    // The head office's row stands for the installation.
    EXPECT_EQ(ctx().office.コード, QStringLiteral("000"));
    EXPECT_EQ(ctx().office.名称, QStringLiteral("本社"));
}

TEST_P(Company, NullOfficeCountsAsHeadOfficeAndLeavesTheRowAlone) {
    config(QStringLiteral("UPDATE 動作環境定義 SET 運用事業所コード = NULL"));
    open();
    ASSERT_TRUE(ユーザ情報read(ctx()));
    EXPECT_EQ(ctx().env.運用事業所コード, QStringLiteral("000"));
    EXPECT_EQ(ctx().office.名称, QStringLiteral("本社"));
    EXPECT_EQ(environmentOffice(), QStringList{QStringLiteral("~")});
    EXPECT_TRUE(tree->history().isEmpty());
}

TEST_P(Company, BranchSettingsPrevailOverTheCompanys) {
    const QString branchPin = enciphered(QStringLiteral("0123"));
    main(QStringLiteral(
        "UPDATE Mユーザ SET 暗証番号有無 = '1', 更新実行区分 = '0', 総合振込ファイル = 'c-furikomi', "
        "基本読込フォルダ = 'c-read', 帳票イメージフォルダ = 'c-image', その他読込ファイル = 'c-other', "
        "本支店連携フォルダ = 'c-branch', テキスト出力フォルダ = 'c-text', BACKUPフォルダ = 'c-backup'"));
    main(
        QStringLiteral("UPDATE M事業所 SET 暗証番号有無 = '0', 更新実行区分 = '2', 総合振込ファイル = 'o-furikomi', "
                       "基本読込フォルダ = '', 帳票イメージフォルダ = NULL, その他読込ファイル = 'o-other', "
                       "本支店連携フォルダ = 'o-branch', テキスト出力フォルダ = 'o-text', BACKUPフォルダ = 'o-backup', "
                       "特権暗証番号 = '%1', 地区コード = '07', 登録番号 = 'T1234' WHERE コード = '001'")
            .arg(branchPin));
    config(QStringLiteral("UPDATE 動作環境定義 SET 運用事業所コード = '001'"));
    open();
    ASSERT_TRUE(ユーザ情報read(ctx()));
    const auto& o = ctx().office;
    EXPECT_EQ(o.コード, QStringLiteral("001"));
    EXPECT_EQ(o.名称, QStringLiteral("大阪支店"));
    EXPECT_EQ(o.地区コード, QStringLiteral("07"));
    EXPECT_EQ(o.登録番号, QStringLiteral("T1234"));
    // A branch with no PIN while the company has one: no PIN on that branch.
    EXPECT_EQ(ctx().pin.暗証番号有無, 0);
    EXPECT_EQ(ctx().pin.特権暗証番号, QStringLiteral("0123"));
    const auto& u = ctx().company;
    EXPECT_EQ(u.暗証番号有無, 1);
    EXPECT_EQ(u.更新実行区分, 2);
    EXPECT_EQ(u.総合振込ファイル, QStringLiteral("o-furikomi"));
    EXPECT_EQ(u.基本読込フォルダ, QStringLiteral("c-read"));      // empty in the office
    EXPECT_EQ(u.帳票イメージフォルダ, QStringLiteral("c-image")); // null in the office
    EXPECT_EQ(u.その他読込ファイル, QStringLiteral("o-other"));
    EXPECT_EQ(u.本支店連携フォルダ, QStringLiteral("o-branch"));
    EXPECT_EQ(u.テキスト出力フォルダ, QStringLiteral("o-text"));
    EXPECT_EQ(u.BACKUPフォルダ, QStringLiteral("o-backup"));
    // The photo and document folders are never an office's.
    EXPECT_EQ(u.写真フォルダ, tree->path(QStringLiteral("photo")));
    EXPECT_EQ(environmentOffice(), QStringList{QStringLiteral("001")});
}

TEST_P(Company, HeadOfficeKeepsTheCompanysSettings) {
    const QString headPin = enciphered(QStringLiteral("4321"));
    main(QStringLiteral("UPDATE Mユーザ SET 暗証番号有無 = '0', 更新実行区分 = '0', BACKUPフォルダ = 'c-backup'"));
    main(QStringLiteral("UPDATE M事業所 SET 暗証番号有無 = '1', 更新実行区分 = '2', BACKUPフォルダ = 'o-backup', "
                        "特権暗証番号 = '%1' WHERE コード = '000'")
             .arg(headPin));
    open();
    ASSERT_TRUE(ユーザ情報read(ctx()));
    EXPECT_EQ(ctx().pin.暗証番号有無, 0);
    EXPECT_EQ(ctx().company.更新実行区分, 0);
    EXPECT_EQ(ctx().company.BACKUPフォルダ, QStringLiteral("c-backup"));
    // The privilege PIN of the gate is the office's, also on the head office.
    EXPECT_EQ(ctx().pin.特権暗証番号, QStringLiteral("4321"));
}

TEST_P(Company, OutsideSystemWithoutARowStaysEmpty) {
    main(QStringLiteral("DELETE FROM M他業務連携 WHERE コード = '004'"));
    main(QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携DB = 'A', 連携アプリフォルダ = '/x/jinji' "
                        "WHERE コード = '002'"));
    open();
    ASSERT_TRUE(ユーザ情報read(ctx()));
    const auto& s = ctx().others.slot;
    EXPECT_EQ(s[2].コード, QString());
    EXPECT_EQ(s[2].業務名, QString());
    EXPECT_EQ(s[2].連携有無区分, 0);
    EXPECT_EQ(s[1].連携有無区分, 1);
    EXPECT_EQ(s[1].連携DB, QStringLiteral("A"));
    EXPECT_EQ(s[1].連携アプリフォルダ, QStringLiteral("/x/jinji"));
    EXPECT_EQ(s[1].連携サーバー名, QString()); // null
    EXPECT_TRUE(tree->history().isEmpty());
}

TEST_P(Company, OfficeCountIsZeroWhenItCannotBeRead) {
    main(QStringLiteral("DELETE FROM M事業所 WHERE コード <> '000'"));
    open();
    ASSERT_TRUE(ユーザ情報read(ctx()));
    EXPECT_EQ(ctx().事業所件数, 0);
    main(QStringLiteral("DROP TABLE M事業所"));
    tree->newContext();
    open();
    ctx().事業所件数 = 7;
    ASSERT_TRUE(ユーザ情報read(ctx()));
    EXPECT_EQ(ctx().事業所件数, 0);
    EXPECT_EQ(ctx().office.コード, QString());
    // Each failed read is a row of the run history.
    EXPECT_GE(tree->history().size(), 3);
}

INSTANTIATE_TEST_SUITE_P(Engines, Company, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
