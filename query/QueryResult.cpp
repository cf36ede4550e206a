#include "QueryResult.h"

#include "CellText.h"
#include "Messages.h"
#include "RowMap.h"

#include <dao/ProgressScope.h>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/FieldAccess.h>
#include <db/ValueText.h>
#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QScopeGuard>

namespace query {

using namespace Qt::StringLiterals;

/// The engine's number for a record that another program has changed during an edit.
static constexpr int kDataChanged = 3197;

/// What one run has found.
struct QueryResult::Found
{
    QString name = {};
    QList<db::ColumnFormat> columns = {};
    std::unique_ptr<dao::Recordset> recordset = {};
    std::unique_ptr<RowMap> rows = {};
    quint64 run = 0;
};

QueryResult::QueryResult(db::DatabaseSession &session, QueryContext &context)
    : m_session(&session)
    , m_context(&context)
    , m_rows(std::make_unique<RowMap>(0))
{
}

QueryResult::~QueryResult()
{
    if (!m_recordset || !m_session->isOpen())
        return;
    tarnwick::attempt(
        m_session->prompts(), [this] { m_recordset->close(); }, messages::kCloseRecordset);
}

bool QueryResult::run(const QString &name, const QString &sql, tarnwick::Progress *progress)
{
    m_elapsed = -1;
    if (!db::checkConnected(*m_session))
        return false;
    auto clearing = qScopeGuard([this] { clear(); });
    dao::QueryDef query(m_session->database(), sql);
    clearing.dismiss();
    return run(name, query, progress);
}

bool QueryResult::run(const QString &name, dao::QueryDef &query, tarnwick::Progress *progress)
{
    const double before = std::exchange(m_elapsed, -1);
    auto clearing = qScopeGuard([this] { clear(); });
    if (!db::checkConnected(*m_session) || !ParameterResolver(*m_context, m_session->prompts()).resolve(name, query))
        return false;

    QElapsedTimer timer;
    timer.start();
    try {
        const ReadPause pause(*this);
        const dao::ProgressScope cancellable(m_session->database(), progress);
        build(name, query);
    } catch (const tarnwick::Cancelled &) {
        clearing.dismiss(); // whoever stops a query goes on with the rows from before
        m_elapsed = before;
        throw;
    }
    clearing.dismiss();
    constexpr double kNanoseconds = 1e9;
    m_elapsed = double(timer.nsecsElapsed()) / kNanoseconds;
    return true;
}

void QueryResult::build(const QString &name, dao::QueryDef &query)
{
    Found other;
    other.name = name;
    other.recordset = std::make_unique<dao::Recordset>(m_session->database());
    other.run = ++m_runs;
    dao::Recordset &recordset = *other.recordset;
    bool isTaken = false;
    const auto take = [&] {
        if (!isTaken) {
            // Columns of the opened record set: those of a crosstab depend on its data at that moment.
            for (int i = 0; i < recordset.fieldCount(); ++i)
                other.columns.append(m_context->formats.formatOf(recordset.field(i)));
            other.rows = std::make_unique<RowMap>(0);
            exchange(other);
            isTaken = true;
        }
        m_rows->setCount(recordset.recordCount());
    };
    const auto showFound = [&] {
        take();
        const QScopedValueRollback shown(m_isFoundShown, true);
        m_found();
    };
    try {
        recordset.open(dao::Recordset::Type::Dynaset, query,
                       m_found ? dao::FoundListener(showFound) : dao::FoundListener());
    } catch (...) {
        if (isTaken)
            exchange(other);
        throw;
    }
    take();
    m_place = -1;
    close(std::move(other.recordset));
}

void QueryResult::exchange(Found &found)
{
    m_name.swap(found.name);
    m_columns.swap(found.columns);
    m_recordset.swap(found.recordset);
    m_rows.swap(found.rows);
    std::swap(m_run, found.run);
    m_place = -1;
}

void QueryResult::clear()
{
    m_rows = std::make_unique<RowMap>(0);
    m_run = ++m_runs;
    m_place = -1;
    m_columns.clear();
    close(std::move(m_recordset));
}

void QueryResult::close(std::unique_ptr<dao::Recordset> recordset)
{
    if (!recordset || !m_session->isOpen())
        return;
    tarnwick::attempt(
        m_session->prompts(), [&] { recordset->close(); }, messages::kClearRecords);
}

qint64 QueryResult::rowCount() const
{
    return m_rows->count();
}

const dao::sql::Column &QueryResult::source(int column) const
{
    return m_recordset->column(column);
}

int QueryResult::findColumn(QStringView name) const
{
    for (int i = 0; i < columnCount(); ++i)
        if (name.compare(m_columns[i].name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

void QueryResult::moveTo(qint64 place) const
{
    if (m_place == place)
        return;
    m_place = -1;
    m_recordset->setPosition(place);
    m_place = place;
}

dao::Value QueryResult::value(qint64 row, int column) const
{
    if (!isReadable())
        return dao::Value::null();
    const qint64 id = m_rows->id(row);
    if (RowMap::isInserted(id))
        return std::as_const(*m_rows).values(row).value(column, dao::Value::null());
    moveTo(id);
    return m_recordset->value(column);
}

std::span<const dao::Value> QueryResult::values(qint64 row) const
{
    const qint64 id = m_rows->id(row);
    if (isReadable() && !RowMap::isInserted(id)) {
        moveTo(id);
        return m_recordset->storedValues();
    }
    m_unstored.clear();
    for (int column = 0; column < columnCount(); ++column)
        m_unstored.push_back(value(row, column));
    return m_unstored;
}

QString QueryResult::cellText(qint64 row, int column) const
{
    try {
        return query::cellText(value(row, column), m_columns[column]);
    } catch (const dao::DaoException &exception) {
        if (exception.number() == dao::error::RecordDeleted)
            return kDeletedCell.toString();
        throw;
    }
}

QString QueryResult::cellTip(qint64 row, int column) const
{
    try {
        return query::cellTip(value(row, column));
    } catch (const dao::DaoException &exception) {
        return QString::number(exception.number()) + u": "_s + exception.description();
    }
}

QueryResult::RowColours QueryResult::colours(qint64 row) const
{
    return m_rows->mark(row).colours;
}

QString QueryResult::colourReason(qint64 row) const
{
    return m_rows->mark(row).reason;
}

void QueryResult::setColours(qint64 row, const RowColours &colours, const QString &reason)
{
    m_rows->setMark(row, {.colours = colours, .reason = reason});
}

dao::sql::NotUpdatable QueryResult::whyNotUpdatable() const
{
    return m_recordset ? m_recordset->whyNotUpdatable() : dao::sql::NotUpdatable::NoTable;
}

bool QueryResult::setCell(qint64 row, int column, const QString &text, const QList<dao::Value> &seen)
{
    bool isChanged = false;
    Change change(m_listener);
    if (!change.isAllowed())
        return false;
    const auto edit = [&] {
        const qint64 id = m_rows->id(row);
        isChanged = RowMap::isInserted(id) ? editInserted(row, column, text) : editRecord(id, column, text, seen);
    };
    if (!tarnwick::attempt(m_session->prompts(), edit, messages::kConvertText) || !isChanged)
        return false;
    if (!isUnfinished(row))
        change.done(u"%1 edited"_s.arg(m_columns[column].name), 1);
    return true;
}

QList<dao::Value> QueryResult::rowValues(qint64 row) const
{
    const qint64 id = m_rows->id(row);
    if (RowMap::isInserted(id))
        return {};
    moveTo(id);
    return valuesInRecord();
}

QList<dao::Value> QueryResult::valuesInRecord() const
{
    QList<dao::Value> values;
    for (int i = 0; i < columnCount(); ++i)
        values.append(source(i).source < 0 ? dao::Value() : m_recordset->value(i));
    return values;
}

bool QueryResult::convert(int column, const QString &text, dao::Value &value) const
{
    const dao::FieldInfo &field = m_recordset->field(column);
    if (dao::isTextType(field.type))
        value = db::textForField(text, field);
    else
        db::textToValue(m_session->prompts(), value, field.type, text);
    return !value.isEmpty();
}

// If the text cannot be converted, the field is not set, but the record is still updated.
bool QueryResult::editRecord(qint64 place, int column, const QString &text, const QList<dao::Value> &seen)
{
    dao::Value value;
    const bool converted = convert(column, text, value);
    m_place = -1; // so that the record is read again
    moveTo(place);
    if (!seen.isEmpty() && valuesInRecord() != seen)
        throw dao::DaoException(kDataChanged, u"DAO.Recordset"_s,
                                u"The record was changed by another user or program after you began to edit it. It is "
                                u"shown as it is now; your text was not stored."_s);
    m_recordset->edit();
    store([&] {
        if (converted)
            m_recordset->setValue(column, value);
    });
    return converted;
}

bool QueryResult::editInserted(qint64 row, int column, const QString &text)
{
    dao::Value value;
    if (!m_recordset || !convert(column, text, value))
        return false;
    RowMap::Values &values = m_rows->values(row);
    values.insert(column, value);
    if (!lackingFields(values).isEmpty())
        return true;
    m_recordset->addNew();
    store([&] {
        for (auto typed = values.cbegin(); typed != values.cend(); ++typed)
            m_recordset->setValue(typed.key(), typed.value());
    });
    m_recordset->setBookmark(m_recordset->lastModified());
    m_place = m_recordset->position();
    m_rows->setPlace(row, m_place);
    return true;
}

void QueryResult::store(const std::function<void()> &setValues)
{
    try {
        setValues();
        m_recordset->update();
    } catch (...) {
        m_recordset->cancelUpdate();
        throw;
    }
}

QStringList QueryResult::lackingFields(const QHash<int, dao::Value> &values) const
{
    QStringList names;
    for (int i = 0; i < columnCount(); ++i) {
        const dao::FieldInfo &field = m_recordset->field(i);
        const bool filledByTable = !field.required || field.isAutoIncrement() || !field.defaultValue.isEmpty();
        if (!filledByTable && values.value(i).hasNoValue())
            names.append(m_columns[i].title);
    }
    return names;
}

QStringList QueryResult::lackingFields(qint64 row) const
{
    return m_recordset ? lackingFields(std::as_const(*m_rows).values(row)) : QStringList();
}

bool QueryResult::isUnfinished(qint64 row) const
{
    return RowMap::isInserted(m_rows->id(row));
}

QList<qint64> QueryResult::unfinishedRows() const
{
    return m_rows->unfinished();
}

bool QueryResult::deleteRow(qint64 row)
{
    const qint64 id = m_rows->id(row);
    if (RowMap::isInserted(id)) {
        m_rows->remove(row);
        return true;
    }
    Change change(m_listener);
    if (!change.isAllowed())
        return false;
    const auto remove = [&] {
        auto removing = qScopeGuard([&] { m_rows->remove(row); }); // from the list, even if the record stays
        moveTo(id);
        // The record set is then on the deleted record, not on the one that moved up.
        m_place = -1;
        m_recordset->deleteRow();
        m_rows->removeWithRecord(row);
        removing.dismiss();
    };
    if (!tarnwick::attempt(m_session->prompts(), remove, messages::kDeleteRecord))
        return false;
    change.done(u"row deleted"_s, 1);
    return true;
}

void QueryResult::insertRow(qint64 position)
{
    m_rows->insert(qBound(qint64(0), position, rowCount()));
}

} // namespace query
