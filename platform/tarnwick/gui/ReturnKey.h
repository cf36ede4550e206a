#pragma once

class QAbstractButton;

namespace tarnwick {

/// Return and Enter press the button while it has the focus, like Space. For push buttons that must not become the
/// default button of their dialog: otherwise Return presses the default button.
void pressWithReturn(QAbstractButton *button);

} // namespace tarnwick
