#include "RecordsetImpl.h"

#include <dao/sql/Compiler.h>
#include <dao/store/ConnectionScopes.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/TableDefinition.h>
#include <dao/store/ValueBinding.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.Recordset"_s;

[[noreturn]] void fail(int number, const QStringList &arguments = {})
{
    throw store::engineError(number, kSource, arguments);
}

Value evaluate(store::Connection &connection, const QString &expression)
{
    store::Statement statement(connection, u"SELECT "_s + expression);
    return statement.step() ? store::columnValue(statement, 0, DataType::Unknown) : Value::null();
}

} // namespace

void RecordsetImpl::requireUpdatable() const
{
    if (whyNot != sql::NotUpdatable::No)
        fail(error::ReadOnly);
}

// The value that a field of a new row shows before it is set.
Value RecordsetImpl::defaultOf(int index)
{
    const FieldInfo &info = columns[index].info;
    if (columns[index].source < 0 || info.isAutoIncrement())
        return Value::null();
    const QString sql = store::constantDefault(info);
    return sql.isEmpty() ? Value::null() : convertValue(evaluate(db->connection, sql), info.type);
}

void RecordsetImpl::beginEdit(Pending kind)
{
    pending.reset(int(columns.size()));
    pendingKind = kind;
    if (kind != Pending::Add)
        return;
    for (const ComputedDefault &computed : computedDefaults)
        pending.set(computed.column, columns[computed.column].info, evaluate(db->connection, computed.sql));
}

void RecordsetImpl::setValue(int index, const Value &value)
{
    if (pendingKind == Pending::None) {
        requireOpen();
        fail(error::UpdateWithoutEdit);
    }
    if (index < 0 || index >= columns.size())
        fail(error::ItemNotFound);
    const sql::Column &column = columns[index];
    // An autonumber can be set in a new row, as conversions need; an existing one cannot be changed.
    const bool numbersNewRow = column.info.isAutoIncrement() && pendingKind == Pending::Add && column.source >= 0;
    if (!numbersNewRow && column.info.isAutoIncrement())
        throw store::engineError(error::FieldCannotBeSet, kSource)
            .withHint(u"Field '%1' is an autonumber."_s.arg(column.info.name));
    if (!numbersNewRow && (!column.updatable || column.source < 0))
        fail(error::FieldNotUpdatable, {column.info.name});
    pending.set(index, column.info, value);
}

RowWriter &RecordsetImpl::writer(int sourceIndex)
{
    std::unique_ptr<RowWriter> &writer = writers[size_t(sourceIndex)];
    if (writer)
        return *writer;
    const TableInfo *table = db->catalog.findTable(sources[sourceIndex].table);
    if (!table)
        fail(error::UnknownSource, {sources[sourceIndex].table});
    std::vector<RowWriter::Field> fields;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (columns[i].source == sourceIndex)
            fields.push_back({int(i), columns[i].info.sourceField});
    }
    writer = std::make_unique<RowWriter>(db->connection, *table, fields);
    return *writer;
}

void RecordsetImpl::update()
{
    requireOpen();
    if (pendingKind == Pending::None)
        fail(error::UpdateWithoutEdit);
    store::SourceScope scope(db->connection, kSource);
    db->connection.throwIfCancelled();
    if (pendingKind == Pending::Add)
        insertRow();
    else
        updateRow();
    pendingKind = Pending::None;
}

int RecordsetImpl::sourceToInsertInto() const
{
    // A new row of a join is inserted into the table on the many side, whose row holds the key of the other table.
    int target = -1;
    for (int i = 0; i < int(sources.size()); ++i) {
        if (sources[i].deletable && target < 0)
            target = i;
    }
    if (target < 0)
        fail(error::ReadOnly);
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (pending.isSet(int(i)) && columns[i].source != target)
            fail(error::JoinKeyNotInRecordset, {sources[target].table});
    }
    return target;
}

void RecordsetImpl::insertRow()
{
    const int target = sourceToInsertInto();
    const qint64 key = writer(target).insert(pending);
    if (type == RecordsetType::Dynaset)
        appendNewRow(target, key);
}

void RecordsetImpl::appendNewRow(int sourceIndex, qint64 key)
{
    if (!keyed)
        return;
    const bool atEnd = !onDeleted && row >= count();
    keyed->appendAdded(sourceIndex, key);
    lastModified = bookmarkOf(count() - 1);
    if (atEnd)
        row = count();
}

// A row of a join can change several tables; a savepoint keeps these changes together.
void RecordsetImpl::updateRow()
{
    const auto keys = keyed->keys(row);
    std::vector<int> changed;
    for (int i = 0; i < int(sources.size()); ++i) {
        if (writer(i).hasChanges(pending))
            changed.push_back(i);
    }
    for (const int i : changed) {
        // The outer join supplied no row to update in this table.
        if (keys[size_t(i)] == KeyedRows::kAbsent)
            fail(error::JoinKeyNotInRecordset, {sources[i].table});
    }
    const auto write = [&](int i) {
        // Each table's writer caches its statements by the set of changed fields of that table.
        if (!writer(i).update(pending, keys[size_t(i)]))
            fail(error::RecordDeleted);
    };
    if (changed.size() == 1) {
        write(changed.front());
    } else if (!changed.empty()) {
        store::Savepoint savepoint(db->connection);
        for (const int i : changed)
            write(i);
        savepoint.release();
    }
    lastModified = bookmarkOf(row);
}

void RecordsetImpl::deleteRow()
{
    if (onDeleted)
        fail(error::RecordDeleted);
    dropEdit();
    store::SourceScope scope(db->connection, kSource);
    const auto keys = keyed->keys(row);
    int target = -1;
    for (int i = 0; i < int(sources.size()) && target < 0; ++i) {
        if (sources[i].deletable)
            target = i;
    }
    if (target < 0 || keys[size_t(target)] == KeyedRows::kAbsent)
        fail(error::ReadOnly);
    if (!writer(target).remove(keys[size_t(target)]))
        fail(error::RecordDeleted);
    keyed->erase(row);
    onDeleted = true;
}

} // namespace dao
