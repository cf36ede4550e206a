#pragma once
#include "ReportConvSpec.h"

#include <QStringView>

namespace conversion {

/// The columns first to last (0-based, inclusive) of a line, trimmed. If the line is shorter, as much as it has.
QStringView cutColumns(QStringView line, qint64 first, qint64 last);

/// The trimmed values of a comma-delimited line. A quoted value may contain commas; a doubled quote inside it is one
/// quote. A quote that is not closed extends to the end of the line.
QStringList splitCommaDelimited(QStringView line);

/// Reads the values of the spec's report fields from a result line. If the line ends before a field's last column (or
/// value number), the field keeps its value.
class FieldCutter
{
public:
    explicit FieldCutter(ReportConvSpec &spec)
        : m_spec(spec)
    {
    }

    void cut(QStringView line);
    /// Indices of the report fields that the last line was too short for.
    const QList<int> &missed() const { return m_missed; }

private:
    void cutFixed(QStringView line);
    void cutDelimited(QStringView line);

    ReportConvSpec &m_spec;
    QList<int> m_missed;
};

} // namespace conversion
