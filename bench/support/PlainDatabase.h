#pragma once
#include <QString>
#include <sqlite3.h>

namespace bench {

/// A database file used directly through SQLite, without the engine. Any failure ends the benchmark.
class PlainDatabase
{
public:
    explicit PlainDatabase(const QString &path);
    ~PlainDatabase();
    PlainDatabase(const PlainDatabase &) = delete;
    PlainDatabase &operator=(const PlainDatabase &) = delete;

    sqlite3 *handle() const { return m_database; }
    void run(const char *sql);
    /// Ends the benchmark with the database's message unless good.
    void require(bool good) const;

private:
    sqlite3 *m_database = nullptr;
};

class PlainStatement
{
public:
    PlainStatement(const PlainDatabase &database, const char *sql);
    ~PlainStatement();
    PlainStatement(const PlainStatement &) = delete;
    PlainStatement &operator=(const PlainStatement &) = delete;

    sqlite3_stmt *handle() const { return m_statement; }
    bool step();
    void reset() { sqlite3_reset(m_statement); }
    /// Reads every column of the row by its type. The sum only ensures that every cell is read.
    qint64 readRow() const;

private:
    const PlainDatabase &m_database;
    sqlite3_stmt *m_statement = nullptr;
};

} // namespace bench
