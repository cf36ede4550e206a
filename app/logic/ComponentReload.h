#pragma once
#include <QByteArray>
#include <QString>

namespace app {

/// Fingerprint of the component's files: changes if one of them changes. Empty if there are no files.
QByteArray componentStamp(const QString &componentFolder);

} // namespace app
