#include "Repair.h"

#include <cmath>
#include <dao/values/DaoException.h>
#include <db/FieldAccess.h>
#include <db/Schema.h>
#include <tarnwick/base/Error.h>

namespace results {

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::Value;
using tarnwick::JDateTime;

namespace {

const QString kRepairsSql = u"SELECT * FROM repairs ORDER BY sec, row, col, repair_type, outage"_s;
constexpr int kRecordDeleted = 3167;

constexpr RepairField kFields[] = {
    {u"sec", &Repair::sec},
    {u"row", &Repair::row},
    {u"col", &Repair::col},
    {u"repair_type", &Repair::repairType},
    {u"type", &Repair::type},
    {u"material", &Repair::material},
    {u"vendor", &Repair::vendor},
    {u"loc_land", &Repair::locLand},
    {u"loc_off", &Repair::locOff},
    {u"date_scheduled", &Repair::dateScheduled},
    {u"date_completed", &Repair::dateCompleted},
    {u"is_perm", &Repair::isPermanent},
    {u"heat1", &Repair::heat1},
    {u"heat2", &Repair::heat2},
    {u"length", &Repair::length},
    {u"site_code", &Repair::siteCode},
    {u"comp", &Repair::comp},
    {u"outage", &Repair::outage},
    {u"reason", &Repair::reason},
    {u"comment", &Repair::comment},
};

/// A transaction that only reads: what is read in it is of one moment.
class ReadTransaction
{
public:
    explicit ReadTransaction(dao::Workspace &workspace)
        : m_workspace(workspace)
    {
        m_workspace.beginTrans();
    }
    ~ReadTransaction()
    {
        try {
            m_workspace.commitTrans();
        } catch (const tarnwick::Error &) {
            // Nothing was written. The session ends the transaction when it is closed.
        }
    }
    ReadTransaction(const ReadTransaction &) = delete;
    ReadTransaction &operator=(const ReadTransaction &) = delete;

private:
    dao::Workspace &m_workspace;
};

bool parseFlag(const QString &text, bool &flag)
{
    static const QStringList yes{u"yes"_s, u"true"_s, u"1"_s, u"-1"_s};
    static const QStringList no{u"no"_s, u"false"_s, u"0"_s};
    flag = yes.contains(text.toLower());
    return flag || no.contains(text.toLower());
}

/// The value of a typed text. Returns false if it is none.
bool parseTyped(const QString &text, qint16 &number)
{
    bool ok = false;
    number = text.toShort(&ok);
    return ok;
}
bool parseTyped(const QString &text, double &number)
{
    bool ok = text.trimmed().isEmpty(); // none
    number = ok ? 0 : text.toDouble(&ok);
    return ok && std::isfinite(float(number)); // the fields have single precision
}
bool parseTyped(const QString &text, bool &flag)
{
    return parseFlag(text, flag);
}
bool parseTyped(const QString &text, QString &value)
{
    value = text;
    return true;
}
bool parseTyped(const QString &text, JDateTime &date)
{
    if (text.isEmpty()) {
        date = {};
        return true;
    }
    const std::optional<JDateTime> parsed = JDateTime::parse(text);
    // What a field cannot hold must not be lost when it is stored.
    if (!parsed || db::toValue(*parsed).isEmpty())
        return false;
    date = *parsed;
    return true;
}

void checkLength(const RepairField &field, const QString &text)
{
    if (const int most = field.size(); most > 0 && text.size() > most)
        throw tarnwick::Error(u"The text of %1 has %2 characters; the field takes %3."_s.arg(QStringView(field.name))
                                  .arg(text.size())
                                  .arg(most));
}

} // namespace

Value RepairField::value(const Repair &repair) const
{
    const auto valueOf = [](const auto &content) -> Value {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(content)>, QString>)
            return content.isEmpty() ? Value::null() : Value::fromText(content);
        else
            return db::toValue(content);
    };
    return std::visit([&](auto part) { return valueOf(repair.*part); }, member);
}

bool RepairField::isEqual(const Repair &left, const Repair &right) const
{
    return std::visit([&](auto part) { return left.*part == right.*part; }, member);
}

