#pragma once
#include "Format.h"

#include <QString>

namespace tarnwick {

/// One printf-style specification with text around it, used by display formats ("%.2f", "%3d%%", "%m/%d/%Y %X" for
/// dates).
class JFormatSpec
{
public:
    explicit JFormatSpec(const QString &format);
    /// The conversion letter of the first specification ('d', 'f', 'U', ...); null if there is none.
    QChar conversion() const { return m_conversion; }
    const QString &text() const { return m_format; }
    /// Formats the value. If the format does not fit the value, returns the format text itself.
    QString apply(const FormatArg &value) const;

private:
    QString m_format;
    QChar m_conversion;
};

} // namespace tarnwick
