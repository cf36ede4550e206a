#include "TableLoad.h"

#include "DatabaseImpl.h"

#include <dao/store/ConnectionScopes.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/IndexBuild.h>
#include <dao/store/TableDefinition.h>
#include <dao/store/ValueBinding.h>

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.TableDef"_s;

QString insertSql(const TableInfo &table)
{
    QStringList names;
    for (const FieldInfo &field : table.fields)
        names.append(sql::quotedName(field.name));
    const QStringList places(names.size(), u"?"_s);
    return u"INSERT INTO "_s + sql::quotedName(table.name) + u" ("_s + names.join(u", "_s) + u") VALUES ("_s +
           places.join(u", "_s) + u')';
}

QSet<QString> foldedNames(const QStringList &names)
{
    QSet<QString> folded;
    for (const QString &name : names)
        folded.insert(store::folded(name));
    return folded;
}

store::StoredTable create(DatabaseImpl &db, const TableInfo &table, const QStringList &nullFields)
{
    store::SourceScope scope(db.connection, kSource);
    db.prepareStatement();
    return db.editor.createUnindexed(table, foldedNames(nullFields));
}

} // namespace

struct TableLoad::Impl
{
    Impl(DatabaseImpl &database, const TableInfo &info, const QStringList &nullFields)
        : db(database)
        , table(create(database, info, nullFields))
        , insert(db.connection, insertSql(table.info))
    {
        for (const FieldInfo &field : table.info.fields)
            fields.push_back({valueTypeOf(field.type), store::isNotNull(table, field)});
    }

    struct Field
    {
        Value::Type type;
        bool notNull;
    };

    [[noreturn]] void refuse(int number, int field, const QStringList &arguments = {}) const
    {
        throw LoadError(store::engineError(number, kSource, arguments), table.info.fields[field].name);
    }

    void bind(int i, const Value &value)
    {
        const Field &field = fields[size_t(i)];
        if (!value.hasNoValue()) {
            // Values must have the exact type: the caller knows the source format and converts once.
            if (value.type() != field.type)
                refuse(error::ConversionFailed, i);
            store::bindValue(insert, i + 1, value);
        } else if (field.type == Value::Type::Boolean) {
            store::bindValue(insert, i + 1, Value::fromBoolean(false));
        } else if (field.notNull) {
            refuse(error::RequiredField, i, {table.info.name + u'.' + table.info.fields[i].name});
        } else {
            insert.bindNull(i + 1);
        }
    }

    DatabaseImpl &db;
    store::StoredTable table;
    // Rows of the source database are stored even if they break a rule; PRAGMA ignore_check_constraints is set for the
    // time of the load.
    store::UncheckedWrites unchecked{db.connection};
    store::Statement insert;
    std::vector<Field> fields;
};

TableLoad::TableLoad(Database &database, const TableInfo &table, const QStringList &nullFields)
    : m_impl(std::make_unique<Impl>(database.impl(), table, nullFields))
{
}

TableLoad::~TableLoad() = default;

void TableLoad::append(const QList<Value> &values)
{
    if (values.size() != qsizetype(m_impl->fields.size()))
        throw store::engineError(error::InvalidArgument, kSource);
    for (int i = 0; i < int(values.size()); ++i)
        m_impl->bind(i, values[i]);
    try {
        m_impl->insert.run();
    } catch (const DaoException &exception) {
        // The indexes do not exist yet, so only the row key can be a duplicate.
        if (exception.number() == error::DuplicateKey)
            throw LoadError(exception, m_impl->table.info.keyColumn);
        throw;
    }
    ++m_rows;
}

void TableLoad::setLastAutoNumber(qint64 number)
{
    store::Connection &connection = m_impl->db.connection;
    const QString name = store::literal(m_impl->table.info.name);
    if (connection.number(u"SELECT count(*) FROM sqlite_schema WHERE name = 'sqlite_sequence'"_s) == 0)
        return;
    if (connection.number(u"SELECT count(*) FROM sqlite_sequence WHERE name = "_s + name) == 0)
        connection.run(u"INSERT INTO sqlite_sequence (name, seq) VALUES (%1, 0)"_s.arg(name));
    connection.run(u"UPDATE sqlite_sequence SET seq = max(seq, %1) WHERE name = %2"_s.arg(number).arg(name));
}

void TableLoad::finish()
{
    store::Connection &connection = m_impl->db.connection;
    const store::StoredTable &table = m_impl->table;
    m_impl->insert.reset();
    for (const IndexInfo &index : table.info.indexes) {
        if (!store::isKeptAsIndex(table.info, index))
            continue;
        try {
            store::makeIndex(connection, table.info, index);
        } catch (const DaoException &exception) {
            throw LoadError(exception, index.name);
        }
    }
    for (const QString &trigger : store::lateRequiredTriggers(table))
        connection.run(trigger);
}

} // namespace dao
