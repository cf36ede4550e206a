#include "RepairOptions.h"

#include <algorithm>

namespace results {

using namespace Qt::StringLiterals;

const QString kAllEntries = u"All"_s;

namespace {

constexpr int kVersion = 1;

constexpr RepairViewChoice kViews[] = {
    {RepairView::All, u"All"},
    {RepairView::Scheduled, u"Scheduled"},
    {RepairView::Completed, u"Completed"},
    {RepairView::Selected, u"Selected"},
    {RepairView::NeedHeat, u"Need Heat Numbers"},
};

constexpr const char16_t *kRepairTypes[] = {u"Plug",
                                            u"Sleeve",
                                            u"Tubesheet Plug",
                                            u"Tube End Sleeve",
                                            u"Tube Pull And Plug",
                                            u"Stabilizing Spear",
                                            u"Reroll Tube Joint",
                                            u"Plug Removal"};
constexpr const char16_t *kTypes[] = {u"Solid Piece Drive-In",   u"Two Piece Drive-In", u"Hydraulic Expandable",
                                      u"Mechanical Expandable",  u"Welded Thimble",     u"Explosive Expansion",
                                      u"Mechanical Rubber Seal", u"Solid Rod",          u"Stranded Wire Rope"};
constexpr const char16_t *kMaterials[] = {u"SS", u"Brass", u"CS", u"Rubber"};
constexpr const char16_t *kReasons[] = {u"", u"Inservice Leak", u"ECT Indication", u"Failed Pressure Test", u"Other"};

bool isSame(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

bool isInView(const Repair &repair, bool selected, RepairView view)
{
    switch (view) {
    case RepairView::All:
        break;
    case RepairView::Scheduled:
        return repair.isScheduled();
    case RepairView::Completed:
        return !repair.isScheduled();
    case RepairView::NeedHeat:
        // Heat numbers are known once the work is done.
        return !repair.isScheduled() && (repair.heat1.isEmpty() || repair.heat2.isEmpty());
    case RepairView::Selected:
        return selected;
    }
    return true;
}

} // namespace

std::span<const RepairViewChoice> repairViews()
{
    return kViews;
}

RepairOptions::RepairOptions()
    : OptionFile(u"config\\arvo\\repairs.opt"_s, u"Repair Options"_s, kVersion)
{
}

bool RepairOptions::shows(const Repair &repair, bool selected) const
{
    return isInView(repair, selected, view) && (outage == kAllEntries || isSame(outage, repair.outage)) &&
           (repairType == kAllEntries || isSame(repairType, repair.repairType));
}

void RepairOptions::resetFilters()
{
    view = RepairView::All;
    outage = kAllEntries;
    repairType = kAllEntries;
}

void RepairOptions::serializeBody(tarnwick::JFile &file, int)
{
    auto number = qint32(view);
    file.serialize(number);
    if (std::none_of(std::begin(kViews), std::end(kViews),
                     [&](const RepairViewChoice &choice) { return qint32(choice.view) == number; }))
        file.fail(u"the view %1 does not exist"_s.arg(number));
    view = RepairView(number);
    file.serialize(outage);
    file.serialize(repairType);
}

std::span<const char16_t *const> repairVocabulary(QString Repair::*field)
{
    if (field == &Repair::repairType)
        return kRepairTypes;
    if (field == &Repair::type)
        return kTypes;
    if (field == &Repair::material)
        return kMaterials;
    if (field == &Repair::reason)
        return kReasons;
    return {};
}

} // namespace results
