#include "PlainDatabase.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

PlainDatabase::PlainDatabase(const QString &path)
{
    require(sqlite3_open(path.toUtf8().constData(), &m_database) == SQLITE_OK);
    // Same settings as the engine.
    run("PRAGMA foreign_keys = ON");
    run("PRAGMA cache_size = -65536");
    run("PRAGMA secure_delete = OFF");
}

PlainDatabase::~PlainDatabase()
{
    sqlite3_close(m_database);
}

void PlainDatabase::run(const char *sql)
{
    require(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
}

void PlainDatabase::require(bool good) const
{
    if (good)
        return;
    std::fprintf(stderr, "%s\n", sqlite3_errmsg(m_database));
    std::abort();
}

PlainStatement::PlainStatement(const PlainDatabase &database, const char *sql)
    : m_database(database)
{
    database.require(sqlite3_prepare_v2(database.handle(), sql, -1, &m_statement, nullptr) == SQLITE_OK);
}

PlainStatement::~PlainStatement()
{
    sqlite3_finalize(m_statement);
}

bool PlainStatement::step()
{
    const int result = sqlite3_step(m_statement);
    m_database.require(result == SQLITE_ROW || result == SQLITE_DONE);
    return result == SQLITE_ROW;
}

qint64 PlainStatement::readRow() const
{
    qint64 sum = 0;
    const int columns = sqlite3_column_count(m_statement);
    for (int i = 0; i < columns; ++i) {
        switch (sqlite3_column_type(m_statement, i)) {
        case SQLITE_INTEGER:
            sum += sqlite3_column_int64(m_statement, i);
            break;
        case SQLITE_FLOAT:
            sum += qint64(sqlite3_column_double(m_statement, i));
            break;
        case SQLITE_TEXT:
            sum += *sqlite3_column_text(m_statement, i);
            sum += sqlite3_column_bytes(m_statement, i);
            break;
        default:
            break;
        }
    }
    return sum;
}

} // namespace bench
