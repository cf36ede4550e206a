#include "TextSource.h"

#include "MemoryCheck.h"

#include <QFile>
#include <QFileInfo>
#include <tarnwick/FileWriter.h>
#include <tarnwick/TextDecoding.h>

namespace conversion {

using namespace Qt::StringLiterals;

// The byte order mark that a text in UTF-16 lacks; empty for other texts. In a report nearly every character is a
// letter, digit or blank of ASCII, so every other byte is zero.
static QByteArray missingMark(const QByteArray &content)
{
    constexpr qsizetype kLooked = 512;
    constexpr double kMost = 0.9;
    if (tarnwick::isUtf16Text(content))
        return {};
    const qsizetype pairs = std::min(content.size(), kLooked) / 2;
    qsizetype first = 0;
    qsizetype second = 0;
    for (qsizetype i = 0; i < pairs; ++i) {
        first += content[2 * i] == '\0' ? 1 : 0;
        second += content[2 * i + 1] == '\0' ? 1 : 0;
    }
    const double most = kMost * double(pairs);
    if (pairs > 0 && first == 0 && double(second) >= most)
        return "\xff\xfe";
    return pairs > 0 && second == 0 && double(first) >= most ? QByteArray("\xfe\xff") : QByteArray();
}

static QString decoded(const QString &path, const QByteArray &content)
{
    if (const QByteArray mark = missingMark(content); !mark.isEmpty())
        return tarnwick::decodedText(mark + content);
    const qsizetype zero = tarnwick::isUtf16Text(content) ? -1 : content.indexOf('\0');
    if (zero >= 0)
        throw tarnwick::FileError(path, 0, u"is not a text file: byte %1 is zero."_s.arg(zero));
    return tarnwick::decodedText(content);
}

static QByteArray contentOf(const QString &machinePath)
{
    constexpr qint64 kMostBytes = qint64(1) << 36;
    constexpr int kMemoryPerByte = 4; // the bytes, the text of two bytes a character, and its lines
    requireMemory(machinePath, QFileInfo(machinePath).size() * kMemoryPerByte, u"Reading it"_s);
    return tarnwick::readFile(machinePath, kMostBytes);
}

TextSource::TextSource(const QString &machinePath)
    : TextSource(machinePath, contentOf(machinePath))
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
        const bool isWide = tarnwick::isUtf16Text(content) || !missingMark(content).isEmpty();
        const bool isHalf = isWide && (end + 1) % 2 == 1;
        content.truncate(end + 1 + (isHalf ? 1 : 0));
    }
    return {machinePath, content};
}

QStringView TextSource::line(int index) const
{
    return QStringView(m_text).sliced(m_lines[index].start, m_lines[index].size);
}

// Adds what lies between two LFs. A CR in it ends a line too: if it did not, the lines behind it would be lost as the
// end of another one. CRs before the LF belong to that.
void TextSource::addLines(qsizetype start, qsizetype end)
{
    if (end < m_text.size()) {
        while (end > start && m_text[end - 1] == u'\r')
            --end;
    }
    const QStringView part = QStringView(m_text).sliced(start, end - start);
    qsizetype from = 0;
    for (qsizetype to; (to = part.indexOf(u'\r', from)) >= 0; from = to + 1)
        m_lines.append({start + from, to - from});
    if (end < m_text.size() || from < part.size())
        m_lines.append({start + from, part.size() - from});
}

void TextSource::split()
{
    qsizetype start = 0;
    while (start < m_text.size()) {
        const qsizetype found = m_text.indexOf(u'\n', start);
        const qsizetype end = found < 0 ? m_text.size() : found;
        addLines(start, end);
        start = end + 1;
    }
}

} // namespace conversion
