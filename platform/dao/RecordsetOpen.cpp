#include "RecordsetImpl.h"

#include <dao/sql/Compiler.h>
#include <dao/store/ConnectionScopes.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/ValueBinding.h>

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.Recordset"_s;

quint64 nextStamp()
{
    static quint64 stamp = 0;
    return ++stamp;
}

QString bracketed(const QString &name)
{
    return u'[' + name + u']';
}

} // namespace

void RecordsetImpl::open(RecordsetType asked, const QString &text)
{
    close();
    type = asked;
    store::SourceScope scope(db->connection, kSource);
    db->prepareStatement();
    const QString name = text.trimmed();
    const TableInfo *table = db->catalog.findTable(name);
    if (table && type == RecordsetType::TableAppend) {
        openTable(*table);
        return;
    }
    // Uses the text of the stored query itself instead of SELECT * FROM it: it can be a cross table, whose columns
    // would be unknown to an outer query.
    const QueryInfo *stored = table ? nullptr : db->catalog.findQuery(name);
    const QString sql = table ? QString(u"SELECT * FROM "_s + bracketed(name)) : stored ? stored->sql : text;
    openQuery(std::make_unique<QueryDefImpl>(db, sql));
}

void RecordsetImpl::openTable(const TableInfo &table)
{
    for (const FieldInfo &field : table.fields) {
        sql::Column column;
        column.info = field;
        column.info.sourceTable = table.name;
        column.info.sourceField = field.name;
        column.source = 0;
        column.updatable = true;
        columns.append(column);
    }
    sources.append({table.name, table.name, false, true});
    if (db->connection.isReadOnly() || (table.attributes & SystemObject) == SystemObject)
        whyNot = sql::NotUpdatable::ReadOnlyDatabase;
    opened = true;
    prepareWriting();
}

void RecordsetImpl::openQuery(std::unique_ptr<QueryDefImpl> definition, const FoundListener &listener)
{
    store::SourceScope scope(db->connection, kSource);
    query = std::move(definition);
    opened = true;
    try {
        for (auto called = query->calledQuery(); called; called = query->calledQuery()) {
            query->requireParameters(kSource);
            query = std::move(called);
        }
        if (!query->ensureCompiled().returnsRows())
            throw store::engineError(error::InvalidOperation, kSource);
        run(listener);
    } catch (...) {
        close();
        throw;
    }
}

void RecordsetImpl::run(const FoundListener &listener)
{
    try {
        runOnce(listener);
    } catch (const DaoException &exception) {
        query->rethrowWithPlace(exception);
    }
}

void RecordsetImpl::runOnce(const FoundListener &listener)
{
    store::SourceScope scope(db->connection, kSource);
    query->compileForRun();
    query->requireParameters(kSource);
    const auto &compiled = std::get<sql::SelectPlan>(query->compiled->plan);
    const sql::SelectPlan plan =
        compiled.crosstab ? sql::withHeadings(compiled, db->readHeadings(*compiled.crosstab, query->parameters))
                          : compiled;
    dropEdit();
    rows.reset();
    keyed = nullptr;
    forward.reset();
    writers.clear();
    lastModified.clear();
    columns = plan.columns;
    places.clear();
    sources = plan.sources;
    whyNot = plan.whyNot;
    stamp = nextStamp();
    if (plan.updatable() && (db->connection.isReadOnly() || type == RecordsetType::Snapshot))
        whyNot = sql::NotUpdatable::ReadOnlyDatabase;
    prepareWriting();
    moveTo(0);
    db->connection.clearCancel();
    auto dropping = qScopeGuard([this] {
        rows.reset();
        keyed = nullptr;
    });
    findRows(plan, listener);
    dropping.dismiss();
    moveTo(0); // the listener has moved
}

// Chooses the row source: a snapshot reads forward, a result with keys is read by key, any other result is copied to
// the scratch database.
void RecordsetImpl::findRows(const sql::SelectPlan &plan, const FoundListener &listener)
{
    if (type == RecordsetType::Snapshot) {
        forward = std::make_unique<ForwardRows>(*db, plan, query->parameters);
    } else if (type == RecordsetType::Dynaset && plan.keyed && !plan.sources.isEmpty()) {
        auto keys = std::make_unique<KeyedRows>(*db, plan, query->parameters);
        keyed = keys.get();
        rows = std::move(keys);
        keyed->find(listener);
    } else if (type == RecordsetType::Dynaset) {
        store::Statement all(db->connection, plan.fullSql, store::Access::User);
        for (int i = 0; i < qMin(all.parameterCount(), int(query->parameters.size())); ++i)
            store::bindValue(all, i + 1, query->parameters[i]);
        auto result = std::make_unique<MaterialisedRows>(*db, typesOf(plan.columns));
        MaterialisedRows &copies = *result;
        rows = std::move(result);
        copies.fill(all, db->connection.progress(), listener);
    }
}

void RecordsetImpl::close()
{
    dropEdit();
    opened = false;
    forward.reset();
    rows.reset();
    keyed = nullptr;
    writers.clear();
    computedDefaults.clear();
    query.reset();
    columns.clear();
    places.clear();
    sources.clear();
    whyNot = sql::NotUpdatable::No;
    row = -1;
    onDeleted = false;
    loadedRow = -1;
}

// Collects the defaults that must be evaluated for each new row. Constant defaults are in the table definition.
void RecordsetImpl::prepareWriting()
{
    computedDefaults.clear();
    writers.resize(size_t(sources.size()));
    if (whyNot != sql::NotUpdatable::No)
        return;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const FieldInfo &info = columns[i].info;
        const int from = columns[i].source;
        if (from < 0 || !sources[from].deletable || info.defaultValue.trimmed().isEmpty())
            continue;
        const sql::DefaultExpression expression = sql::defaultExpression(info.defaultValue, info);
        if (!expression.constant)
            computedDefaults.push_back({int(i), expression.sql});
    }
}

} // namespace dao
