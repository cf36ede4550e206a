#pragma once
#include "Flaws.h"

#include <brannock/Project.h>

namespace demo {

/// Writes tube lists (tube_lists\*.lst, *.txt) and inspection plans (plans\*.pln) of the present outage.
void writeTubeLists(const brannock::Project &project, const Flaws &flaws);
void writePlans(const brannock::Project &project, const Flaws &flaws);

} // namespace demo
