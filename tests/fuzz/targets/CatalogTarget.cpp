#include "ByteReader.h"

#include <dao/Database.h>
#include <dao/Recordset.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace fuzz {
namespace {

constexpr int MostRows = 10;

struct SystemTable
{
    const char *name;
    std::initializer_list<const char *> columns;
};

const SystemTable systemTables[] = {
    {"_dao_tables", {"id", "name", "attributes", "rule", "rule_text"}},
    {"_dao_fields",
     {"table_id", "position", "name", "type", "size", "attributes", "required", "zero_length", "default_value", "rule",
      "rule_text"}},
    {"_dao_indexes", {"table_id", "position", "name", "flags"}},
    {"_dao_index_fields", {"table_id", "index_position", "position", "field", "descending"}},
    {"_dao_relations", {"name", "table_name", "foreign_table", "attributes"}},
    {"_dao_relation_fields", {"relation", "position", "field", "foreign_field"}},
    {"_dao_queries", {"name", "sql"}},
    {"_dao_properties", {"name", "value"}},
    {"sqlite_schema", {"name", "tbl_name", "sql", "rootpage"}},
};

class Files
{
public:
    Files()
    {
        dao::Workspace workspace;
        dao::Database database(workspace);
        database.create(path(), u";LANGID=0x0409;CP=1252;COUNTRY=0"_s);
        for (const QString &sql :
             {u"CREATE TABLE parent (id COUNTER PRIMARY KEY, name TEXT(20) NOT NULL, CONSTRAINT u UNIQUE (name))"_s,
              u"CREATE TABLE child (id LONG PRIMARY KEY, parent LONG, amount CURRENCY DEFAULT 5, seen DATETIME, done "
              "BIT, volts SINGLE, note MEMO, CHECK (amount >= 0), CONSTRAINT f FOREIGN KEY (parent) REFERENCES parent "
              "(id) ON DELETE CASCADE)"_s,
              u"CREATE INDEX amounts ON child (amount DESC, parent)"_s,
              u"CREATE VIEW both AS SELECT child.*, parent.name FROM child INNER JOIN parent ON child.parent = "
              "parent.id"_s,
              u"CREATE VIEW sums AS SELECT parent, Sum(amount) AS total FROM child GROUP BY parent"_s,
              u"INSERT INTO parent (name) VALUES ('one')"_s, u"INSERT INTO parent (name) VALUES ('two')"_s,
              u"INSERT INTO child VALUES (1, 1, 2.5, #1/2/2003#, Yes, 0.5, 'x')"_s,
              u"INSERT INTO child (id, parent) VALUES (2, 2)"_s})
            database.execute(sql);
        database.close();
        QFile file(path());
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("cannot read the file");
        m_good = file.readAll();
    }

    QString path() const { return m_folder.filePath(u"fuzz.mdb"_s); }
    const QByteArray &good() const { return m_good; }

