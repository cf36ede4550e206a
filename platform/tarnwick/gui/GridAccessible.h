#pragma once

namespace tarnwick {

/// Lets screen readers see every JTableWin as a table with titles, entry numbers and cells. May be called often.
void installGridAccessibility();

} // namespace tarnwick
