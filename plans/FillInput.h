#pragma once
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>

#include <optional>

namespace plans {

class QueryRecords;

/// What a fill may look at when it picks its tubes.
struct FillInput
{
    const ellery::SteamGen &component;
    const ellery::TubeStates &tubes;       ///< marks so far, and the selection
    const QueryRecords *records = nullptr; ///< of a query fill's query
};

/// What a fill has to tell the user about its tubes.
struct FillRemark
{
    enum class Kind {
        Error,
        Information,
        Question, ///< OK or Cancel
    };
    Kind kind = Kind::Error;
    int number = 0; ///< of the message; 0: it has none
    QString text;
};

/// The tubes that a fill picked.
struct FillResult
{
    QList<qint32> tubes;
    qint32 fillCount = 0;          ///< tubes, or records of a query
    std::optional<quint32> seed;   ///< of random numbers, where some were drawn
    qint32 candidateCount = 0;     ///< tubes that a random fill could draw from
    qint32 wantedCount = 0;        ///< how many of them it was to draw
    QList<int> recordsWithoutTube; ///< records that name a tube which does not exist
    QList<FillRemark> remarks;
};

} // namespace plans
