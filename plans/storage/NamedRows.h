#pragma once
#include <dao/Recordset.h>
#include <db/DatabaseSession.h>
#include <db/FieldAccess.h>
#include <tarnwick/base/Progress.h>

#include <functional>

namespace plans {

/// A table of named objects and the table of their entries, which are deleted with them: plans and their tubes, tube
/// sets and theirs.
struct NamedTables
{
    const char16_t *names;
    const char16_t *entries;
};
inline constexpr NamedTables kPlanTables{u"plans", u"plan_entry"};
inline constexpr NamedTables kTubeSetTables{u"tube_sets", u"tube_set_entry"};

/// Number of objects with this name: 0 or 1. Throws the engine's exceptions.
qint64 countNamed(dao::Database &database, const NamedTables &tables, const QString &name);
/// Deletes an object with its entries in one transaction. Returns false if there is none of this name. Throws the
/// engine's exceptions; nothing is deleted then.
bool deleteNamed(db::DatabaseSession &session, const NamedTables &tables, const QString &name);

/// Does work in a transaction that is undone: shows whether an upload would be refused, before anything is deleted for
/// it. Throws what work throws.
void tryNamed(db::DatabaseSession &session, const std::function<void()> &work);

/// Adds an object with its entries in one transaction: all of it or nothing. Throws the engine's exceptions, and
/// Cancelled.
struct NamedUpload
{
    db::DatabaseSession &session;
    tarnwick::Progress *progress; ///< may be null
    const NamedTables &tables;
    QString name;
    /// Sets the fields of the object's row except its name.
    std::function<void(dao::Recordset &row)> describe;
    QStringList fields; ///< of an entry, without its name
    qsizetype count = 0;
    /// The values of the fields of an entry, in their order.
    std::function<void(qsizetype index, dao::Value *values)> entry;

    void run() const;
};

/// The entries of an object, in the order of their numbers: visits each row. Throws the engine's exceptions, and
/// Cancelled.
void readEntries(dao::Database &database, const NamedTables &tables, const QString &name, const QStringList &fields,
                 const std::function<void(const QList<dao::Value> &)> &take);

} // namespace plans
