#pragma once

#include <QString>

#include <functional>
#include <optional>

// Creates a new installation tree: folders, the configuration database, the
// main database with its seed rows (and, on request, a demo company) and the
// postcode master.
namespace setup {

// A PostgreSQL server for the main database.
struct Server {
    QString host;
    int port = 5432;
    QString database, user, password;
    QString dialect = QStringLiteral("S"); // "S" or "O"
};

enum class Postcodes {
    Npm,     // fetch the pinned postcode package with npm; the compiled-in sample when that fails
    Fixture, // the compiled-in sample only
    File,    // a file at hand: the package .tgz, or the postal service's all-Japan CSV file or its zip
};

struct Options {
    QString root;        // the folder to create; must not exist or be empty
    QString programFile; // built program to copy into prgbin (may be empty)
    QString reportProgramFile; // built report program, copied into prgbin as 担当者カード (may be empty)
    bool demo = false;
    std::optional<Server> server; // main database on PostgreSQL; else a desktop file
    Postcodes postcodes = Postcodes::Npm;
    QString postcodeFile; // for Postcodes::File: a package .tgz of jquery-jpostal-ja, or the all-Japan .csv or .zip
};

struct Result {
    bool ok = false;
    QString message;
};

Result createInstallation(const Options& options, const std::function<void(const QString&)>& progress = {});

// The connection text of the main database as the program builds it from the
// row that createInstallation writes into データベース定義.
QString mainConnectionText(const Options& options);

// The npm package the postcodes come from.
inline constexpr char kPostcodePackage[] = "jquery-jpostal-ja@2.14.73";

} // namespace setup
