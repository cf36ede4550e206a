#pragma once
#include "Pages.h"

#include <optional>

namespace jet::format {

/// The pages that hold a table's rows, in ascending order.
struct OwnedPages
{
    std::vector<quint32> pages;
    /// Number of map parts that could not be read, and the first reason.
    int faults = 0;
    std::optional<Damage> firstFault;
};

/// Reads the page map that a table's definition points to. Throws Damage if there is none at all.
OwnedPages readOwnedPages(Pages &pages, RowPointer map);

} // namespace jet::format
