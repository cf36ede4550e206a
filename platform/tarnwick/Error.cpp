#include "Error.h"

#include <QDir>

namespace tarnwick {

using namespace Qt::StringLiterals;

static QString placedText(const QString &file, int line, const QString &reason)
{
    const QString name = QDir::toNativeSeparators(file);
    if (line > 0)
        return u"%1, line %2: %3"_s.arg(name, QString::number(line), reason);
    return u"%1: %2"_s.arg(name, reason);
}

FileError::FileError(const QString &file, int line, const QString &reason)
    : Error(placedText(file, line, reason))
    , m_file(file)
    , m_line(line)
    , m_reason(reason)
{
}

} // namespace tarnwick
