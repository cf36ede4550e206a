#include "TableRebuild.h"

#include "ActionSteps.h"
#include "ConnectionScopes.h"
#include "EngineRules.h"
#include "ErrorTranslation.h"
#include "IndexBuild.h"
#include "Statistics.h"
#include "TableDefinition.h"
#include "ValueBinding.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

const QString kNewName = u"_dao_rebuild"_s;

// The schema for error messages: rules of the new definition, which is not in the catalog yet.
class NewDefinition : public SchemaView
{
public:
    NewDefinition(Connection &connection, const TableInfo &table)
        : m_connection(connection)
        , m_before(connection.schema())
        , m_table(table)
    {
        connection.setSchema(this);
    }
    ~NewDefinition() override { m_connection.setSchema(m_before); }
    NewDefinition(const NewDefinition &) = delete;
    NewDefinition &operator=(const NewDefinition &) = delete;

    const TableInfo *findTable(QStringView name) const override
    {
        const bool isNew = name == kNewName || name.compare(m_table.name, Qt::CaseInsensitive) == 0;
        return isNew ? &m_table : m_before ? m_before->findTable(name) : nullptr;
    }
    const QueryInfo *findQuery(QStringView) const override { return nullptr; }
    QStringList sourceNames() const override { return {}; }

private:
    Connection &m_connection;
    const SchemaView *m_before;
    const TableInfo &m_table;
};

/// The schema for the expressions of fills: the old table, and the new one as target.
class FillScope : public SchemaView
{
public:
    FillScope(const TableInfo &before, const TableInfo &after)
        : m_before(before)
        , m_target(after)
    {
        m_target.name = kNewName;
    }

    const TableInfo *findTable(QStringView name) const override
    {
        if (name.compare(kNewName, Qt::CaseInsensitive) == 0)
            return &m_target;
        return name.compare(m_before.name, Qt::CaseInsensitive) == 0 ? &m_before : nullptr;
    }
    const QueryInfo *findQuery(QStringView) const override { return nullptr; }
    QStringList sourceNames() const override { return {m_before.name}; }

private:
    const TableInfo &m_before;
    TableInfo m_target;
};

QString bracketed(const QString &name)
{
    return u'[' + name + u']';
}

} // namespace

TableRebuild::TableRebuild(Connection &connection, const StoredTable &before, StoredTable &after)
    : m_connection(connection)
    , m_before(before)
    , m_after(after)
{
    m_after.info.keyColumn = keyColumnFor(m_after.info);
}

// The SQL expression over the old row that gives the value of a new field.
QString TableRebuild::sourceOf(const FieldInfo &field) const
{
    if (const FieldInfo *old = m_before.info.field(field.name))
        return sql::quotedName(old->name);
    if (field.isAutoIncrement())
        return sql::quotedName(m_before.info.keyColumn);
    const QString defaultSql = constantDefault(field);
    if (field.required && !defaultSql.isEmpty())
        return defaultSql;
    return field.type == DataType::Boolean ? u"0"_s : u"NULL"_s;
}

bool TableRebuild::hasNull(const QString &sourceColumn) const
{
    return m_connection.number(u"SELECT EXISTS (SELECT 1 FROM "_s + sql::quotedName(m_before.info.name) + u" WHERE "_s +
                               sourceColumn + u" IS NULL)"_s) != 0;
}

void TableRebuild::findLateRequired()
{
    QSet<QString> late;
    for (const FieldInfo &field : m_after.info.fields) {
        if (!field.required || field.isAutoIncrement() || field.type == DataType::Boolean)
            continue;
        // A field that was required stays NOT NULL; one that becomes required may have Null in existing rows.
        const FieldInfo *old = m_before.info.field(field.name);
        const bool wasStrict = old && isNotNull(m_before, *old);
        if (!wasStrict && !isFilled(field) && hasNull(sourceOf(field)))
            late.insert(folded(field.name));
    }
    m_after.lateRequired = late;
}

