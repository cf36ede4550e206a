#include "StatusLine.h"

using namespace Qt::StringLiterals;

namespace app {

void StatusLine::say(const QString &text)
{
    const QString before = m_joins ? this->text() : QString();
    setLine(before.isEmpty() || text.trimmed().isEmpty() ? text : before + u"  "_s + text.trimmed());
}

void StatusLine::endWork()
{
    if (text().endsWith(u"..."_s))
        forget();
}

} // namespace app
