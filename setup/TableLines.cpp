#include "TableLines.h"

namespace setup {

using namespace Qt::StringLiterals;

TableLines::TableLines(const QString &text)
    : m_text(text)
{
    m_text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

bool TableLines::next()
{
    while (m_at < m_text.size()) {
        m_line = m_nextLine;
        qsizetype end = m_text.indexOf(u'\n', m_at);
        if (end < 0)
            end = m_text.size();
        const QStringView line = QStringView(m_text).sliced(m_at, end - m_at);
        const bool isSkipped = line.trimmed().isEmpty() || line.startsWith(u'#');
        if (isSkipped || line.startsWith(u'!')) {
            if (!isSkipped)
                property();
            m_at = end + 1;
            ++m_nextLine;
            continue;
        }
        if (m_separator.isNull())
            m_separator = line.contains(u'\t') ? u'\t' : line.contains(u';') ? u';' : u',';
        split();
        const bool isBlank =
            std::all_of(m_cells.cbegin(), m_cells.cend(), [](const QString &cell) { return cell.trimmed().isEmpty(); });
        if (isBlank) // empty lines of a spreadsheet consist of separators
            continue;
        ++m_rows;
        return true;
    }
    return false;
}

void TableLines::split()
{
    m_cells.clear();
    QString cell;
    bool isQuoted = false;
    for (; m_at < m_text.size(); ++m_at) {
        const QChar c = m_text[m_at];
        if (c == u'\n')
            ++m_nextLine;
        if (isQuoted && c == u'"' && m_at + 1 < m_text.size() && m_text[m_at + 1] == u'"') {
            cell += c;
            ++m_at;
        } else if (c == u'"' && (isQuoted || cell.isEmpty())) {
            isQuoted = !isQuoted;
        } else if (!isQuoted && c == u'\n') {
            break;
        } else if (!isQuoted && c == m_separator) {
            m_cells.append(cell);
            cell.clear();
        } else {
            cell += c;
        }
    }
    if (m_at >= m_text.size())
        ++m_nextLine;
    ++m_at;
    m_cells.append(cell);
    if (isQuoted)
        m_faults.append({m_line, u"A quote that begins in this line has no end."_s});
}

void TableLines::property()
{
    const qsizetype end = m_text.indexOf(u'\n', m_at);
    const QStringList words = m_text.sliced(m_at, (end < 0 ? m_text.size() : end) - m_at).split(u'\t');
    bool ok = false;
    const qint64 stated = words.value(1).toLongLong(&ok);
    if (words.first() == u"!rows" && m_rows >= 0 && (!ok || stated != m_rows))
        m_faults.append({m_line, u"The file states %1 rows, but has %2: it was cut off, or changed by hand."_s.arg(
                                     words.value(1), QString::number(m_rows))});
}

} // namespace setup
