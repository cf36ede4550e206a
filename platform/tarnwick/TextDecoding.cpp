#include "TextDecoding.h"

#include <QStringDecoder>

namespace tarnwick {

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

bool isUtf16Text(const QByteArray &bytes)
{
    return bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
}

QString decodedText(const QByteArray &bytes)
{
    if (isUtf16Text(bytes)) {
        QStringDecoder decode(bytes.startsWith("\xff") ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        return decode(bytes);
    }
    QStringDecoder decode(QStringDecoder::Utf8);
    QString text = decode(bytes);
    if (!decode.hasError())
        return text;
    text = QString(); // a text of a gigabyte needs its memory again
    return from1252(bytes);
}

} // namespace tarnwick
