#include "schema/schema.h"

#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "support/test_databases.h"

#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using testdb::Engine;

// What the engine's own catalogue says about the tables that were created.
class Catalogue {
public:
    Catalogue(db::Connection& connection, Engine engine) : connection_(connection), engine_(engine) {}

    QStringList tables() {
        return column(engine_ == Engine::Sqlite
                          ? QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'")
                          : QStringLiteral("SELECT table_name AS name FROM information_schema.tables "
                                           "WHERE table_schema = 'public'"));
    }

    QStringList columns(const QString& table) {
        if (engine_ == Engine::Sqlite)
            return column(QStringLiteral("SELECT name FROM pragma_table_info('%1') ORDER BY cid").arg(table));
        return column(QStringLiteral("SELECT column_name AS name FROM information_schema.columns "
                                     "WHERE table_schema = 'public' AND table_name = '%1' ORDER BY ordinal_position")
                          .arg(table.toLower()));
    }

    QStringList primaryKey(const QString& table) {
        if (engine_ == Engine::Sqlite)
            return column(
                QStringLiteral("SELECT name FROM pragma_table_info('%1') WHERE pk > 0 ORDER BY pk").arg(table));
        return column(
            QStringLiteral("SELECT k.column_name AS name FROM information_schema.table_constraints c "
                           "JOIN information_schema.key_column_usage k ON k.constraint_name = c.constraint_name "
                           "AND k.table_schema = c.table_schema AND k.table_name = c.table_name "
                           "WHERE c.table_schema = 'public' AND c.constraint_type = 'PRIMARY KEY' "
                           "AND c.table_name = '%1' ORDER BY k.ordinal_position")
                .arg(table.toLower()));
    }

    // Index name -> its columns, for the indexes created besides the key.
    QMap<QString, QStringList> indexes(const QString& table) {
        QMap<QString, QStringList> result;
        if (engine_ == Engine::Sqlite) {
            const QStringList names = column(
                QStringLiteral(
                    "SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = '%1' AND sql IS NOT NULL")
                    .arg(table));
            for (const QString& name : names)
                result.insert(
                    name, column(QStringLiteral("SELECT name FROM pragma_index_info('%1') ORDER BY seqno").arg(name)));
            return result;
        }
        db::Recordset rs;
        if (!rs.open(QStringLiteral("SELECT indexname, indexdef FROM pg_indexes WHERE schemaname = 'public' "
                                    "AND tablename = '%1' AND indexname NOT LIKE '%%pkey'")
                         .arg(table.toLower()),
                     connection_)) {
            ADD_FAILURE() << "pg_indexes: " << rs.lastError().description.toStdString();
            return result;
        }
        static const QRegularExpression columnsPart(QStringLiteral("\\(([^()]*)\\)\\s*$"));
        for (; !rs.eof(); rs.moveNext()) {
            const auto m = columnsPart.match(rs.field(QStringLiteral("indexdef")).text());
            result.insert(rs.field(QStringLiteral("indexname")).text(),
                          m.hasMatch() ? m.captured(1).remove(QLatin1Char('"')).split(QStringLiteral(", "))
                                       : QStringList());
        }
        return result;
    }

private:
    QStringList column(const QString& sql) {
        QStringList values;
        db::Recordset rs;
        if (!rs.open(sql, connection_)) {
            ADD_FAILURE() << "catalogue query failed: " << sql.toStdString() << ": "
                          << rs.lastError().description.toStdString();
            return values;
        }
        for (; !rs.eof(); rs.moveNext())
            values.append(rs.field(QStringLiteral("name")).text());
        return values;
    }

    db::Connection& connection_;
    Engine engine_;
};

QStringList lower(QStringList names) {
    for (QString& n : names)
        n = n.toLower();
    return names;
}

schema::Flavor flavorOf(Engine engine) {
    return engine == Engine::Sqlite ? schema::Flavor::Sqlite : schema::Flavor::Postgres;
}