bool TableRebuild::isFilled(const FieldInfo &field) const
{
    return std::any_of(m_fills.begin(), m_fills.end(),
                       [&](const FieldFill &fill) { return fill.field.compare(field.name, Qt::CaseInsensitive) == 0; });
}

bool TableRebuild::needsConversion(const FieldInfo &field) const
{
    const FieldInfo *old = m_before.info.field(field.name);
    return old && (old->type != field.type);
}

void TableRebuild::copyRows()
{
    QStringList targets;
    QStringList sources;
    bool converting = false;
    for (const FieldInfo &field : m_after.info.fields) {
        targets.append(sql::quotedName(field.name));
        sources.append(sourceOf(field));
        converting = converting || needsConversion(field);
    }
    // Row keys are copied, so that references to rows stay valid. With an autonumber they are its values.
    if (m_after.info.indexOf(m_after.info.keyColumn) < 0) {
        targets.append(sql::quotedName(m_after.info.keyColumn));
        sources.append(sql::quotedName(m_before.info.keyColumn));
    }
    const QString insert = u"INSERT INTO "_s + sql::quotedName(kNewName) + u" ("_s + targets.join(u", "_s) + u") "_s;
    const QString condition =
        m_connection.mustPollForCancel() && !converting ? u" WHERE dao_cancelled() = 0"_s : QString();
    const QString select = u"SELECT "_s + sources.join(u", "_s) + u" FROM "_s + sql::quotedName(m_before.info.name) +
                           condition + u" ORDER BY "_s + sql::quotedName(m_before.info.keyColumn);
    // One INSERT ... SELECT; SQLite copies whole rows without passing the values through the program.
    if (!converting) {
        m_connection.run(insert + select);
        return;
    }
    QStringList places(targets.size(), u"?"_s);
    copyConverted(select, insert + u"VALUES ("_s + places.join(u", "_s) + u')');
}

// Converts values with the rules of an assignment. A value that cannot be converted ends the change with the name of
// its field.
void TableRebuild::copyConverted(const QString &select, const QString &insert)
{
    Statement rows(m_connection, select);
    Statement write(m_connection, insert);
    const auto fieldCount = int(m_after.info.fields.size());
    while (rows.step()) {
        for (int i = 0; i < rows.columnCount(); ++i) {
            if (i >= fieldCount || !needsConversion(m_after.info.fields[i])) {
                write.bindColumn(i + 1, rows, i);
                continue;
            }
            const FieldInfo &field = m_after.info.fields[i];
            const Value converted =
                convertValue(columnValue(rows, i, m_before.info.field(field.name)->type), field.type);
            if (converted.isEmpty())
                throw fieldError(error::ConversionFailed, m_connection.source(), m_after.info.name, field);
            bindValue(write, i + 1, converted);
        }
        write.run();
    }
}

// The expressions are Access SQL, so they are compiled as the select list of an INSERT ... SELECT.
void TableRebuild::copyFilled()
{
    QStringList targets;
    QStringList sources;
    for (const FieldFill &fill : m_fills) {
        targets.append(bracketed(fill.field));
        sources.append(fill.expression);
    }
    for (const FieldInfo &field : m_after.info.fields) {
        if (isFilled(field) || !m_before.info.field(field.name))
            continue;
        targets.append(bracketed(field.name));
        sources.append(bracketed(m_before.info.name) + u'.' + bracketed(field.name));
    }
    const FillScope scope(m_before.info, m_after.info);
    const sql::CompiledStatement statement =
        sql::compile(scope, u"INSERT INTO "_s + bracketed(kNewName) + u" ("_s + targets.join(u", "_s) + u") SELECT "_s +
                                sources.join(u", "_s) + u" FROM "_s + bracketed(m_before.info.name));
    if (!statement.parameters.isEmpty())
        throw engineError(error::NoSuchField, m_connection.source(),
                          {statement.parameters.first().name, m_before.info.name});
    const auto &plan = std::get<sql::ActionPlan>(statement.plan);
    runSteps(m_connection, m_connection.mustPollForCancel() ? plan.cancellableSteps : plan.steps, Access::Engine,
             [](Statement &) {});
}

