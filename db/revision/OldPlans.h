#pragma once
#include "ConversionPass.h"

namespace db {

/// Plans of older databases are numbered per site code, component and outage; now they have names. Makes the name from
/// the numbering ("S1_SGA_R12_3"), in plans and in plan_entry, and recreates the relation between the two. Does nothing
/// if plans already have names. Throws the engine's exception if a change fails.
void convertPlans(ConversionPass &pass);

} // namespace db
