#include "Remarks.h"

#include <QDir>

namespace conversion {

using namespace Qt::StringLiterals;

QString Remark::toString() const
{
    const QString name = QDir::toNativeSeparators(file);
    if (line == 0)
        return u"%1: %2"_s.arg(name, text);
    return u"%1, line %2: %3"_s.arg(name, QString::number(line), text);
}

void Remarks::clear()
{
    m_kept.clear();
    m_count = 0;
}

void Remarks::add(const QString &file, int line, const QString &text, const QString &kind)
{
    ++m_count;
    if (!isFull())
        m_kept.append({file, line, text, kind});
}

} // namespace conversion
