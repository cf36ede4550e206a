#include "TextCodec.h"

#include <QByteArray>
#include <QtEndian>

namespace jet::format {
namespace {

const iconv_t kNoConverter = iconv_t(-1);
constexpr int kWindowsLatin = 1252;
constexpr qsizetype kLongestName = 64;

// Characters 0x80 to 0x9F of code page 1252. Its five unused bytes map to control characters, as on Windows.
constexpr char16_t kWindowsLatinUpper[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char16_t windowsLatin(uchar byte)
{
    return byte >= 0x80 && byte < 0xA0 ? kWindowsLatinUpper[byte - 0x80] : char16_t(byte);
}

void appendUnits(Bytes bytes, QString &to)
{
    const qsizetype units = qsizetype(bytes.size() / 2);
    if (units == 0)
        return;
    const qsizetype at = to.size();
    to.resize(at + units);
    qFromLittleEndian<quint16>(bytes.data(), units, to.data() + at);
}

} // namespace

TextCodec::TextCodec(bool jet4, int codePage)
    : m_jet4(jet4)
    , m_converter(kNoConverter)
{
    if (!jet4 && codePage != kWindowsLatin && codePage != 0)
        m_converter = iconv_open("UTF-16LE", QByteArray::number(codePage).prepend("CP").constData());
}

TextCodec::~TextCodec()
{
    if (m_converter != kNoConverter)
        iconv_close(m_converter);
}

bool TextCodec::decode(Bytes bytes, QString &to) const
{
    if (!m_jet4)
        return decodeCodePage(bytes, to);
    if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE)
        return decodeCompressed(bytes.subspan(2), to);
    return decodeUnicode(bytes, to);
}

bool TextCodec::decodeUnicode(Bytes bytes, QString &to) const
{
    appendUnits(bytes, to);
    if (bytes.size() % 2 == 0)
        return true;
    to.append(QChar::ReplacementCharacter);
    return false;
}

// One-byte characters and two-byte characters alternate; a zero byte switches between the modes.
bool TextCodec::decodeCompressed(Bytes bytes, QString &to) const
{
    bool oneByte = true;
    size_t at = 0;
    while (at < bytes.size()) {
        if (bytes[at] == 0) {
            oneByte = !oneByte;
            ++at;
        } else if (oneByte) {
            to.append(QChar(char16_t(bytes[at])));
            ++at;
        } else if (at + 1 < bytes.size()) {
            to.append(QChar(char16_t(bytes[at] | bytes[at + 1] << 8)));
            at += 2;
        } else {
            to.append(QChar::ReplacementCharacter);
            return false;
        }
    }
    return true;
}

bool TextCodec::decodeCodePage(Bytes bytes, QString &to) const
{
    if (m_converter == kNoConverter) {
        for (const uchar byte : bytes)
            to.append(QChar(windowsLatin(byte)));
        return true;
    }
    bool clean = true;
    QByteArray out(qsizetype(bytes.size()) * 2 + 4, Qt::Uninitialized);
    char *from = const_cast<char *>(reinterpret_cast<const char *>(bytes.data()));
    size_t left = bytes.size();
    iconv(m_converter, nullptr, nullptr, nullptr, nullptr);
    while (left > 0) {
        char *target = out.data();
        size_t room = size_t(out.size());
        const size_t result = iconv(m_converter, &from, &left, &target, &room);
        appendUnits(Bytes(reinterpret_cast<const uchar *>(out.constData()), size_t(target - out.constData())), to);
        if (result != size_t(-1))
            break;
        if (errno == E2BIG)
            continue;
        to.append(QChar::ReplacementCharacter);
        clean = false;
        ++from;
        --left;
    }
    return clean;
}

QString TextCodec::name(Bytes bytes) const
{
    QString text;
    if (bytes.empty() || bytes.size() > size_t(kLongestName) * 2 || !decode(bytes, text) || text.size() > kLongestName)
        throw Damage(Fault::BadName);
    for (const QChar c : text) {
        if (c.unicode() < 0x20)
            throw Damage(Fault::BadName);
    }
    return text;
}

} // namespace jet::format