void TableRebuild::checkChangedFields()
{
    for (const FieldInfo &field : m_after.info.fields) {
        const FieldInfo *old = m_before.info.field(field.name);
        const QList<ColumnCheck> before = old && !isFilled(field) ? columnChecks(m_before, *old) : QList<ColumnCheck>();
        for (const ColumnCheck &check : columnChecks(m_after, field)) {
            if (!before.contains(check))
                verify(check);
        }
        // Rules that need functions of this engine are checked by the engine, also for existing rows.
        const bool changed = !old || isFilled(field) || old->validationRule != field.validationRule;
        if (changed && needsEngine(field))
            verify({constraint::name(constraint::kRule, m_after.info.name, field.name),
                    sql::ruleWithFunctions(field.validationRule, field)});
    }
    const QList<FieldInfo> &fields = m_after.info.fields;
    const bool changed =
        m_before.info.validationRule != m_after.info.validationRule || !m_fills.isEmpty() ||
        std::any_of(fields.begin(), fields.end(), [this](const FieldInfo &field) { return needsConversion(field); });
    if (changed && !m_after.info.validationRule.trimmed().isEmpty())
        verify({constraint::name(constraint::kRule, m_after.info.name, {}),
                sql::tableRuleWithFunctions(m_after.info.validationRule, m_after.info)});
}

void TableRebuild::verify(const ColumnCheck &check)
{
    const bool broken = m_connection.number(u"SELECT EXISTS (SELECT 1 FROM "_s + sql::quotedName(kNewName) +
                                            u" WHERE NOT ("_s + check.condition + u"))"_s) != 0;
    if (broken)
        raiseCheck(check.name, m_connection.source(), m_connection.schema());
}

// The new table must not reuse an autonumber of a deleted row.
void TableRebuild::keepSequence()
{
    // sqlite_sequence exists only if the file has, or had, a table with AUTOINCREMENT.
    if (m_connection.number(u"SELECT count(*) FROM sqlite_schema WHERE name = 'sqlite_sequence'"_s) == 0)
        return;
    const QString name = literal(m_before.info.name);
    m_connection.run(
        u"UPDATE sqlite_sequence SET seq = max(seq, coalesce((SELECT seq FROM sqlite_sequence WHERE name = "_s + name +
        u"), 0)) WHERE name = "_s + literal(kNewName));
}

// The statistics are restored instead of gathered again: ANALYZE reads every index, and DROP TABLE deletes them.
void TableRebuild::run()
{
    findLateRequired();
    const NewDefinition naming(m_connection, m_after.info);
    const QList<StatisticsLine> statistics = readStatistics(m_connection, m_before.info.name);
    m_connection.run(createTableSql(m_after, kNewName));
    {
        const UncheckedWrites unchecked(m_connection);
        if (m_fills.isEmpty())
            copyRows();
        else
            copyFilled();
    }
    checkChangedFields();
    keepSequence();
    m_connection.run(u"DROP TABLE "_s + sql::quotedName(m_before.info.name));
    m_connection.run(u"ALTER TABLE "_s + sql::quotedName(kNewName) + u" RENAME TO "_s +
                     sql::quotedName(m_after.info.name));
    for (const IndexInfo &index : m_after.info.indexes) {
        if (isKeptAsIndex(m_after.info, index))
            makeIndex(m_connection, m_after.info, index);
    }
    for (const QString &trigger : lateRequiredTriggers(m_after))
        m_connection.run(trigger);
    if (!statistics.isEmpty())
        writeStatistics(m_connection, m_after.info.name, statistics);
}

} // namespace dao::store