    void write(const QByteArray &content) const
    {
        for (const QString &name : QDir(m_folder.path()).entryList(QDir::Files))
            QFile::remove(m_folder.filePath(name));
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            throw std::runtime_error("cannot write the file");
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_good;
};

// Places and what stands there instead; the file may end early.
void exchangeBytes(const Files &files, ByteReader &reader)
{
    constexpr qsizetype MostBytes = 16;
    QByteArray content = files.good();
    while (!reader.atEnd()) {
        const qsizetype place = qsizetype(reader.number<uint32_t>() % uint32_t(content.size()));
        const uint8_t count = reader.number<uint8_t>();
        if (count == 255) {
            content.truncate(std::max<qsizetype>(place, 1));
            continue;
        }
        const Bytes bytes = reader.take(count % MostBytes + 1);
        content.replace(place, qsizetype(bytes.size()),
                        QByteArray(reinterpret_cast<const char *>(bytes.data()), qsizetype(bytes.size())));
    }
    files.write(content);
}

void bindValue(sqlite3_stmt *statement, ByteReader &reader)
{
    const uint8_t kind = reader.number<uint8_t>() % 5;
    if (kind == 1) {
        sqlite3_bind_int64(statement, 1, reader.number<int8_t>());
    } else if (kind == 2) {
        sqlite3_bind_int64(statement, 1, reader.number<int64_t>());
    } else if (kind == 3) {
        const QString text = reader.text();
        sqlite3_bind_text16(statement, 1, text.utf16(), int(text.size() * 2), SQLITE_TRANSIENT);
    } else if (kind == 4) {
        sqlite3_bind_double(statement, 1, reader.number<double>());
    }
}

// One statement of the inner engine a turn; what it refuses is left out.
void changeRows(const Files &files, ByteReader &reader)
{
    files.write(files.good());
    sqlite3 *handle = nullptr;
    sqlite3_open(files.path().toUtf8().constData(), &handle);
    sqlite3_exec(handle,
                 "PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY; PRAGMA ignore_check_constraints = ON; "
                 "PRAGMA writable_schema = ON; BEGIN",
                 nullptr, nullptr, nullptr);
    while (!reader.atEnd()) {
        const SystemTable &table = systemTables[reader.number<uint8_t>() % std::size(systemTables)];
        const char *column = table.columns.begin()[reader.number<uint8_t>() % table.columns.size()];
        const std::string row = std::to_string(reader.number<uint8_t>());
        const std::string rows = " WHERE rowid = (SELECT rowid FROM " + std::string(table.name) + " LIMIT 1 OFFSET " +
                                 row + " % (SELECT max(1, count(*)) FROM " + table.name + "))";
        const bool removes = reader.number<uint8_t>() % 8 == 0;
        const std::string sql = removes ? "DELETE FROM " + std::string(table.name) + rows
                                        : "UPDATE " + std::string(table.name) + " SET " + column + " = ?1" + rows;
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement, nullptr);
        if (!statement)
            continue;
        bindValue(statement, reader);
        sqlite3_step(statement);
        sqlite3_finalize(statement);
    }
    sqlite3_exec(handle, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(handle);
}

void checkError(const dao::DaoException &exception)
{
    const QString &text = exception.description();
    if (exception.number() <= 0 || text.isEmpty())
        throw Finding("an error without number or text");
    for (const QStringView wording : {u"SQL logic", u"malformed", u"no such column", u"syntax error near"}) {
        if (text.contains(wording))
            throw Finding("the inner engine's wording: " + text.toStdString());
    }
}

/// Runs something that may fail with an error of ours.
template <typename Action>
bool tried(Action action)
{
    try {
        action();
        return true;
    } catch (const dao::DaoException &exception) {
        checkError(exception);
        return false;
    }
}

void readRows(dao::Database &database, dao::Recordset::Type type, const QString &name)
{
    dao::Recordset set(database);
    set.open(type, name);
    for (int row = 0; row < MostRows && !set.isEof(); ++row, set.moveNext()) {
        for (int i = 0; i < set.fieldCount(); ++i)
            dao::convertValue(set.value(i), dao::DataType::Text);
    }
}

void useDatabase(dao::Database &database)
{
    const QStringList tables = database.tableNames();
    for (const QString &name : tables) {
        tried([&] { database.table(name); });
        tried([&] { readRows(database, dao::Recordset::Type::Dynaset, name); });
    }
    for (const QString &name : database.queryNames())
        tried([&] { readRows(database, dao::Recordset::Type::Snapshot, name); });
    tried([&] { database.relations(); });
    tried([&] { database.execute(u"INSERT INTO child (id, parent, note) VALUES (7, 1, 'new')"_s); });
    tried([&] { database.execute(u"UPDATE parent SET name = name & '!'"_s); });
    tried([&] { database.execute(u"DELETE FROM parent WHERE id = 1"_s); });
    tried([&] { database.execute(u"ALTER TABLE child ADD COLUMN more TEXT(5)"_s); });
    for (const QString &name : tables.first(std::min<qsizetype>(tables.size(), 3)))
        tried([&] { database.deleteTable(name); });
}

} // namespace

void openCatalog(Bytes bytes)
{
    static const Files files;
    ByteReader reader(bytes);
    const uint8_t mode = reader.number<uint8_t>();
    if (mode % 2 == 0)
        exchangeBytes(files, reader);
    else
        changeRows(files, reader);
    dao::Workspace workspace;
    dao::Database database(workspace);
    const dao::OpenMode openMode = mode & 2 ? dao::OpenMode::ReadOnly : dao::OpenMode::Update;
    if (tried([&] { database.open(files.path(), openMode); }))
        useDatabase(database);
    tried([&] { database.close(); });
}

} // namespace fuzz