class SchemaTest : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        ASSERT_TRUE(folder_.isValid());
    }

    // Creates one database on a fresh scratch database and keeps it open.
    void create(schema::Database database) {
        scratch_ = std::make_unique<testdb::ScratchDatabase>(GetParam(), folder_.path());
        ASSERT_TRUE(scratch_->ok()) << scratch_->error().toStdString();
        ASSERT_TRUE(connection_.open(scratch_->connectionText())) << connection_.lastError().description.toStdString();
        for (const QString& statement : schema::createStatements(database, flavorOf(GetParam())))
            ASSERT_TRUE(connection_.execute(statement))
                << statement.toStdString() << ": " << connection_.lastError().description.toStdString();
    }

    void TearDown() override {
        connection_.close();
        scratch_.reset();
    }

    QTemporaryDir folder_;
    std::unique_ptr<testdb::ScratchDatabase> scratch_;
    db::Connection connection_;
};

// The 53 columns of a staff row, in the order the program writes them.
const QStringList kStaffColumns{"コード",
                                "姓",
                                "名",
                                "氏名",
                                "カナ姓",
                                "カナ名",
                                "カナ",
                                "性別区分",
                                "生年月日",
                                "郵便番号",
                                "住所A",
                                "住所B",
                                "住所C",
                                "電話",
                                "携帯電話",
                                "職責",
                                "EMAIL",
                                "担当者メモ",
                                "事業所コード",
                                "部門コード",
                                "セクションコード",
                                "役職コード",
                                "ログインID",
                                "在籍区分",
                                "社員区分",
                                "入社日付",
                                "退社日付",
                                "担当者印file",
                                "電話番号",
                                "携帯電話番号",
                                "社員コード",
                                "暗証番号",
                                "処理分類0操作許可",
                                "処理分類1操作許可",
                                "処理分類2操作許可",
                                "処理分類3操作許可",
                                "処理分類4操作許可",
                                "処理分類5操作許可",
                                "処理分類6操作許可",
                                "処理分類7操作許可",
                                "処理分類8操作許可",
                                "処理分類9操作許可",
                                "操作許可",
                                "入力許可",
                                "修正許可",
                                "削除許可",
                                "印刷許可",
                                "プレビュ許可",
                                "テキスト出力許可",
                                "イメージ出力許可",
                                "ユーザID",
                                "登録日付",
                                "更新日付"};

// The tables a staff row may be used in, searched by 担当者コード before a delete.
const QStringList kUseCheckTables{"T営業請求", "T営業納品", "T営業発注",     "T顧客注文", "T営業受注", "T営業引合",
                                  "T営業見積", "T出金",     "T営業活動明細", "T配送手配", "T承認",     "T案件",
                                  "T閲覧",     "T個人休日", "T個人行事",     "T個人日暦", "M付属書類", "M得意先",
                                  "M納品先",   "M仕入先",   "Mメーカ",       "M対応先"};

TEST_P(SchemaTest, MainDatabaseCreatesOnTheEngine) {
    create(schema::Database::Main);
    if (HasFatalFailure())
        return;
    Catalogue catalogue(connection_, GetParam());
    const QStringList present = lower(catalogue.tables());
    for (const schema::Table& t : schema::tables()) {
        EXPECT_EQ(present.contains(t.name.toLower()), t.databases.contains(schema::Database::Main))
            << t.name.toStdString();
    }
}

TEST_P(SchemaTest, ConfigurationAndPersonnelDatabasesCreateOnTheEngine) {
    create(schema::Database::Configuration);
    if (HasFatalFailure())
        return;
    Catalogue catalogue(connection_, GetParam());
    const QStringList present = lower(catalogue.tables());
    for (const char* name : {"データベース定義", "動作環境定義", "プログラム稼動履歴", "プログラム連携情報",
                             "プログラムクリップボード", "プログラムクリップボード明細", "営業支援データ管理",
                             "営業支援", "営業支援補助機能", "営業支援サービスメニュ"})
        EXPECT_TRUE(present.contains(QString::fromUtf8(name))) << name;
    EXPECT_FALSE(present.contains(QStringLiteral("m担当者")));
    EXPECT_EQ(lower(catalogue.primaryKey(QStringLiteral("データベース定義"))), QStringList{"情報種類"});
    EXPECT_EQ(lower(catalogue.primaryKey(QStringLiteral("動作環境定義"))), QStringList{"動作環境定義id"});
    EXPECT_EQ(lower(catalogue.columns(QStringLiteral("データベース定義"))),
              lower(QStringList{"情報種類", "db", "dbmw", "プロバイダ名", "データベース名", "ドライバ名", "ユーザーID",
                                "パスワード", "データソース名", "サーバー名", "接続文字列"}));
    const QStringList menu = catalogue.columns(QStringLiteral("営業支援データ管理"));
    ASSERT_EQ(menu.size(), 28);
    EXPECT_EQ(menu.first().toLower(), QStringLiteral("プログラムid"));
    EXPECT_EQ(menu.at(1), QStringLiteral("処理分類"));
    EXPECT_EQ(menu.at(2).toLower(), QStringLiteral("条件項目名a"));
    EXPECT_EQ(menu.last().toLower(), QStringLiteral("条件項目名z"));
    const QMap<QString, QStringList> history = catalogue.indexes(QStringLiteral("プログラム稼動履歴"));
    EXPECT_TRUE(
        std::any_of(history.begin(), history.end(), [](const QStringList& c) { return c == QStringList{"実行日付"}; }));
}

