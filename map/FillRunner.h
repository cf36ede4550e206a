#pragma once
#include <plans/FillInput.h>
#include <plans/QuerySource.h>
#include <tarnwick/Prompts.h>

namespace plans {
class MapFill;
class QueryFill;
} // namespace plans

namespace map {

/// Computes fills for real: runs the queries of query fills and shows the user what fills remark.
class FillRunner
{
public:
    /// Both must live as long as this object.
    FillRunner(plans::QuerySource &queries, tarnwick::UserPrompts &prompts)
        : m_queries(queries)
        , m_prompts(prompts)
    {
    }
    plans::QuerySource &queries() const { return m_queries; }
    tarnwick::UserPrompts &prompts() const { return m_prompts; }

    /// Computes the tubes anew, with these marks on the map. A query fill keeps its tubes when its query cannot be run.
    void compute(plans::MapFill &fill, const ellery::SteamGen &component, const ellery::TubeStates &tubes) const;
    /// Takes the tubes that the records of the fill's query name; records that name none are highlighted. Returns No
    /// after reporting that columns are missing, the user's answer (Ok or Cancel) when tubes do not exist, else Yes.
    /// Nothing when a value could not be read, which has been reported; the fill is then as it was.
    std::optional<tarnwick::Answer> takeRecords(plans::QueryFill &fill, plans::QueryRecords &records,
                                                const ellery::SteamGen &component) const;

private:
    tarnwick::Answer show(const plans::FillRemark &remark) const;

    plans::QuerySource &m_queries;
    tarnwick::UserPrompts &m_prompts;
};

} // namespace map
