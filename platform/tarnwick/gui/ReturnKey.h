#pragma once

class QToolButton;

namespace tarnwick {

/// Return and Enter press the button while it has the focus, as Space does.
void pressWithReturn(QToolButton *button);

} // namespace tarnwick
