#pragma once
#include <optional>
#include <QString>

namespace tarnwick {

/// One conversion of a format text, taken apart: "%-6.2f", "%*S", "%{%m/%d/%Y}t".
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
    QStringView dateFormat; ///< what stands in braces
    QChar conversion;       ///< '%' for "%%"
    qsizetype end = 0;      ///< behind the conversion letter
};

/// The widest field and the greatest precision: more is taken for a mistake.
constexpr int kMostWidth = 4096;

/// Takes the conversion apart that begins with the per cent sign at start. Empty optional when the text ends within it
/// or a number in it is out of range. Any letter is accepted as conversion.
std::optional<FormatSpec> parseFormatSpec(QStringView format, qsizetype start);

} // namespace tarnwick