namespace {

const db::FieldSpec &specOf(const RepairField &field)
{
    for (const db::FieldSpec &spec : db::tableSpec(u"repairs").fields)
        if (QStringView(spec.name) == QStringView(field.name))
            return spec;
    throw std::logic_error("not a field of repairs");
}

} // namespace

DataType RepairField::type() const
{
    return specOf(*this).type;
}

int RepairField::size() const
{
    const db::FieldSpec &spec = specOf(*this);
    return spec.type == DataType::Text ? spec.size : 0;
}

std::span<const RepairField> repairFields()
{
    return kFields;
}

const RepairField *findRepairField(QStringView name)
{
    for (const RepairField &field : kFields)
        if (name.compare(QStringView(field.name), Qt::CaseInsensitive) == 0)
            return &field;
    return nullptr;
}

void setRepairField(Repair &repair, const RepairField &field, const QString &text)
{
    checkLength(field, text);
    const bool done = std::visit([&](auto member) { return parseTyped(text.trimmed(), repair.*member); }, field.member);
    if (!done)
        throw tarnwick::Error(u"\"%1\" is no value for %2."_s.arg(text, QStringView(field.name)));
}

void checkLengths(const Repair &repair)
{
    for (const RepairField &field : kFields)
        if (const auto *text = std::get_if<QString Repair::*>(&field.member))
            checkLength(field, repair.*(*text));
}

RepairTable::RepairTable(db::DatabaseSession &session, const Take &take)
    : m_rows(session.database())
    , m_lastDates(std::size(kFields))
{
    const ReadTransaction reading(session.workspace());
    m_rows.open(dao::Recordset::Type::Dynaset, kRepairsSql);
    for (const RepairField &field : kFields)
        m_columns.push_back(db::requireField(m_rows, QString::fromUtf16(field.name)));
    // The dynaset gives the bookmarks, a snapshot the values: that is quicker than to look up each row. Both have the
    // same order, since the engine orders equal rows by their keys.
    dao::Recordset values(session.database());
    for (values.open(dao::Recordset::Type::Snapshot, kRepairsSql); !values.isEof(); values.moveNext()) {
        take(current(values), m_rows.bookmark());
        m_rows.moveNext();
    }
}

Repair RepairTable::current(const dao::Recordset &rows)
{
    Repair repair;
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const Value value = rows.value(m_columns[i]);
        const auto read = [&](auto member) {
            using T = std::remove_reference_t<decltype(repair.*member)>;
            if constexpr (std::is_same_v<T, double>)
                return db::decimalOf(value);
            else if constexpr (std::is_same_v<T, JDateTime>)
                return dateOf(value, m_lastDates[i]);
            else
                return db::fieldAs<T>(value);
        };
        std::visit([&](auto member) { repair.*member = read(member); }, kFields[i].member);
    }
    return repair;
}

JDateTime RepairTable::dateOf(const Value &value, LastDate &last)
{
    if (value.hasNoValue())
        return {};
    if (last.date.isNull() || value.real() != last.days)
        last = {value.real(), db::fieldAs<JDateTime>(value)};
    return last.date;
}

std::optional<Repair> RepairTable::find(const QByteArray &bookmark)
{
    try {
        m_rows.setBookmark(bookmark);
        return current(m_rows);
    } catch (const dao::DaoException &exception) {
        if (exception.number() != kRecordDeleted)
            throw;
        return std::nullopt;
    }
}

void RepairTable::setField(size_t field, const Repair &repair)
{
    const int column = m_columns[field];
    // An empty text stays one where the field allows it.
    if (const auto *text = std::get_if<QString Repair::*>(&kFields[field].member))
        db::setField(m_rows, column, repair.*(*text));
    else
        db::setField(m_rows, column, kFields[field].value(repair));
}

void RepairTable::update(const QByteArray &bookmark, const Repair &repair, const Repair &asRead)
{
    m_rows.setBookmark(bookmark);
    m_rows.edit();
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (!kFields[i].isEqual(repair, asRead))
            setField(i, repair);
    m_rows.update();
}

void RepairTable::add(const Repair &repair)
{
    m_rows.addNew();
    for (size_t i = 0; i < m_columns.size(); ++i)
        setField(i, repair);
    m_rows.update();
}

void RepairTable::remove(const QByteArray &bookmark)
{
    m_rows.setBookmark(bookmark);
    m_rows.deleteRow();
}

} // namespace results
