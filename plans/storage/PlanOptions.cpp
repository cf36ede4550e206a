#include "PlanOptions.h"

#include <brannock/InspPlan.h>

namespace plans {

using namespace Qt::StringLiterals;

PlanOptions::PlanOptions()
    : OptionFile(u"config\\arvo\\plan.opt"_s, u"Plan Options"_s, 1)
{
}

void PlanOptions::serializeBody(tarnwick::JFile &file, int)
{
    file.serializeByte(probeRequired);
    file.serializeByte(extentRequired);
    file.serialize(incompleteCodes);
}

void PlanOptions::resetToDefaults()
{
    probeRequired = false;
    extentRequired = false;
    incompleteCodes.clear();
}

QString PlanOptions::missingFields(const brannock::InspPlan &plan) const
{
    QString missing;
    if (probeRequired && plan.probe.trimmed().isEmpty())
        missing += u"\tProbe\n"_s;
    if (extentRequired && plan.beginTest.trimmed().isEmpty())
        missing += u"\tBegin test\n"_s;
    if (extentRequired && plan.endTest.trimmed().isEmpty())
        missing += u"\tEnd test\n"_s;
    return missing;
}

} // namespace plans
