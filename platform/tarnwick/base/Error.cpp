#include "Error.h"

#include <QDir>

namespace tarnwick {

using namespace Qt::StringLiterals;

static QString placeIn(const QString &file, int line)
{
    const QString name = QDir::toNativeSeparators(file);
    return line > 0 ? u"%1, line %2"_s.arg(name, QString::number(line)) : name;
}

FileError::FileError(const QString &file, int line, const QString &reason)
    : Error(placeIn(file, line) + u": " + reason)
    , m_file(file)
    , m_line(line)
    , m_reason(reason)
{
}

QString FileError::place() const
{
    return placeIn(m_file, m_line);
}

} // namespace tarnwick
