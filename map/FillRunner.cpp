#include "FillRunner.h"

#include <plans/QueryFill.h>
#include <query/Messages.h>
#include <tarnwick/Failures.h>

using namespace Qt::StringLiterals;

namespace map {

using plans::FillRemark;
using tarnwick::Answer;

void FillRunner::compute(plans::MapFill &fill, const ellery::SteamGen &component, const ellery::TubeStates &tubes) const
{
    if (auto *const query = dynamic_cast<plans::QueryFill *>(&fill)) {
        const query::QueryDocument &document = query->parameters.query;
        const auto records = m_queries.isReady() ? m_queries.run(document.name, document.sql) : nullptr;
        if (records)
            takeRecords(*query, *records, component);
        return;
    }
    const plans::FillResult result = fill.pick({component, tubes, nullptr});
    fill.take(result);
    for (const FillRemark &remark : result.remarks)
        show(remark);
}

std::optional<Answer> FillRunner::takeRecords(plans::QueryFill &fill, plans::QueryRecords &records,
                                              const ellery::SteamGen &component) const
{
    const ellery::TubeStates unused;
    plans::FillResult result;
    const auto pick = [&] { result = fill.pick({component, unused, &records}); };
    if (!tarnwick::attempt(m_prompts, pick, query::messages::kExecute))
        return std::nullopt;
    for (const int record : std::as_const(result.recordsWithoutTube))
        records.setColours(record, plans::QueryFill::kInvalidColours, u"This tube does not exist in the component."_s);
    fill.take(result);
    Answer answer = Answer::Yes;
    for (const FillRemark &remark : std::as_const(result.remarks))
        answer = show(remark);
    return answer;
}

Answer FillRunner::show(const FillRemark &remark) const
{
    switch (remark.kind) {
    case FillRemark::Kind::Error:
        m_prompts.showError(tarnwick::kErrorSeverity, remark.number, remark.text);
        return Answer::No;
    case FillRemark::Kind::Question:
        return m_prompts.ask(tarnwick::Buttons::OkCancel, remark.text, remark.number);
    default:
        m_prompts.showInformation(remark.text);
        return Answer::Yes;
    }
}

} // namespace map
