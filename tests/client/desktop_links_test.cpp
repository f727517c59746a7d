// The desktop engine of this platform: the report form files are SQLite files
// whose tables are all their own, so there is nothing to relink.

#include "platform/db/connection.h"
#include "platform/db/table_links.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(DesktopTableLinks, TablesOfADesktopFileAreLocalAndCannotBeRelinked) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString file = dir.filePath(QStringLiteral("repfrmdb.accdb"));
    {
        QFile make(file);
        ASSERT_TRUE(make.open(QIODevice::WriteOnly));
    }
    {
        db::Connection cn;
        ASSERT_TRUE(cn.open(QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") + file +
                            QStringLiteral(";")));
        ASSERT_TRUE(cn.execute(QStringLiteral("CREATE TABLE T売上帳票 (コード TEXT)")));
    }

    db::DesktopTableLinks links;
    ASSERT_TRUE(links.open(file, QStringLiteral("DAO.DBEngine.120")));
    const QList<db::TableDef> defs = links.tableDefs();
    ASSERT_EQ(defs.size(), 1);
    EXPECT_EQ(defs.first().name, QStringLiteral("T売上帳票"));
    EXPECT_EQ(defs.first().attributes, 0);
    EXPECT_FALSE(links.setConnect(QStringLiteral("T売上帳票"), QStringLiteral(";DATABASE=x")));
    EXPECT_FALSE(links.refreshLink(QStringLiteral("T売上帳票")));
    EXPECT_TRUE(links.lastError().contains(QStringLiteral("T売上帳票")));
    links.close();
    EXPECT_TRUE(links.tableDefs().isEmpty());
}

TEST(DesktopTableLinks, FileThatIsNoDatabaseDoesNotOpen) {
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("repfrmdb.mdb"));
    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("a report form file of another kind, and no database of this platform at all");
    text.close();

    db::DesktopTableLinks links;
    EXPECT_FALSE(links.open(file, QString()));
    EXPECT_FALSE(links.lastError().isEmpty());
    EXPECT_TRUE(links.tableDefs().isEmpty());
    EXPECT_FALSE(links.open(dir.filePath(QStringLiteral("missing.accdb")), QString()));
}

} // namespace
