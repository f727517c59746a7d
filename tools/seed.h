#pragma once

#include <QList>
#include <QString>

namespace setup {

class RowWriter;

// The rows every new main database starts with: company, offices,
// organisation, class tables, number definitions and outside systems.
// The photo and document folders are those of the finished tree.
bool seedMain(RowWriter& writer, const QString& photoFolder, const QString& documentFolder);

// A believable company on top of the seed: more offices, about a hundred
// staff, employees with their history, and a few new hires of the personnel
// system who are no staff yet. The same rows on every run.
bool seedDemo(RowWriter& writer);

// The demo's employees, with the pictures the personnel system keeps of them.
struct DemoEmployee {
    QString code;
    QString familyName;
    bool woman = false;
    int photos = 0;     // photographs: <code>.jpg, a second one <code>_2.jpg
    bool seal = false;  // a seal impression <code>.png
    bool staff = false; // registered as staff already
};
QList<DemoEmployee> demoEmployees();

} // namespace setup
