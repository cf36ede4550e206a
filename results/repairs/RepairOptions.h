#pragma once
#include "Repair.h"

#include <tarnwick/OptionFile.h>

namespace results {

/// Which repairs a list shows. The numbers are those of the option file.
enum class RepairView { All = 0, Scheduled = 1, Completed = 2, NeedHeat = 3, Selected = 4 };

struct RepairViewChoice
{
    RepairView view;
    const char16_t *text;
};
/// The views in the order of the combo box.
std::span<const RepairViewChoice> repairViews();

/// The choice of the outage and repair-type filters that shows every entry.
extern const QString kAllEntries;

/// The filters of the repair list, kept between runs.
class RepairOptions : public tarnwick::OptionFile
{
public:
    RepairOptions();

    RepairView view = RepairView::All;
    QString outage = kAllEntries;
    QString repairType = kAllEntries;

    /// selected: whether the user selected the repair in the list. Texts are compared without regard to case.
    bool shows(const Repair &repair, bool selected) const;
    /// Shows all entries.
    void resetFilters();

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override { resetFilters(); }
};

/// The texts that the attribute dialog offers for a field; others may be typed. Empty for fields without a list.
std::span<const char16_t *const> repairVocabulary(QString Repair::*field);

} // namespace results
