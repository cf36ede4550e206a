#pragma once
#include <QStringList>
#include <tarnwick/OptionFile.h>

namespace brannock {
class InspPlan;
}

namespace plans {

/// What a plan must have before it is stored, and which results do not count.
class PlanOptions : public tarnwick::OptionFile
{
public:
    PlanOptions();

    bool probeRequired = false;
    bool extentRequired = false; ///< begin and end of the test
    /// Defect codes that do not make a tube analyzed.
    QStringList incompleteCodes;

    /// The required fields that a plan lacks, each on a line that begins with a tab; empty if it has all.
    QString missingFields(const brannock::InspPlan &plan) const;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace plans
