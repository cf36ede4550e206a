#pragma once
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/Paths.h>

namespace query {

/// A query as it is edited, stored in query files and kept by query fills: its name, its SQL, and the layout in which
/// its result is printed.
struct QueryDocument
{
    /// The name of a query definition of the database, or the path of a query file relative to the project folder;
    /// empty for a new query.
    QString name;
    QString sql; ///< may hold bracketed macros and parameters
    tarnwick::JTablePrintArg layout;

    /// Only the extension decides: a name that ends in ".qry" is a query file, every other a query of the database.
    static bool isFileName(QStringView name);
    bool isFile() const { return isFileName(name); }
    /// The file-name part of the name.
    QString nameInFolder() const { return tarnwick::SuitePath(name).fileName(); }

    /// Record version 3: name, SQL, print layout. Records of versions 1 and 2 have no layout; the present one stays.
    void serialize(tarnwick::JFile &file);
    bool operator==(const QueryDocument &) const = default;
};

/// Reads a query file: the structured format, or any text file holding one SQL statement (recognised by its first four
/// bytes; UTF-8, else 8-bit characters), which leaves the layout as it is. The document's name becomes the file's path
/// relative to the project. Throws tarnwick::FileError; the document is then as before.
void readQueryFile(QueryDocument &document, const QString &machinePath, const tarnwick::PathRoots &roots);

/// Writes the structured format. The document keeps its own name. Throws tarnwick::FileError.
void writeQueryFile(const QueryDocument &document, const QString &machinePath);

} // namespace query
