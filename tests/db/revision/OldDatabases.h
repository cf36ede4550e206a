#pragma once
#include <dao/Database.h>
#include <QString>

/// Makers of databases as older revisions of the program wrote them.
namespace old {

/// What a database has of old shapes: each bit is what one step of the conversion finds.
enum Shape : int {
    Current = 0,
    DisplayFormat = 1, ///< display formats in a table
    NoRepairs = 2,     ///< no table of repairs
    Report = 4,        ///< report without util1, util2 and plan
    Landmarks = 8,     ///< landmarks in one set, by number
    TubeSets = 16,     ///< entries of tube sets without number, colour and symbol
    Plans = 32,        ///< plans by site, component, outage and number
    Tubes = 64,        ///< tubes without their place
    NoAliases = 128,   ///< no alias tables
    Everything = 255
};

/// How many rows go into the tables that are large in use.
struct Sizes
{
    qint64 report = 12;
    qint64 planEntries = 6; ///< of three plans: S1 SGA R11 2, S1 SGA R12 1, S1 SGA R12 3
    qint64 tubes = 4;
};

/// Makes a database of that shape at path, with rows in every table. Views are not made.
void makeDatabase(const QString &path, int shapes, const Sizes &sizes = {});

/// A database of the foreign inspection data system, with its four tables and no rows.
void makeForeignDatabase(const QString &path);

/// Statements on the file at path, one after the other.
void executeAll(const QString &path, const QStringList &statements);

} // namespace old
