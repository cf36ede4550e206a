#pragma once
#include <optional>
#include <QStringList>

namespace dao {
class Database;
}

namespace query {

/// What a statement reads, told in words: by which index, how many rows, and what would make it faster.
struct StatementWords
{
    /// An index that would help.
    struct Advice
    {
        QString text;   ///< what it would do, and for a table of the program why it cannot be made
        QString create; ///< the statement that makes it; empty for a table of the program
    };
    QStringList steps;
    QList<Advice> advice;

    /// Nothing is run, but the rows of the tables are counted. foundRows: rows that the statement found when it was
    /// executed, if that is known. Throws dao::DaoException if it cannot be compiled, and tarnwick::Cancelled.
    static StatementWords of(dao::Database &database, const QString &sql, std::optional<qint64> foundRows = {});
    /// Everything as one text, for reading.
    QString text() const;
};

/// The words of several statements as one text; each stands below its number.
QString textOf(const QList<StatementWords> &statements);

} // namespace query
