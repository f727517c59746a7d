#include "platform/db/table_links.h"

#include <QSqlDatabase>

namespace db {

bool DesktopTableLinks::open(const QString& file, const QString& /*engine*/) {
    error_.clear();
    file_ = std::make_unique<Connection>();
    if (!file_->open(QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") + file +
                     QStringLiteral(";"))) {
        error_ = file_->lastError().description;
        file_.reset();
        return false;
    }
    return true;
}

QList<TableDef> DesktopTableLinks::tableDefs() {
    QList<TableDef> defs;
    if (!file_)
        return defs;
    for (const QString& name : file_->database().tables())
        defs.append({name, 0, QString()});
    return defs;
}

bool DesktopTableLinks::notLinked(const QString& table) {
    error_ = QStringLiteral("リンクテーブルではありません: ") + table;
    return false;
}

bool DesktopTableLinks::setConnect(const QString& table, const QString& /*connect*/) { return notLinked(table); }

bool DesktopTableLinks::refreshLink(const QString& table) { return notLinked(table); }

void DesktopTableLinks::close() { file_.reset(); }

DesktopTableLinks& DesktopTableLinks::instance() {
    static DesktopTableLinks links;
    return links;
}

} // namespace db