TEST_P(SchemaTest, PersonnelDatabaseHoldsEmployeesAndTheMastersTheyJoin) {
    create(schema::Database::Personnel);
    if (HasFatalFailure())
        return;
    Catalogue catalogue(connection_, GetParam());
    const QStringList present = lower(catalogue.tables());
    for (const char* name : {"M社員", "T異動", "T採用", "T退職", "T休職", "T諸届", "M事業所", "M部門", "Mセクション",
                             "M役職", "M就業形態", "K社員区分", "K在籍区分", "Mユーザ"})
        EXPECT_TRUE(present.contains(QString::fromUtf8(name).toLower())) << name;
    for (const char* name : {"M担当者", "L担当者", "データベース定義", "M郵便番号"})
        EXPECT_FALSE(present.contains(QString::fromUtf8(name).toLower())) << name;
}

TEST_P(SchemaTest, StaffMasterHasItsColumnsInOrder) {
    create(schema::Database::Main);
    if (HasFatalFailure())
        return;
    Catalogue catalogue(connection_, GetParam());
    QStringList expected = kStaffColumns;
    ASSERT_EQ(expected.size(), 53);
    expected.append(QStringLiteral("アクセス権限"));
    EXPECT_EQ(lower(catalogue.columns(QStringLiteral("M担当者"))), lower(expected));

    QStringList log{QStringLiteral("保守事業所コード"), QStringLiteral("保守番号基準日付"),
                    QStringLiteral("保守履歴No"), QStringLiteral("赤黒区分")};
    EXPECT_EQ(lower(catalogue.columns(QStringLiteral("L担当者"))), lower(log + kStaffColumns));
}

TEST_P(SchemaTest, SecondStaffRowWithTheSameCodeIsRefused) {
    create(schema::Database::Main);
    if (HasFatalFailure())
        return;
    ASSERT_TRUE(
        connection_.execute(QStringLiteral("INSERT INTO M担当者 (コード, 氏名) VALUES ('00001', '山田 太郎')")));
    EXPECT_FALSE(
        connection_.execute(QStringLiteral("INSERT INTO M担当者 (コード, 氏名) VALUES ('00001', '佐藤 花子')")));
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT COUNT(*) AS n FROM M担当者"), connection_));
    EXPECT_EQ(rs.field(QStringLiteral("n")).value.toInt(), 1);
    rs.close();
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT 氏名 FROM M担当者 WHERE コード = '00001'"), connection_));
    EXPECT_EQ(rs.field(QStringLiteral("氏名")).text(), QStringLiteral("山田 太郎"));
}

TEST_P(SchemaTest, EveryUseCheckTableHasAnIndexedStaffCode) {
    create(schema::Database::Main);
    if (HasFatalFailure())
        return;
    Catalogue catalogue(connection_, GetParam());
    ASSERT_EQ(kUseCheckTables.size(), 22);
    const QStringList present = lower(catalogue.tables());
    for (const QString& table : kUseCheckTables) {
        ASSERT_TRUE(present.contains(table.toLower())) << table.toStdString();
        EXPECT_TRUE(lower(catalogue.columns(table)).contains(QStringLiteral("担当者コード"))) << table.toStdString();
        const QMap<QString, QStringList> indexes = catalogue.indexes(table);
        const bool indexed = std::any_of(indexes.begin(), indexes.end(), [](const QStringList& c) {
            return !c.isEmpty() && c.first() == QStringLiteral("担当者コード");
        });
        EXPECT_TRUE(indexed) << table.toStdString();
        EXPECT_FALSE(catalogue.primaryKey(table).isEmpty()) << table.toStdString();
    }
    // Two of them keep their own definitions.
    EXPECT_EQ(lower(catalogue.primaryKey(QStringLiteral("T閲覧"))),
              lower(QStringList{"事業所コード", "番号基準日付", "閲覧No"}));
    EXPECT_EQ(lower(catalogue.primaryKey(QStringLiteral("M付属書類"))),
              lower(QStringList{"情報名", "情報識別ID", "SEQNo"}));
    EXPECT_EQ(catalogue.columns(QStringLiteral("T閲覧")).size(), 20);
    EXPECT_EQ(catalogue.columns(QStringLiteral("M付属書類")).size(), 25);
}

