#pragma once
#include "ConversionPass.h"

namespace db {

/// Plans were once numbered per site code, component and outage; now they have names. The old numbering becomes the
/// name, "S1_SGA_R12_3", in plans and in plan_entry, and the relation between the two is made anew. Nothing is done
/// when plans have names. What cannot be done is thrown as the engine's exception.
void convertPlans(ConversionPass &pass);

} // namespace db
