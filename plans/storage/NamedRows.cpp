#include "NamedRows.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <dao/values/Errors.h>
#include <db/SessionTransaction.h>
#include <db/SqlText.h>
#include <db/TableGrowth.h>

namespace plans {

using namespace Qt::StringLiterals;

namespace {

/// A transaction whose failures are exceptions, so that they are reported with the message of the command.
class Writing
{
public:
    explicit Writing(db::DatabaseSession &session)
        : m_session(session)
        , m_transaction(session)
    {
        m_transaction.begin(true);
    }
    void commit() { db::commitTrans(m_session, true); }

private:
    db::DatabaseSession &m_session;
    db::SessionTransaction m_transaction; ///< rolls back what was not committed
};

} // namespace

qint64 countNamed(dao::Database &database, const NamedTables &tables, const QString &name)
{
    const QString sql = tables.names == kPlanTables.names
                            ? db::sqlText(u"SELECT COUNT(*)\nFROM plans\nWHERE name = '%S'\n", name)
                            : db::sqlText(u"SELECT COUNT(*)\nFROM tube_sets\nWHERE name = '%S'", name);
    return db::firstValue(database, sql).integer();
}

bool deleteNamed(db::DatabaseSession &session, const NamedTables &tables, const QString &name)
{
    const QString sql = db::sqlText(u"DELETE FROM %S\nWHERE name = '%S'\n", QStringView(tables.names), name);
    Writing writing(session);
    const int deleted = db::executeSql(session.database(), sql);
    writing.commit();
    return deleted > 0;
}

void tryNamed(db::DatabaseSession &session, const std::function<void()> &work)
{
    const Writing undone(session);
    work();
}

void NamedUpload::run() const
{
    const dao::ProgressScope stoppable(session.database(), progress);
    Writing writing(session);
    {
        dao::Recordset object(session.database());
        object.open(dao::Recordset::Type::TableAppend, QString::fromUtf16(tables.names));
        object.addNew();
        db::setField(object, u"name"_s, name);
        describe(object);
        object.update();
    }
    {
        dao::Recordset rows(session.database());
        rows.open(dao::Recordset::Type::TableAppend, QString::fromUtf16(tables.entries));
        const int nameField = db::requireField(rows, u"name"_s);
        QList<int> ordinals;
        for (const QString &field : fields)
            ordinals.append(db::requireField(rows, field));
        const dao::Value nameValue = db::toValue(name);
        std::vector<dao::Value> values(size_t(fields.size()));
        tarnwick::ProgressLoop loop(progress, count, QString::fromUtf16(messages::kUploadingEntries.text));
        for (qsizetype i = 0; i < count; ++i) {
            loop.tick(i);
            entry(i, values.data());
            rows.addNew();
            rows.setValue(nameField, nameValue);
            for (qsizetype field = 0; field < ordinals.size(); ++field)
                rows.setValue(ordinals[field], values[size_t(field)]);
            rows.update();
        }
    }
    db::noteTableGrowth(session.database(), QString::fromUtf16(tables.entries), count);
    writing.commit();
}

void readEntries(dao::Database &database, const NamedTables &tables, const QString &name, const QStringList &fields,
                 const std::function<void(const QList<dao::Value> &)> &take)
{
    dao::Recordset rows(database);
    rows.open(dao::Recordset::Type::Snapshot,
              db::sqlText(u"SELECT * \nFROM %S\nWHERE name = '%S'\nORDER BY entry_num, sec, row, col",
                          QStringView(tables.entries), name));
    QList<int> ordinals;
    for (const QString &field : fields)
        ordinals.append(db::requireField(rows, field));
    QList<dao::Value> values(fields.size());
    for (; !rows.isEof(); rows.moveNext()) {
        for (qsizetype field = 0; field < ordinals.size(); ++field)
            values[field] = rows.value(ordinals[field]);
        take(values);
    }
}

} // namespace plans
