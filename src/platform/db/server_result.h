#pragma once

#include <QString>
#include <QVariant>

#include <vector>

class QSqlQuery;
struct pg_result;

namespace db {

// The rows of a server statement as the client library under the server's
// driver keeps them, read without the driver's conversions: the columns'
// names, and a text value taken from its UTF-8 only when the program asks for
// it. Values of other kinds are left to the driver.
class ServerResult {
public:
    // The result the query holds; none when the query's driver keeps its rows
    // another way (another engine, or a driver built on another library).
    explicit ServerResult(const QSqlQuery& query);

    bool available() const { return result_ != nullptr; }
    int columnCount() const;
    QString columnName(int column) const;
    // Whether the column holds text, which value() gives.
    bool isText(int column) const { return column >= 0 && column < columnCount() && text_[column]; }
    // A text column's value in a row: the text, or a null text.
    QVariant value(int row, int column) const;

private:
    const pg_result* result_ = nullptr;
    std::vector<bool> text_; // per column of the result: whether it holds text
};

} // namespace db
