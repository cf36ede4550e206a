#pragma once
#include "Target.h"

#include <optional>
#include <plans/storage/NamedRows.h>
#include <plans/storage/TubeListFile.h>
#include <query/QueryDocument.h>

namespace cli {

/// Machine path of a file argument that will be written. Throws Error if its folder does not exist.
QString placeToWrite(const Target &target, const QString &argument);
/// Throws UsageError if the tubes file has an extension other than ".csv".
void checkTubesEnding(const QString &argument);
/// Writes tubes as text to the file given by --tubes.
void writeTubes(const Target &target, const QString &argument, const QString &text);

/// The tubes of a list file, each once, in the file's order. Lines that name no tube of the component are printed as
/// warnings. Throws FileError if the file cannot be read.
QList<qint32> readTubeList(Target &target, const QString &argument);

/// The list of a file with its notes. Lines that name no tube of the component are printed as warnings and left out.
/// hasEntryNumbers: also lines of a file that does not end in ".lst" begin with entry numbers. Throws FileError if the
/// file cannot be read.
plans::TubeList readList(Target &target, const QString &argument, bool hasEntryNumbers);

/// True if an argument that looks like a file is none, but the name of a plan or tube set in the database. Connects for
/// reading. Throws the engine's exceptions.
bool isStoredName(Target &target, const plans::NamedTables &tables, const QString &argument);

/// The query of a file; empty after reporting why it cannot be read.
std::optional<query::QueryDocument> readQuery(Target &target, const QString &argument);
/// The tubes that the records of a query name, each once. Records that name no tube of the component are printed as
/// warnings. Empty after reporting why the query cannot be run. The database must be connected.
std::optional<QList<qint32>> runTubeQuery(Target &target, const query::QueryDocument &query);

} // namespace cli
