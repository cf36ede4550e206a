#pragma once

namespace tarnwick {

/// Registers accessibility of JTableWin: screen readers see a table with titles, entry numbers and cells. May be called
/// repeatedly.
void installGridAccessibility();

} // namespace tarnwick
