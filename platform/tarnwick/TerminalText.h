#pragma once
#include <QString>
#include <QStringView>

namespace tarnwick {

/// A text as it can be shown in a terminal: control characters, by which data could change what stands there or make
/// the terminal act, are replaced by visible signs of the same length. Line ends and tabs stay.
QString terminalText(QStringView text);

} // namespace tarnwick
