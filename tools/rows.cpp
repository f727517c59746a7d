#include "tools/rows.h"

#include "platform/db/connection.h"
#include "schema/schema.h"

#include <algorithm>

namespace setup {

QString quoted(const QString& text) {
    QString doubled = text;
    doubled.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + doubled + QLatin1Char('\'');
}

bool RowWriter::run(const QString& table, const QString& sql) {
    if (connection_.execute(sql))
        return true;
    error_ = QStringLiteral("%1 に登録できません: %2").arg(table, connection_.lastError().description);
    return false;
}

bool RowWriter::insert(const QString& table, const Values& values) {
    const schema::Table* definition = schema::find(table);
    if (!definition) {
        error_ = QStringLiteral("表がありません: ") + table;
        return false;
    }
    if (!definition->databases.contains(database_))
        return true;
    for (const auto& [column, value] : values) {
        const bool known = std::any_of(definition->columns.begin(), definition->columns.end(),
                                       [&](const schema::Column& c) { return c.name == column; });
        if (!known) {
            error_ = QStringLiteral("列がありません: %1.%2").arg(table, column);
            return false;
        }
    }
    QStringList names;
    QStringList literals;
    for (const schema::Column& c : definition->columns) {
        names.append(c.name);
        const auto given = std::find_if(values.begin(), values.end(), [&](const auto& v) { return v.first == c.name; });
        if (c.type == schema::Column::Number)
            literals.append(given != values.end() && !given->second.isEmpty() ? given->second : QStringLiteral("0"));
        else
            literals.append(quoted(given != values.end() ? given->second : QString()));
    }
    return run(table,
               QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                   .arg(definition->name, names.join(QStringLiteral(", ")), literals.join(QStringLiteral(", "))));
}

bool RowWriter::insertMany(const QString& table, const QStringList& columns, const QList<QStringList>& rows,
                           qsizetype rowsPerStatement) {
    if (const schema::Table* definition = schema::find(table); definition && !definition->databases.contains(database_))
        return true;
    const QString head = QStringLiteral("INSERT INTO %1 (%2) VALUES ").arg(table, columns.join(QStringLiteral(", ")));
    for (qsizetype first = 0; first < rows.size(); first += rowsPerStatement) {
        QString sql = head;
        const qsizetype last = std::min(rows.size(), first + rowsPerStatement);
        for (qsizetype i = first; i < last; ++i) {
            if (i > first)
                sql += QStringLiteral(", ");
            QStringList literals;
            for (const QString& value : rows.at(i))
                literals.append(quoted(value));
            sql += QLatin1Char('(') + literals.join(QStringLiteral(", ")) + QLatin1Char(')');
        }
        if (!run(table, sql))
            return false;
    }
    return true;
}

} // namespace setup
