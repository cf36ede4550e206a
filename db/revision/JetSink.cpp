#include "JetSink.h"

#include <dao/sql/Compiler.h>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <db/CreateDatabase.h>
#include <limits>

namespace db {

using namespace Qt::StringLiterals;
using Kind = jet::Remark::Kind;

namespace {

template <typename Check>
QString errorOf(Check check)
{
    try {
        check();
        return {};
    } catch (const dao::DaoException &exception) {
        return exception.description();
    }
}

const jet::Table *find(const jet::Schema &schema, const QString &name)
{
    for (const jet::Table &table : schema.tables)
        if (table.info.name == name)
            return &table;
    return nullptr;
}

QStringList of(const std::map<QString, QStringList> &lists, const QString &table)
{
    const auto found = lists.find(table);
    return found == lists.end() ? QStringList() : found->second;
}

} // namespace

JetSink::JetSink(dao::Database &database, JetAllowances &allowances, JetImportReport &report, const QString &newPath,
                 tarnwick::Progress *progress, const QString &progressText)
    : m_database(&database)
    , m_allowances(&allowances)
    , m_report(&report)
    , m_newPath(newPath)
    , m_cancellable(database, progress)
    , m_progress(progress)
    , m_progressText(progressText)
    , m_watch(progress, 0, progressText)
{
}

JetSink::~JetSink()
{
    m_load.reset();
}

void JetSink::remark(Kind kind, const QString &object, const QString &text)
{
    m_report->remarks.append({kind, object, text});
}

void JetSink::schema(const jet::Schema &schema)
{
    constexpr int kOldVersion = 3;
    m_schema = schema;
    qint64 rows = 0;
    m_report->jetVersion = schema.jetVersion;
    for (const jet::Table &table : schema.tables)
        rows += table.rowCount;
    m_watch = tarnwick::ProgressLoop(m_progress, rows, m_progressText);
    createEmptyDatabase(*m_database, m_newPath, schema.jetVersion == kOldVersion ? kOldFormatYear : kDefaultFormatYear);
}

void JetSink::adaptField(const dao::TableInfo &table, dao::FieldInfo &field)
{
    const auto tell = [&](const QString &what) {
        remark(Kind::Changed, table.name, u"Table '%1', field '%2': %3"_s.arg(table.name, field.name, what));
    };
    if (field.isAutoIncrement() && field.type != dao::DataType::Long) {
        field.attributes &= ~dao::AutoIncrement;
        tell(u"its values are no longer given by themselves."_s);
    }
    if (field.isAutoIncrement() && m_allowances->plainNumbers.contains(table.name)) {
        field.attributes &= ~dao::AutoIncrement;
        tell(u"numbers stand twice in it, so it no longer counts on by itself."_s);
    }
    if (const QString error = errorOf([&] { dao::sql::defaultExpression(field.defaultValue, field); });
        !field.defaultValue.trimmed().isEmpty() && !error.isEmpty()) {
        tell(u"the default value \"%1\" was left out. %2"_s.arg(field.defaultValue, error));
        field.defaultValue.clear();
    }
    if (const QString error = errorOf([&] { dao::sql::ruleWithFunctions(field.validationRule, field); });
        !field.validationRule.trimmed().isEmpty() && !error.isEmpty()) {
        tell(u"the validation rule \"%1\" was left out. %2"_s.arg(field.validationRule, error));
        field.validationRule.clear();
    }
    if (of(m_allowances->nullFields, table.name).contains(field.name))
        tell(u"rows without a value, which the field requires, stay without one."_s);
}

dao::TableInfo JetSink::adapted(const dao::TableInfo &given)
{
    dao::TableInfo table = given;
    for (dao::FieldInfo &field : table.fields)
        adaptField(given, field);
    if (const QString error = errorOf([&] { dao::sql::tableRuleAsCheck(table.validationRule, table); });
        !table.validationRule.trimmed().isEmpty() && !error.isEmpty()) {
        remark(
            Kind::Changed, table.name,
            u"Table '%1': the validation rule \"%2\" was left out. %3"_s.arg(table.name, table.validationRule, error));
        table.validationRule.clear();
    }
    for (dao::IndexInfo &index : table.indexes) {
        if (!of(m_allowances->plainIndexes, table.name).contains(index.name))
            continue;
        index.unique = index.primary = false;
        remark(Kind::Changed, table.name,
               u"Table '%1': rows have the same key, so the index '%2' is not unique."_s.arg(table.name, index.name));
    }
    return table;
}

void JetSink::beginTable(const dao::TableInfo &table)
{
    m_tableName = table.name;
    m_rounded.clear();
    m_load.reset();
    try {
        m_load =
            std::make_unique<dao::TableLoad>(*m_database, adapted(table), of(m_allowances->nullFields, table.name));
    } catch (const dao::DaoException &exception) {
        if (exception.number() == dao::error::DiskFull || exception.number() == dao::error::DiskError)
            throw;
        remark(Kind::Lost, table.name,
               u"Table '%1' could not be created. %2"_s.arg(table.name, exception.description()));
    }
}

void JetSink::row(const QList<dao::Value> &values)
{
    m_watch.tick(++m_rows);
    if (!m_load)
        return;
    try {
        m_load->append(values);
        countRounded(values);
    } catch (const dao::LoadError &error) {
        allow(error);
    }
}

void JetSink::countRounded(const QList<dao::Value> &values)
{
    for (qsizetype i = 0; i < values.size(); ++i) {
        const dao::Value &value = values[i];
        if (value.type() == dao::Value::Type::Currency && dao::tenThousandths(value.real()) != value.integer())
            ++m_rounded[i];
    }
}

void JetSink::endTable(const dao::TableInfo &table, qint64 rows)
{
    if (!m_load)
        return;
    try {
        if (const jet::Table *facts = find(m_schema, table.name)) {
            // Random autonumbers use the whole range, so there is no next number to continue from.
            if (facts->lastAutoNumber > 0 && facts->lastAutoNumber <= std::numeric_limits<qint32>::max())
                m_load->setLastAutoNumber(facts->lastAutoNumber);
            storeDescriptions(*facts);
        }
        m_load->finish();
    } catch (const dao::LoadError &error) {
        allow(error);
    }
    m_load.reset();
    for (auto rounded = m_rounded.cbegin(); rounded != m_rounded.cend(); ++rounded) {
        const QString amounts = rounded.value() == 1 ? u"1 amount has"_s : u"%1 amounts have"_s.arg(rounded.value());
        remark(Kind::Changed, table.name,
               u"Table '%1', field '%2': %3 more digits than can be kept; the last decimals were rounded."_s.arg(
                   table.name, table.fields[rounded.key()].name, amounts));
    }
    m_report->tables.append({table.name, rows});
}

void JetSink::storeDescriptions(const jet::Table &table)
{
    const auto store = [this](const QString &object, const QString &text) {
        if (!text.isEmpty())
            m_database->setProperty(u"Description."_s + object, text);
    };
    store(table.info.name, table.description);
    for (int i = 0; i < table.fieldDescriptions.size() && i < table.info.fields.size(); ++i)
        store(table.info.name + u'.' + table.info.fields[i].name, table.fieldDescriptions[i]);
}

void JetSink::allow(const dao::LoadError &error)
{
    const auto add = [&](QStringList &list, const QString &object) {
        // If nothing new could be allowed for this object, another reading would fail in the same way.
        if (list.contains(object))
            throw error;
        list.append(object);
        throw StartAgain();
    };
    const jet::Table *facts = find(m_schema, m_tableName);
    if (error.number() == dao::error::RequiredField)
        add(m_allowances->nullFields[m_tableName], error.object());
    if (error.number() == dao::error::DuplicateKey && facts && facts->info.index(error.object()))
        add(m_allowances->plainIndexes[m_tableName], error.object());
    if (error.number() == dao::error::DuplicateKey)
        add(m_allowances->plainNumbers, m_tableName);
    throw error;
}

void JetSink::createRelation(const dao::RelationInfo &relation)
{
    const QString error = errorOf([&] { m_database->createRelation(relation); });
    if (error.isEmpty())
        m_report->relations.append(relation.name);
    else
        remark(Kind::NotCarried, relation.name,
               u"Relation '%1' between '%2' and '%3'. %4"_s.arg(relation.name, relation.table, relation.foreignTable,
                                                                error));
}

void JetSink::createQuery(const dao::QueryInfo &query)
{
    if (const QString error = errorOf([&] { m_database->createQuery(query); }); !error.isEmpty()) {
        remark(Kind::NotCarried, query.name, u"Query '%1'. %2"_s.arg(query.name, error));
        return;
    }
    m_report->queries.append(query.name);
    if (const QString error = errorOf([&] { dao::sql::checkSyntax(query.sql); }); !error.isEmpty())
        remark(Kind::Suspect, query.name, u"Query '%1' cannot be run here. %2"_s.arg(query.name, error));
}

void JetSink::finish()
{
    for (const dao::RelationInfo &relation : std::as_const(m_schema.relations))
        createRelation(relation);
    for (const dao::QueryInfo &query : std::as_const(m_schema.queries))
        createQuery(query);
    m_database->analyze();
}

} // namespace db