TEST_P(SchemaTest, TablesHaveTheirKeys) {
    create(schema::Database::Main);
    if (HasFatalFailure())
        return;
    Catalogue catalogue(connection_, GetParam());
    const QList<std::pair<QString, QStringList>> keys{
        {"M担当者", {"コード"}},
        {"L担当者", {"保守事業所コード", "保守番号基準日付", "保守履歴No"}},
        {"Mユーザ", {"ID"}},
        {"M事業所", {"コード"}},
        {"M他業務連携", {"コード"}},
        {"使用状況", {"コンピュータID", "ユーザID"}},
        {"担当者別操作許可プログラム", {"担当者コード", "業務メニュ", "プログラムID"}},
        {"M電話番号", {"電話番号"}},
        {"A番号情報", {"番号ID"}},
        {"A期日別番号情報", {"番号ID", "期日"}},
        {"A事業所別番号情報", {"事業所コード", "番号ID"}},
        {"A事業所別期日別番号情報", {"事業所コード", "番号ID", "期日"}},
        {"B履歴番号情報", {"基本ID"}},
        {"B期日別履歴番号情報", {"基本ID", "期日"}},
        {"B事業所別履歴番号情報", {"事業所コード", "基本ID"}},
        {"B事業所別期日別履歴番号情報", {"事業所コード", "基本ID", "期日"}},
        {"M部門", {"コード"}},
        {"Mセクション", {"コード"}},
        {"M役職", {"コード"}},
        {"M郵便番号", {"郵便番号", "住所A", "住所B"}},
        {"K性別区分", {"区分"}},
        {"K在籍区分", {"区分"}},
        {"K社員区分", {"区分"}},
        {"K稼動状況区分", {"区分"}},
        {"K年号区分", {"区分"}},
        {"M就業形態", {"コード"}},
        {"M社員", {"コード"}},
        {"T異動", {"社員コード", "異動日付", "異動No"}},
        {"T採用", {"事業所コード", "番号基準日付", "採用No"}},
        {"T退職", {"社員コード", "退職日付"}},
        {"T休職", {"社員コード", "休職開始日付"}},
        {"T諸届", {"社員コード", "諸届日付", "諸届No"}},
    };
    for (const auto& [table, key] : keys)
        EXPECT_EQ(lower(catalogue.primaryKey(table)), lower(key)) << table.toStdString();

    EXPECT_EQ(lower(catalogue.columns(QStringLiteral("A番号情報"))),
              lower(QStringList{"番号ID", "名称", "連番種類", "連番", "履歴連番"}));
    EXPECT_EQ(lower(catalogue.columns(QStringLiteral("B履歴番号情報"))),
              lower(QStringList{"基本ID", "名称", "連番種類", "履歴連番"}));
    EXPECT_EQ(lower(catalogue.columns(QStringLiteral("K年号区分"))), lower(QStringList{"区分", "名称", "開始日付"}));
}

