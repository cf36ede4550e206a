#include "TextSource.h"

#include <QStringDecoder>
#include <tarnwick/FileWriter.h>

namespace conversion {

using namespace Qt::StringLiterals;

// Code page 1252 where it differs from Latin-1; 0: no character.
static constexpr char16_t k1252[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

static QString from1252(const QByteArray &bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0) {
            const char16_t mapped = k1252[c.unicode() - 0x80];
            c = mapped ? QChar(mapped) : QChar(QChar::ReplacementCharacter);
        }
    }
    return text;
}

static QString decoded(const QString &path, const QByteArray &content)
{
    const auto mark = QStringConverter::encodingForData(content);
    const bool isUtf16 = mark == QStringConverter::Utf16LE || mark == QStringConverter::Utf16BE;
    if (isUtf16 && (content.startsWith("\xff\xfe") || content.startsWith("\xfe\xff"))) {
        QStringDecoder decode(*mark);
        return decode(content);
    }
    if (const qsizetype zero = content.indexOf('\0'); zero >= 0)
        throw tarnwick::FileError(path, 0, u"is not a text file: byte %1 is zero."_s.arg(zero));
    QStringDecoder decode(QStringDecoder::Utf8);
    QString text = decode(content);
    return decode.hasError() ? from1252(content) : text;
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
