#include "PlanOnMap.h"

#include <plans/ListFill.h>
#include <span>

namespace map {

using namespace Qt::StringLiterals;
using brannock::PlanEntry;

namespace {

constexpr char16_t kDisc = u'\u25CF';
constexpr tarnwick::ColourRef kMagenta(0xFF00FF);

bool isAnalyzed(const PlanEntry &entry)
{
    return entry.analyzed != 0;
}
bool isDone(const PlanEntry &entry)
{
    return entry.acquired >= 1 || isAnalyzed(entry);
}
bool isIncomplete(const PlanEntry &entry)
{
    return !isDone(entry);
}
bool isWithoutResults(const PlanEntry &entry)
{
    return !isAnalyzed(entry);
}

struct Share
{
    const char16_t *label;
    bool (*takes)(const PlanEntry &entry);
    tarnwick::ColourRef colour;
};
constexpr Share kShares[] = {
    {u"Incomplete Plan Entries", isIncomplete, PlanEntry::doit_color},
    {u"Acquired Plan Entries", isDone, PlanEntry::done_color},
    {u"Analyzed Plan Entries", isAnalyzed, kMagenta},
};
constexpr Share kSharesOfOutage[] = {
    {u"Incomplete Plan Entries", isWithoutResults, PlanEntry::doit_color},
    {u"Analyzed Plan Entries", isAnalyzed, kMagenta},
};

} // namespace

void showPlan(MapDocument &document, const FillRunner &runner, const brannock::InspPlan &plan, const QString &outage)
{
    std::vector<std::unique_ptr<plans::MapFill>> fills;
    QStringList said;
    const QString suffix = outage.isEmpty() ? QString() : QString(u", "_s + outage);
    for (const Share &share : outage.isEmpty() ? std::span<const Share>(kShares) : kSharesOfOutage) {
        auto fill = std::make_unique<plans::ListFill>();
        fill->label = QString::fromUtf16(share.label) + suffix;
        fill->mark = {ellery::Symbol(kDisc), share.colour};
        for (const PlanEntry &entry : plan.entries) {
            if (share.takes(entry))
                fill->parameters.entries.append({0, entry.row, entry.col, entry.sec, {}});
        }
        const plans::FillResult result = fill->pick({document.component(), document.tubes(), nullptr});
        fill->take(result);
        // Each of the three may have tubes that do not exist; that is told once.
        for (const plans::FillRemark &remark : result.remarks) {
            if (!said.contains(remark.text))
                runner.prompts().showError(tarnwick::kErrorSeverity, remark.number, remark.text);
            said.append(remark.text);
        }
        fills.push_back(std::move(fill));
    }
    document.change(u"Show Plan in Map"_s, [&](MapEdit &edit) {
        for (auto &fill : fills)
            edit.addEntry(std::move(fill), false);
    });
}

} // namespace map
