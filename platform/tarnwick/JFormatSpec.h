#pragma once
#include "Format.h"

#include <QString>

namespace tarnwick {

/// One printf-style specification with the text around it, as display formats use ("%.2f", "%3d%%", "%m/%d/%Y %X" for
/// dates).
class JFormatSpec
{
public:
    explicit JFormatSpec(const QString &format);
    /// The conversion letter of the first specification ('d', 'f', 'U', ...), null when the text has none.
    QChar conversion() const { return m_conversion; }
    const QString &text() const { return m_format; }
    /// The value printed with the format; the format as it stands when it does not fit the value.
    QString apply(const FormatArg &value) const;

private:
    QString m_format;
    QChar m_conversion;
};

} // namespace tarnwick
