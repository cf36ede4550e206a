#pragma once

class QLineEdit;

namespace tarnwick {

/// Adds a button to a line for a typed date: it opens a calendar (Alt+Down).
void addCalendar(QLineEdit *line);

} // namespace tarnwick
