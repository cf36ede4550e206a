#pragma once
#include "ReportConvSpec.h"

#include <QStringView>

namespace conversion {

/// The columns first to last (0-based, inclusive) of a line, as much of them as the line has, without blanks around.
QStringView cutColumns(QStringView line, qint64 first, qint64 last);

/// The values of a comma-delimited line, without blanks around. A value in quotes may hold commas; a doubled quote in
/// it is a quote. A quote that is never closed reaches to the line's end.
QStringList splitCommaDelimited(QStringView line);

/// Cuts the values of the conversion spec's report fields out of a result line. A field whose last column (or value
/// number) the line does not reach keeps its value.
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
