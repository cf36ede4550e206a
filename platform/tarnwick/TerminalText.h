#pragma once
#include <QString>
#include <QStringView>

namespace tarnwick {

/// Converts a text for output in a terminal: control characters, with which data could control the terminal, are
/// replaced by visible characters, so the length stays the same. Line ends and tabs are kept.
QString terminalText(QStringView text);

} // namespace tarnwick
