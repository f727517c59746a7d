#pragma once

// A tree made by the installation tool with both databases open, for the
// number tables and the access records.

#include "shell/modデータ処理.h"
#include "support/installation.h"

#include <gtest/gtest.h>

#include <memory>

class NumbersTest : public ::testing::TestWithParam<testdb::Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
        ctx().company.決算月 = 3;
        ctx().company.決算日 = 31;
        ctx().company.伝票番号管理区分 = 0;
        ctx().run.操作事業所コード = QStringLiteral("001");
        ctx().env.運用事業所コード = QStringLiteral("001");
        errorsBefore = errors().size();
        tree->messages.shown.clear();
    }

    Context& ctx() { return tree->ctx(); }

    void execute(const QString& sql) { ASSERT_TRUE(tree->mainExecute(sql)) << sql.toStdString(); }

    // All rows of a table, ordered by the given columns, each joined by '|'.
    QStringList rows(const QString& table, const QStringList& columns) const {
        return tree->mainRows(QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" ORDER BY ") +
                                  columns.join(QStringLiteral(", ")),
                              columns);
    }

    // The error rows of the run history written since the set-up, without the counter.
    QStringList newErrors() const { return errors().mid(errorsBefore); }

    // A statement as an error row of the run history keeps it: quotes doubled.
    static QString logged(const QString& sql) {
        return QStringLiteral("エラー ") + QString(sql).replace(QLatin1Char('\''), QStringLiteral("''"));
    }

    // True when one of the new error rows begins with the statement.
    bool loggedError(const QString& sql) const {
        for (const QString& row : newErrors())
            if (row.startsWith(logged(sql)))
                return true;
        return false;
    }

    std::unique_ptr<TestInstallation> tree;

private:
    QStringList errors() const {
        QStringList out;
        for (const QString& row : tree->history()) {
            const QString text = row.section(QLatin1Char('|'), 1);
            if (text.startsWith(QStringLiteral("エラー ")))
                out.append(text);
        }
        return out;
    }
    qsizetype errorsBefore = 0;
};
