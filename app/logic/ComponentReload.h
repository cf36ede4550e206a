#pragma once
#include <QByteArray>
#include <QString>

namespace app {

/// Stands for the contents of a component's files: differs when one of them does. Empty when there are none.
QByteArray componentStamp(const QString &componentFolder);

} // namespace app
