// Paths handed to the desktop: documents, links and the manual.

#include "shell/modデータ処理.h"
#include "support/installation.h"

#include <gtest/gtest.h>

namespace {

class DesktopFiles : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
        ASSERT_TRUE(環境DBopen(tree.ctx()));
    }
    TestInstallation tree{testdb::Engine::Sqlite};
};

TEST_F(DesktopFiles, PathGoesWithItsFolderAsTheWorkingFolder) {
    ファイル実行open(tree.ctx(), QStringLiteral("/srv/docs/報告.doc"));
    EXPECT_EQ(tree.desktop.opened, QStringList{QStringLiteral("/srv/docs/報告.doc|/srv/docs")});
}

TEST_F(DesktopFiles, LinkWithoutAFolderHasNoWorkingFolder) {
    ファイル実行open(tree.ctx(), QStringLiteral("mailto:taro@example.jp"));
    EXPECT_EQ(tree.desktop.opened, QStringList{QStringLiteral("mailto:taro@example.jp|")});
}

TEST_F(DesktopFiles, ManualIsTheProgramTitleInTheManualFolder) {
    マニュアルopen(tree.ctx());
    EXPECT_EQ(tree.desktop.opened, QStringList{tree.path(QStringLiteral("manual/担当者登録.doc")) + QLatin1Char('|') +
                                               tree.path(QStringLiteral("manual"))});
}

} // namespace
