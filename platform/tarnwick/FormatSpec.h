#pragma once
#include <optional>
#include <QString>

namespace tarnwick {

/// One parsed conversion of a format text: "%-6.2f", "%*S", "%{%m/%d/%Y}t".
struct FormatSpec
{
    bool left = false;  ///< "-"
    bool plus = false;  ///< "+"
    bool blank = false; ///< " "
    bool zero = false;  ///< "0"
    bool sharp = false; ///< "#"
    int width = -1;
    bool widthFromArgument = false;
    int precision = -1;
    bool precisionFromArgument = false;
    QStringView dateFormat; ///< text in braces
    QChar conversion;       ///< '%' for "%%"
    qsizetype end = 0;      ///< index behind the conversion letter
};

/// Largest width and precision; a larger number is taken for a mistake.
constexpr int kMostWidth = 4096;

/// Parses the conversion that begins with the per cent sign at start. Empty optional if the text ends within it or a
/// number is out of range. Any letter is accepted as conversion.
std::optional<FormatSpec> parseFormatSpec(QStringView format, qsizetype start);

} // namespace tarnwick
