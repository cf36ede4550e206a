#pragma once
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/Paths.h>

namespace query {

/// A query as edited, stored in query files and kept by query fills: its name, its SQL, and the print layout of its
/// result.
struct QueryDocument
{
    /// Name of a query definition of the database, or path of a query file relative to the project folder. Empty for a
    /// new query.
    QString name;
    QString sql; ///< may contain bracketed macros and parameters
    tarnwick::JTablePrintArg layout;

    /// Decided by the extension only: a name that ends in ".qry" is a query file, any other is a query of the database.
    static bool isFileName(QStringView name);
    bool isFile() const { return isFileName(name); }
    /// The file name without the folder.
    QString nameInFolder() const { return tarnwick::SuitePath(name).fileName(); }

    /// Record version 3: name, SQL, print layout. Records of versions 1 and 2 have no layout; the current one is kept.
    void serialize(tarnwick::JFile &file);
    bool operator==(const QueryDocument &) const = default;
};

/// The text of a query that is kept as plain text: UTF-16 if it begins with a byte order mark, UTF-8, otherwise code
/// page 1252.
QString textOfQuery(const QByteArray &bytes);

/// Reads a query file: either the structured format, recognised by its first four bytes, or any text file with one SQL
/// statement (UTF-8, otherwise code page 1252), which does not change the layout. The document's name becomes the
/// file's path relative to the project. Throws tarnwick::FileError; the document is then unchanged.
void readQueryFile(QueryDocument &document, const QString &machinePath, const tarnwick::PathRoots &roots);

/// Writes the structured format. The document's name is not changed. Throws tarnwick::FileError.
void writeQueryFile(const QueryDocument &document, const QString &machinePath);

} // namespace query
