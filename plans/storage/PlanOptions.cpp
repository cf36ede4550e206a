#include "PlanOptions.h"

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

} // namespace plans
