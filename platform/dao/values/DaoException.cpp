#include "DaoException.h"

namespace dao {

SourceRange SourceRange::of(QStringView text, int start, int length)
{
    const int end = int(text.size());
    SourceRange range{std::clamp(start, 0, end), 0, 1, 1};
    range.length = std::clamp(length, 0, end - range.start);
    const QStringView before = text.first(range.start);
    // A line ends with CR LF, LF or CR; the column counts from the last line end.
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const bool ends = before[i] == u'\n' || (before[i] == u'\r' && (i + 1 >= text.size() || text[i + 1] != u'\n'));
        if (!ends)
            continue;
        ++range.line;
        lineStart = i + 1;
    }
    range.column = int(range.start - lineStart) + 1;
    return range;
}

DaoException::DaoException(int number, const QString &source, const QString &description, const SourceRange &where)
    : Error(description, number, QString::number(number) + u' ' + source + u": " + description)
    , m_source(source)
    , m_where(where)
{
}

QString DaoException::place() const
{
    if (!m_where.isValid())
        return {};
    return QStringLiteral("line %1, column %2").arg(m_where.line).arg(m_where.column);
}

QString DaoException::details() const
{
    QString below;
    if (m_where.isValid())
        below = QStringLiteral("Line %1, column %2.").arg(m_where.line).arg(m_where.column);
    if (!m_hint.isEmpty())
        below += (below.isEmpty() ? QString() : QStringLiteral(" ")) + m_hint;
    const QString text = u'[' + QString::number(number()) + QStringLiteral("] ") + m_source + u' ' + description();
    return below.isEmpty() ? text : QString(text + QStringLiteral("\n\n") + below);
}

DaoException &DaoException::withHint(const QString &hint)
{
    m_hint = hint;
    return *this;
}

} // namespace dao
