#pragma once

class QToolButton;

namespace tarnwick {

/// Return and Enter press the button while it has the focus, like Space.
void pressWithReturn(QToolButton *button);

} // namespace tarnwick
