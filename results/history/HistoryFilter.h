#pragma once
#include "HistoryRows.h"

#include <QList>
#include <tarnwick/JFile.h>

namespace results {

/// Which outages are kept.
enum class OutageMode {
    LatestSelected = 0, ///< of each tube the latest outage that is marked
    AllSelected = 1,    ///< every outage that is marked
    All = 2             ///< every outage
};

struct OutageChoice
{
    QString outage;
    bool keep = true;
    bool operator==(const OutageChoice &) const = default;
};

/// A code of indications that is kept from these thresholds on. A negative threshold is none.
struct DefectChoice
{
    static constexpr int kNoThreshold = -1;

    QString code;
    qint32 count = 0; ///< rows of 'report' with this code
    double volts = kNoThreshold;
    qint32 percent = kNoThreshold;
    bool keep = true;
    bool operator==(const DefectChoice &) const = default;
};

/// Decides which entries of a history are kept.
struct HistoryFilter
{
    OutageMode mode = OutageMode::LatestSelected;
    QList<OutageChoice> outages; ///< ascending
    QList<DefectChoice> defects;

    /// Marks each entry as kept or not, except those that a user edited: they keep their mark. Returns the number of
    /// kept entries. Outages and codes are compared without regard to case.
    size_t apply(HistoryRows &rows) const;

    /// Reads or writes the choices. Throws JFileError.
    void serialize(tarnwick::JFile &file);

    /// What is kept, in words, for the heading of a file.
    QString outagesText() const;
    QString codesText() const;
};

/// How the entries are sorted. Entries that are equal keep the order in which they were fetched.
enum class HistorySort {
    Fetched,
    Tube,       ///< section, row, column, code
    Column,     ///< section, column, row, code
    Indication, ///< code
    Volts,      ///< largest first, like the next two
    Phase,
    Percent
};

/// Indices of the entries in sorted order.
std::vector<quint32> sortedHistory(const HistoryRows &rows, HistorySort sort);

} // namespace results
