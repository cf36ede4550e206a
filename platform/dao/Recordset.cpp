#include "Recordset.h"

#include "RecordsetImpl.h"

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

Recordset::Recordset(Database &database)
    : m_impl(std::make_unique<RecordsetImpl>(database.m_impl))
{
}

Recordset::~Recordset() = default;

void Recordset::open(Type type, const QString &sql)
{
    m_impl->open(type, sql);
}

void Recordset::open(Type type, const QueryDef &query, const FoundListener &listener)
{
    m_impl->close();
    m_impl->type = type;
    auto definition = std::make_unique<QueryDefImpl>(query.m_impl->db, query.m_impl->sql);
    definition->compiled = query.m_impl->compiled;
    definition->generation = query.m_impl->generation;
    definition->parameters = query.m_impl->parameters;
    m_impl->openQuery(std::move(definition), listener);
}

void Recordset::close()
{
    m_impl->close();
}

bool Recordset::isOpen() const
{
    return m_impl->opened && m_impl->db->isOpen();
}

void Recordset::setParameter(const QString &name, const Value &value)
{
    m_impl->requireOpen();
    if (!m_impl->query)
        fail(error::ItemNotFound);
    m_impl->query->ensureCompiled();
    m_impl->query->setParameter(m_impl->query->indexOfParameter(name), value, kSource);
}

void Recordset::setParameter(int index, const Value &value)
{
    m_impl->requireOpen();
    if (!m_impl->query)
        fail(error::ItemNotFound);
    m_impl->query->setParameter(index, value, kSource);
}

void Recordset::requery()
{
    m_impl->requireOpen();
    if (!m_impl->query)
        fail(error::InvalidOperation);
    m_impl->run();
}

bool Recordset::isEof() const
{
    m_impl->requireOpen();
    if (m_impl->forward)
        return !m_impl->forward->isOnRow();
    return !m_impl->onDeleted && m_impl->row >= m_impl->count();
}

bool Recordset::isBof() const
{
    m_impl->requireOpen();
    if (m_impl->forward)
        return m_impl->forward->rowsRead() == 0;
    return !m_impl->onDeleted && (m_impl->row < 0 || m_impl->count() == 0);
}

void Recordset::moveFirst()
{
    m_impl->requireOpen();
    if (m_impl->forward) {
        if (m_impl->forward->rowsRead() > 1 || !m_impl->forward->isOnRow())
            m_impl->run();
        m_impl->requireRow();
        return;
    }
    m_impl->moveTo(0);
    m_impl->requireRow();
}

void Recordset::moveNext()
{
    m_impl->step(1);
}

void Recordset::movePrevious()
{
    m_impl->step(-1);
}

void Recordset::moveLast()
{
    m_impl->requireDynaset();
    m_impl->moveTo(qMax<qint64>(m_impl->count() - 1, 0));
    m_impl->requireRow();
}

qint64 Recordset::recordCount() const
{
    m_impl->requireOpen();
    return m_impl->count();
}

QByteArray Recordset::bookmark() const
{
    m_impl->requireDynaset();
    m_impl->requireRow();
    if (m_impl->onDeleted)
        fail(error::RecordDeleted);
    return m_impl->bookmarkOf(m_impl->row);
}

void Recordset::setBookmark(const QByteArray &bookmark)
{
    m_impl->requireDynaset();
    std::vector<qint64> parts(size_t(bookmark.size()) / sizeof(qint64));
    const size_t expected = 2 + (m_impl->keyed ? size_t(m_impl->sources.size()) : 0);
    if (parts.size() != expected || size_t(bookmark.size()) != expected * sizeof(qint64))
        fail(error::InvalidBookmark);
    std::memcpy(parts.data(), bookmark.constData(), size_t(bookmark.size()));
    if (quint64(parts[0]) != m_impl->stamp || parts[1] < 0)
        fail(error::InvalidBookmark);
    qint64 row = parts[1];
    if (m_impl->keyed)
        row = m_impl->keyed->find(std::span(parts).subspan(2), row);
    if (row < 0 || row >= m_impl->count())
        fail(error::RecordDeleted);
    m_impl->moveTo(row);
}

qint64 Recordset::position() const
{
    m_impl->requireOpen();
    return m_impl->forward ? m_impl->forward->rowsRead() - 1 : m_impl->row;
}

void Recordset::setPosition(qint64 row)
{
    m_impl->requireDynaset();
    if (row < 0 || row >= m_impl->count())
        fail(error::NoCurrentRecord);
    m_impl->moveTo(row);
}

int Recordset::fieldCount() const
{
    return int(m_impl->columns.size());
}

const FieldInfo &Recordset::field(int index) const
{
    return column(index).info;
}

const sql::Column &Recordset::column(int index) const
{
    if (index < 0 || index >= m_impl->columns.size())
        fail(error::ItemNotFound);
    return m_impl->columns[index];
}

// Exact comparison: two columns can differ in letter case only.
int Recordset::fieldIndex(QStringView name) const
{
    for (qsizetype i = 0; i < m_impl->columns.size(); ++i) {
        if (m_impl->columns[i].info.name == name)
            return int(i);
    }
    return -1;
}

Value Recordset::value(int index) const
{
    return m_impl->value(index);
}

Value Recordset::value(const QString &name) const
{
    return m_impl->value(m_impl->requireField(name));
}

const std::vector<Value> &Recordset::storedValues() const
{
    m_impl->requireDynaset();
    m_impl->load();
    return m_impl->cells;
}

sql::NotUpdatable Recordset::whyNotUpdatable() const
{
    return m_impl->whyNot;
}

void Recordset::edit()
{
    m_impl->requireRow();
    m_impl->requireUpdatable();
    m_impl->load();
    m_impl->beginEdit(RecordsetImpl::Pending::Edit);
}

void Recordset::addNew()
{
    m_impl->requireOpen();
    m_impl->requireUpdatable();
    m_impl->beginEdit(RecordsetImpl::Pending::Add);
}

void Recordset::setValue(int index, const Value &value)
{
    m_impl->setValue(index, value);
}

void Recordset::setValue(const QString &name, const Value &value)
{
    m_impl->setValue(m_impl->requireField(name), value);
}

void Recordset::update()
{
    m_impl->update();
}

void Recordset::cancelUpdate()
{
    m_impl->requireOpen();
    if (m_impl->pendingKind == RecordsetImpl::Pending::None)
        fail(error::UpdateWithoutEdit);
    m_impl->dropEdit();
}

void Recordset::deleteRow()
{
    m_impl->requireRow();
    m_impl->requireUpdatable();
    m_impl->deleteRow();
}

QByteArray Recordset::lastModified() const
{
    m_impl->requireOpen();
    return m_impl->lastModified;
}

} // namespace dao
