#pragma once
#include <ellery/Tube.h>
#include <QByteArray>
#include <QList>
#include <QString>
#include <tarnwick/ColourRef.h>
#include <tarnwick/JDateTime.h>

namespace brannock {

/// One tube of an inspection plan.
struct PlanEntry
{
    qint32 entryNum = 0; ///< from 0
    qint16 row = 0;
    qint16 col = 0;
    qint16 sec = 0;
    qint16 acquired = 0; ///< acquired if 1 or more
    quint8 analyzed = 0; ///< not stored in the database
    ellery::TubeAddress address() const { return {sec, row, col}; }

    static constexpr tarnwick::ColourRef doit_color{0x0000FF};
    static constexpr tarnwick::ColourRef done_color{0x00A000};
    bool operator==(const PlanEntry &) const = default;
};

/// An inspection plan: an ordered list of tubes, each with a probe and the extent to be tested. Stored as a text file
/// (*.pln).
class InspPlan
{
public:
    enum class Order { Row = 0, Column = 1, Entry = 2 };

    QString name;
    QString probe;
    QString beginTest;
    QString endTest;
    QString description;
    tarnwick::JDateTime createTime;
    Order order = Order::Entry;
    QList<PlanEntry> entries;
    /// False if the file does not state its number of rows.
    bool isCounted = true;

    /// Throw tarnwick::FileError. If loading fails, the plan is unchanged.
    void loadPlan(const QString &machinePath);
    void storePlan(const QString &machinePath) const;
    /// The plan as the text of a plan file, and back. Reading throws tarnwick::FileError with the given name.
    QByteArray toBytes() const;
    static InspPlan fromBytes(const QByteArray &content, const QString &name);

    /// Appends an entry for each tube, numbered on from the highest entry number.
    void addTubes(const QList<ellery::TubeAddress> &tubes);
    /// Removes the entries at these places of the list. Higher entry numbers move up, so that no gaps arise.
    void removeEntries(QList<int> places);
    void sort(Order order);
};

} // namespace brannock
