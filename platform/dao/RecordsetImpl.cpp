#include "RecordsetImpl.h"

#include <dao/store/ConnectionScopes.h>
#include <dao/store/ErrorTranslation.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.Recordset"_s;

[[noreturn]] void fail(int number, const QStringList &arguments = {})
{
    throw store::engineError(number, kSource, arguments);
}

} // namespace

RecordsetImpl::RecordsetImpl(std::shared_ptr<DatabaseImpl> owner)
    : db(std::move(owner))
{
}

void RecordsetImpl::requireOpen() const
{
    if (!opened || !db->isOpen())
        fail(error::ObjectInvalid);
}

void RecordsetImpl::requireDynaset() const
{
    requireOpen();
    if (type != RecordsetType::Dynaset)
        fail(error::InvalidOperation);
}

qint64 RecordsetImpl::count() const
{
    if (forward)
        return forward->rowsRead();
    return rows ? rows->count() : 0;
}

bool RecordsetImpl::isOnRow() const
{
    if (forward)
        return forward->isOnRow();
    return onDeleted || (row >= 0 && row < count());
}

void RecordsetImpl::requireRow() const
{
    requireOpen();
    if (!isOnRow())
        fail(error::NoCurrentRecord);
}

void RecordsetImpl::dropEdit()
{
    pendingKind = Pending::None;
}

void RecordsetImpl::moveTo(qint64 target)
{
    dropEdit();
    onDeleted = false;
    row = target;
    loadedRow = -1; // another program may have changed the row since
}

void RecordsetImpl::step(int direction)
{
    requireOpen();
    if (forward) {
        if (direction < 0)
            fail(error::InvalidOperation);
        requireRow();
        store::SourceScope scope(db->connection, kSource);
        try {
            forward->next();
        } catch (const DaoException &exception) {
            query->rethrowWithPlace(exception);
        }
        return;
    }
    if (direction > 0 ? row >= count() && !onDeleted : row < 0)
        fail(error::NoCurrentRecord);
    // After a deletion the next row already has the position of the deleted one.
    moveTo(onDeleted && direction > 0 ? row : row + direction);
}

// A bookmark contains the run, the slot and the row keys. The keys detect a bookmark whose row was deleted and
// replaced.
QByteArray RecordsetImpl::bookmarkOf(qint64 at) const
{
    std::vector<qint64> parts{qint64(stamp), keyed ? keyed->slotOf(at) : at};
    if (keyed) {
        const auto keys = keyed->keys(at);
        parts.insert(parts.end(), keys.begin(), keys.end());
    }
    return QByteArray(reinterpret_cast<const char *>(parts.data()), qsizetype(parts.size() * sizeof(qint64)));
}

void RecordsetImpl::load()
{
    requireRow();
    if (onDeleted)
        fail(error::RecordDeleted);
    // The cached row is valid until a change through this database.
    if (loadedRow == row && loadedAt == db->changeStamp())
        return;
    store::SourceScope scope(db->connection, kSource);
    loadedRow = -1;
    if (!rows->read(row, cells))
        fail(error::RecordDeleted);
    loadedRow = row;
    loadedAt = db->changeStamp();
}

// During an edit, values that were set are read back; a new row shows the defaults of its fields.
Value RecordsetImpl::value(int index)
{
    requireOpen();
    if (index < 0 || index >= columns.size())
        fail(error::ItemNotFound);
    if (pendingKind != Pending::None && pending.isSet(index))
        return pending.value(index, columns[index].info.type);
    if (pendingKind == Pending::Add)
        return defaultOf(index);
    if (forward) {
        requireRow();
        return forward->value(index);
    }
    load();
    return cells[size_t(index)];
}

int RecordsetImpl::requireField(const QString &name)
{
    // Caches name lookups: programs read the same few columns in every row.
    const auto known = places.constFind(name);
    if (known != places.cend())
        return *known;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (name.compare(columns[i].info.name, Qt::CaseInsensitive) == 0) {
            places.insert(name, int(i));
            return int(i);
        }
    }
    fail(error::ItemNotFound);
}

} // namespace dao
