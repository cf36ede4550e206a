#pragma once
#include <dao/Recordset.h>
#include <db/DatabaseSession.h>
#include <ellery/Tube.h>
#include <functional>
#include <memory>
#include <optional>
#include <QString>
#include <span>
#include <tarnwick/JDateTime.h>
#include <variant>
#include <vector>

namespace results {

/// One repair of a tube: a row of table 'repairs', or one that will be.
struct Repair
{
    qint16 sec = 0;
    qint16 row = 0;
    qint16 col = 0;
    QString repairType;
    QString type;
    QString material;
    QString vendor;
    QString locLand;
    double locOff = 0;
    tarnwick::JDateTime dateScheduled;
    tarnwick::JDateTime dateCompleted;
    bool isPermanent = true;
    QString heat1; ///< of the inlet side
    QString heat2; ///< of the outlet side
    double length = 0;
    QString siteCode;
    QString comp;
    QString outage;
    QString reason;
    QString comment;

    ellery::TubeAddress address() const { return {sec, row, col}; }
    /// The tube as one number, for look-ups.
    quint64 tubeKey() const
    {
        constexpr int kBits = 16;
        return (quint64(quint16(sec)) << kBits | quint16(row)) << kBits | quint16(col);
    }
    /// It is still to be done.
    bool isScheduled() const { return dateCompleted.isNull(); }
    bool operator==(const Repair &) const = default;
};

/// A column of table 'repairs' and the member that holds it.
struct RepairField
{
    const char16_t *name;
    std::variant<qint16 Repair::*, double Repair::*, bool Repair::*, QString Repair::*, tarnwick::JDateTime Repair::*>
        member;

    dao::Value value(const Repair &repair) const; ///< an empty text and a null date are Null
    bool isEqual(const Repair &left, const Repair &right) const;
    dao::DataType type() const;
    int size() const; ///< characters of a Text field; 0: no limit
};

/// The fields in the table's order. Field names are matched without regard to case; null if there is none.
std::span<const RepairField> repairFields();
const RepairField *findRepairField(QStringView name);

/// Sets a field from a typed text: dates in any form that can be typed, Booleans as yes, no, true, false, 1 or 0.
/// Throws tarnwick::Error if the text is not a value of the field, or is too long for it.
void setRepairField(Repair &repair, const RepairField &field, const QString &text);
/// Throws tarnwick::Error, which names the field, if a text is too long for it.
void checkLengths(const Repair &repair);

/// Table 'repairs' through a recordset that stays open: its bookmarks find the rows again.
class RepairTable
{
public:
    using Take = std::function<void(Repair &&repair, const QByteArray &bookmark)>;

    /// Passes on every row, all of one moment. Throws the engine's exceptions, as all other functions do.
    RepairTable(db::DatabaseSession &session, const Take &take);

    /// The row as it is now; empty if it was deleted.
    std::optional<Repair> find(const QByteArray &bookmark);
    /// Writes the fields in which the repair differs from the row as it was read.
    void update(const QByteArray &bookmark, const Repair &repair, const Repair &asRead);
    void add(const Repair &repair);
    void remove(const QByteArray &bookmark);

private:
    /// The last value of a date column: many repairs share theirs.
    struct LastDate
    {
        double days = 0;
        tarnwick::JDateTime date;
    };

    static tarnwick::JDateTime dateOf(const dao::Value &value, LastDate &last);
    Repair current(const dao::Recordset &rows);
    void setField(size_t field, const Repair &repair);

    dao::Recordset m_rows;
    std::vector<int> m_columns;        ///< ordinals of the fields
    std::vector<LastDate> m_lastDates; ///< of each field
};

} // namespace results
