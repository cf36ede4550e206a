#pragma once
#include <plans/FillInput.h>
#include <plans/QuerySource.h>
#include <tarnwick/Prompts.h>

namespace plans {
class MapFill;
class QueryFill;
} // namespace plans

namespace map {

/// Computes fills: runs the queries of query fills and reports the remarks of fills to the user.
class FillRunner
{
public:
    /// Both must outlive this object.
    FillRunner(plans::QuerySource &queries, tarnwick::UserPrompts &prompts)
        : m_queries(queries)
        , m_prompts(prompts)
    {
    }
    plans::QuerySource &queries() const { return m_queries; }
    tarnwick::UserPrompts &prompts() const { return m_prompts; }

    /// Computes the tubes of the fill, with these states of the map as input. If the query of a query fill cannot be
    /// run, the fill keeps its tubes.
    void compute(plans::MapFill &fill, const ellery::SteamGen &component, const ellery::TubeStates &tubes) const;
    /// Sets the fill's tubes from the records of its query and highlights records without a tube. Returns No after
    /// reporting that columns are missing, the user's answer (Ok or Cancel) if tubes do not exist, otherwise Yes.
    /// Returns nothing if a value could not be read; this has been reported, and the fill is unchanged.
    std::optional<tarnwick::Answer> takeRecords(plans::QueryFill &fill, plans::QueryRecords &records,
                                                const ellery::SteamGen &component) const;

private:
    tarnwick::Answer show(const plans::FillRemark &remark) const;

    plans::QuerySource &m_queries;
    tarnwick::UserPrompts &m_prompts;
};

} // namespace map
