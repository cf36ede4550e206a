#include "TerminalText.h"

#include <algorithm>

namespace tarnwick {

namespace {

/// first of the Unicode pictures of control characters, which have the same order
constexpr char16_t kPictures = 0x2400;
constexpr char16_t kPictureOfDelete = 0x2421;
constexpr char16_t kDelete = 0x7F;
constexpr char16_t kLastControl = 0x9F;

bool isControl(QChar c)
{
    return (c < u' ' && c != u'\n' && c != u'\t') || (c.unicode() >= kDelete && c.unicode() <= kLastControl);
}

QChar signOf(QChar c)
{
    if (c < u' ')
        return QChar(char16_t(kPictures + c.unicode()));
    return c == QChar(kDelete) ? QChar(kPictureOfDelete) : QChar(QChar::ReplacementCharacter);
}

} // namespace

QString terminalText(QStringView text)
{
    QString shown = text.toString();
    if (std::none_of(text.begin(), text.end(), isControl))
        return shown;
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const bool endsLine = shown[i] == u'\r' && i + 1 < shown.size() && shown[i + 1] == u'\n';
        if (isControl(shown[i]) && !endsLine)
            shown[i] = signOf(shown[i]);
    }
    return shown;
}

} // namespace tarnwick
