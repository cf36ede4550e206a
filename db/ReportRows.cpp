#include "ReportRows.h"

#include "FieldAccess.h"

#include <brannock/ReportFields.h>

namespace db {

using namespace Qt::StringLiterals;
using brannock::IntRange;
using brannock::ReportEntry;
using brannock::StoredWhen;
using dao::Value;

namespace {

/// Collects the ordinals of the fields in a recordset.
class Ordinals
{
public:
    /// isRequired: throws error 3265 if a field that the table stores is missing.
    Ordinals(const dao::Recordset &recordset, bool isRequired)
        : m_recordset(recordset)
        , m_isRequired(isRequired)
    {
        const ReportEntry entry;
        brannock::visitReportFields(entry, *this);
    }
    void stored(StoredWhen when) { m_when = when; }
    template <typename T, typename... Range>
    void field(QStringView name, const T &, Range...)
    {
        const bool isTabled = m_when != StoredWhen::InFilesOnly;
        columns.push_back(isTabled && m_isRequired ? requireField(m_recordset, name.toString())
                                                   : m_recordset.fieldIndex(name));
    }
    template <typename T, typename... Range>
    void sparse(QStringView name, const T &value, Range...)
    {
        field(name, value);
    }

    std::vector<int> columns;

private:
    const dao::Recordset &m_recordset;
    bool m_isRequired;
    StoredWhen m_when = StoredWhen::Always;
};

QString withoutBlanks(const QString &text)
{
    const auto isBlank = [](QChar character) { return character.isSpace(); };
    if (std::none_of(text.begin(), text.end(), isBlank))
        return text;
    QString compact = text;
    compact.removeIf(isBlank);
    return compact;
}

} // namespace

/// Sets the fields of the row that is being added. Fields that are not stored are set to Null explicitly: none of them
/// has a default, and the engine keeps one prepared statement for each set of fields written.
class ReportWriter::Row
{
public:
    Row(ReportWriter &writer, const ReportEntry &entry)
        : m_writer(writer)
        , m_entry(entry)
    {
    }
    void stored(StoredWhen when)
    {
        m_when = when;
        m_isStored = isStored(m_entry, when);
    }
    // No text field of the table allows zero-length text.
    void field(QStringView, const QString &value)
    {
        const QString text = m_when == StoredWhen::NotNdd ? withoutBlanks(value) : value;
        set(text.isEmpty() ? Value::null() : Value::fromText(text));
    }
    void field(QStringView, int value, IntRange)
    {
        set(m_when == StoredWhen::MeasuredAndPos && value <= 0 ? Value::null() : Value::fromLong(value));
    }
    void field(QStringView, double value) { set(Value::fromDouble(value)); }
    void field(QStringView, float value) { set(Value::fromFloat(value)); }
    void field(QStringView, const tarnwick::JDateTime &value)
    {
        // Entries of one tube usually share their time, and the conversion through the local calendar is the slowest
        // field of a row.
        if (m_writer.m_lastTimeValue.isEmpty() || value != m_writer.m_lastTime) {
            m_writer.m_lastTime = value;
            m_writer.m_lastTimeValue = toValue(value);
        }
        setField(m_writer.m_recordset, m_writer.m_columns[m_next++], m_writer.m_lastTimeValue);
    }
    template <typename T, typename... Range>
    void sparse(QStringView name, const T &value, Range... range)
    {
        field(name, value, range...);
    }

private:
    void set(const Value &value)
    {
        const int column = m_writer.m_columns[m_next++];
        if (m_when != StoredWhen::InFilesOnly)
            m_writer.m_recordset.setValue(column, m_isStored ? value : Value::null());
    }

    ReportWriter &m_writer;
    const ReportEntry &m_entry;
    size_t m_next = 0;
    StoredWhen m_when = StoredWhen::Always;
    bool m_isStored = true;
};

ReportWriter::ReportWriter(dao::Database &database)
    : m_recordset(database)
{
    m_recordset.open(dao::Recordset::Type::TableAppend, u"report"_s);
    m_recordNumber = requireField(m_recordset, u"recd_num"_s);
    m_columns = Ordinals(m_recordset, true).columns;
}

void ReportWriter::add(ReportEntry &entry, std::optional<qint32> recordNumber)
{
    if (entry.entryTime.isNull())
        entry.entryTime = tarnwick::JDateTime::fromSeconds(0);
    m_recordset.addNew();
    try {
        if (recordNumber)
            m_recordset.setValue(m_recordNumber, Value::fromLong(*recordNumber));
        Row row(*this, entry);
        brannock::visitReportFields(std::as_const(entry), row);
        m_recordset.update();
    } catch (...) {
        m_recordset.cancelUpdate();
        throw;
    }
}

namespace {

/// Copies the current row of a recordset into an entry.
class RowCopy
{
public:
    RowCopy(const dao::Recordset &recordset, const std::vector<int> &columns)
        : m_recordset(recordset)
        , m_columns(columns)
    {
    }
    void stored(StoredWhen) {}
    template <typename T, typename... Range>
    void field(QStringView, T &value, Range...)
    {
        const int column = m_columns[m_next++];
        if (column < 0)
            return;
        const Value stored = m_recordset.value(column);
        if (!stored.isNull())
            value = fieldAs<T>(stored);
    }
    template <typename T, typename... Range>
    void sparse(QStringView name, T &value, Range...)
    {
        field(name, value);
    }

private:
    const dao::Recordset &m_recordset;
    const std::vector<int> &m_columns;
    size_t m_next = 0;
};

} // namespace

ReportReader::ReportReader(const dao::Recordset &recordset)
    : m_recordset(recordset)
    , m_columns(Ordinals(recordset, false).columns)
{
}

ReportEntry ReportReader::read() const
{
    ReportEntry entry;
    RowCopy copy(m_recordset, m_columns);
    brannock::visitReportFields(entry, copy);
    entry.site.outage = entry.outage;
    return entry;
}

} // namespace db
