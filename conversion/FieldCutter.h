#pragma once
#include "ReportConvSpec.h"

#include <QStringView>

namespace conversion {

/// The columns first to last (0-based, inclusive) of a line, trimmed. If the line is shorter, as much as it has.
QStringView cutColumns(QStringView line, qint64 first, qint64 last);

/// A value of a comma-delimited line: its trimmed text and its columns, with blanks and quotes; end is behind the last.
struct DelimitedValue
{
    QString text;
    qsizetype start = 0;
    qsizetype end = 0;
};

/// The values of a comma-delimited line. A quoted value may contain commas; a doubled quote inside it is one
/// quote. A quote that is not closed extends to the end of the line.
QList<DelimitedValue> splitCommaDelimited(QStringView line);
/// Number of the value of a comma-delimited line that has this column; that of the last one if none has.
int valueAt(QStringView line, qsizetype column);

/// Reads the values of the report fields of the format from a result line. If the line ends before a field's last
/// column (or value number), the field keeps its value.
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
