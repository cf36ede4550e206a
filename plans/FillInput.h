#pragma once
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>

#include <optional>

namespace plans {

class QueryRecords;

/// Input of a fill.
struct FillInput
{
    const ellery::SteamGen &component;
    const ellery::TubeStates &tubes;       ///< present marks and selection
    const QueryRecords *records = nullptr; ///< the records of a query fill's query
};

/// Message of a fill about its tubes.
struct FillRemark
{
    enum class Kind {
        Error,
        Information,
        Question, ///< OK or Cancel
    };
    Kind kind = Kind::Error;
    int number = 0; ///< number of the message; 0 for none
    QString text;
};

/// Result of a fill.
struct FillResult
{
    QList<qint32> tubes;
    qint32 fillCount = 0;          ///< tubes, or records of a query
    std::optional<quint32> seed;   ///< seed of the random numbers, if any were drawn
    qint32 candidateCount = 0;     ///< tubes that a random fill could draw from
    qint32 wantedCount = 0;        ///< number of tubes that a random fill should draw
    QList<int> recordsWithoutTube; ///< records with the address of a tube that does not exist
    QList<FillRemark> remarks;
};

} // namespace plans