TEST_P(SchemaTest, ListWindowsAndLookupsHaveTheirIndexes) {
    create(schema::Database::Main);
    if (HasFatalFailure())
        return;
    Catalogue catalogue(connection_, GetParam());
    auto indexedBy = [&](const QString& table, const QStringList& columns) {
        const QMap<QString, QStringList> indexes = catalogue.indexes(table);
        return std::any_of(indexes.begin(), indexes.end(),
                           [&](const QStringList& c) { return lower(c) == lower(columns); });
    };
    for (const char* column : {"氏名", "カナ", "部門コード", "セクションコード", "事業所コード", "ログインID"}) {
        EXPECT_TRUE(indexedBy(QStringLiteral("M担当者"), {QString::fromUtf8(column)})) << column;
        if (QString::fromUtf8(column) != QStringLiteral("ログインID")) {
            EXPECT_TRUE(indexedBy(QStringLiteral("M社員"), {QString::fromUtf8(column)})) << column;
        }
    }
    EXPECT_TRUE(indexedBy(QStringLiteral("M部門"), {"稼動状況区分"}));
    EXPECT_TRUE(indexedBy(QStringLiteral("Mセクション"), {"稼動状況区分"}));
    EXPECT_TRUE(indexedBy(QStringLiteral("M郵便番号"), {"郵便番号"}));
    EXPECT_TRUE(indexedBy(QStringLiteral("K年号区分"), {"開始日付"}));
    EXPECT_TRUE(indexedBy(QStringLiteral("T閲覧"), {"担当者コード"}));
    EXPECT_TRUE(indexedBy(QStringLiteral("M付属書類"), {"担当者コード"}));

    // Every index statement produced a catalogue entry under its full name (none was cut short).
    int statements = 0;
    QStringList names;
    for (const QString& s : schema::createStatements(schema::Database::Main, flavorOf(GetParam()))) {
        if (s.startsWith(QStringLiteral("CREATE INDEX "))) {
            ++statements;
            names.append(s.section(QLatin1Char(' '), 2, 2).toLower());
        }
    }
    QStringList found;
    for (const schema::Table& t : schema::tables()) {
        if (t.databases.contains(schema::Database::Main))
            found += lower(catalogue.indexes(t.name).keys());
    }
    found.sort();
    names.sort();
    EXPECT_GT(statements, 40);
    EXPECT_EQ(found, names);
}

TEST_P(SchemaTest, AttachedDocumentAmountIsANumber) {
    create(schema::Database::Main);
    if (HasFatalFailure())
        return;
    ASSERT_TRUE(connection_.execute(QStringLiteral(
        "INSERT INTO M付属書類 (情報名, 情報識別ID, SEQNo, 対象金額) VALUES ('担当者登録', '00001', '001', 0)")));
    ASSERT_TRUE(connection_.execute(QStringLiteral(
        "INSERT INTO M付属書類 (情報名, 情報識別ID, SEQNo, 対象金額) VALUES ('担当者登録', '00001', '002', 1200)")));
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT SUM(対象金額) AS total FROM M付属書類"), connection_));
    EXPECT_EQ(rs.field(QStringLiteral("total")).value.toInt(), 1200);
}

INSTANTIATE_TEST_SUITE_P(Engines, SchemaTest, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

TEST(SchemaDefinition, FindIgnoresCaseAndKnowsEveryTableOnce) {
    ASSERT_NE(schema::find(QStringLiteral("m担当者")), nullptr);
    EXPECT_EQ(schema::find(QStringLiteral("m担当者"))->name, QStringLiteral("M担当者"));
    EXPECT_EQ(schema::find(QStringLiteral("存在しない表")), nullptr);
    QStringList names;
    for (const schema::Table& t : schema::tables()) {
        EXPECT_FALSE(names.contains(t.name.toLower())) << t.name.toStdString();
        names.append(t.name.toLower());
    }
    const schema::Table* documents = schema::find(QStringLiteral("M付属書類"));
    ASSERT_NE(documents, nullptr);
    for (const schema::Column& c : documents->columns)
        EXPECT_EQ(c.type == schema::Column::Number, c.name == QStringLiteral("対象金額")) << c.name.toStdString();
}

TEST(SchemaDefinition, StatementsAreOneEachWithoutIfNotExists) {
    for (auto database : {schema::Database::Configuration, schema::Database::Main, schema::Database::Personnel}) {
        for (auto flavor : {schema::Flavor::Sqlite, schema::Flavor::Postgres}) {
            const QStringList statements = schema::createStatements(database, flavor);
            ASSERT_FALSE(statements.isEmpty());
            for (const QString& s : statements) {
                EXPECT_TRUE(s.startsWith(QStringLiteral("CREATE TABLE ")) ||
                            s.startsWith(QStringLiteral("CREATE INDEX ")))
                    << s.toStdString();
                EXPECT_FALSE(s.contains(QStringLiteral("IF NOT EXISTS"))) << s.toStdString();
                EXPECT_FALSE(s.contains(QLatin1Char(';'))) << s.toStdString();
            }
        }
    }
}

} // namespace
