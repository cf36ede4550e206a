#pragma once

namespace brannock {

/// Registers accessibility of TubesheetMap: screen readers see a list of the tubes, each with its name, symbol,
/// selection and place. To be called before the first map is shown; may be called repeatedly.
void installMapAccessibility();

} // namespace brannock
