#include "TextSource.h"

#include <QFile>
#include <tarnwick/FileWriter.h>
#include <tarnwick/TextDecoding.h>

namespace conversion {

using namespace Qt::StringLiterals;

static QString decoded(const QString &path, const QByteArray &content)
{
    const qsizetype zero = tarnwick::isUtf16Text(content) ? -1 : content.indexOf('\0');
    if (zero >= 0)
        throw tarnwick::FileError(path, 0, u"is not a text file: byte %1 is zero."_s.arg(zero));
    return tarnwick::decodedText(content);
}

TextSource::TextSource(const QString &machinePath)
    : TextSource(machinePath, tarnwick::readFile(machinePath))
{
}

TextSource::TextSource(const QString &name, const QByteArray &content)
    : m_path(name)
    , m_text(decoded(name, content))
{
    while (m_text.endsWith(u'\x1a'))
        m_text.chop(1);
    split();
}

TextSource TextSource::head(const QString &machinePath)
{
    constexpr qint64 kHeadBytes = 64 * 1024;
    QFile file(machinePath);
    if (!file.open(QFile::ReadOnly))
        throw tarnwick::FileError(machinePath, 0, file.errorString());
    QByteArray content = file.read(kHeadBytes);
    const bool isCut = content.size() == kHeadBytes;
    if (const qsizetype end = content.lastIndexOf('\n'); isCut && end > 0) {
        const bool isHalf = tarnwick::isUtf16Text(content) && (end + 1) % 2 == 1;
        content.truncate(end + 1 + (isHalf ? 1 : 0));
    }
    return {machinePath, content};
}

QStringView TextSource::line(int index) const
{
    return QStringView(m_text).sliced(m_lines[index].start, m_lines[index].size);
}

void TextSource::addLine(qsizetype start, qsizetype end)
{
    if (m_lines.size() == kMostLines)
        throw tarnwick::FileError(m_path, 0,
                                  u"has more than %1 lines, which is too many for a report."_s.arg(kMostLines));
    while (end > start && m_text[end - 1] == u'\r')
        --end;
    m_lines.append({start, end - start});
}

void TextSource::split()
{
    const QChar lineEnd = m_text.contains(u'\n') ? u'\n' : u'\r';
    qsizetype start = 0;
    while (start < m_text.size()) {
        const qsizetype end = m_text.indexOf(lineEnd, start);
        addLine(start, end < 0 ? m_text.size() : end);
        start = end < 0 ? m_text.size() : end + 1;
    }
}

} // namespace conversion
