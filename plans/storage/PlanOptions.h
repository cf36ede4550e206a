#pragma once
#include <QStringList>
#include <tarnwick/OptionFile.h>

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

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace plans
