#pragma once
#include "ReportConvSpec.h"

namespace conversion {

/// Columns of a line that are read for a field.
struct FieldMark
{
    qsizetype first; ///< 0-based
    qsizetype last;  ///< inclusive
    tarnwick::ColourRef colour;
    QString label;   ///< "Tube Sec"
    QString keyword; ///< "SEC"
    bool operator==(const FieldMark &) const = default;
};

/// Tells which columns of each line a spec reads, for the text view.
class FieldMarks
{
public:
    FieldMarks() = default;
    explicit FieldMarks(const ReportConvSpec &spec);

    /// In the order of the fields; a later one lies above an earlier one. number: of the line, from 1. In header lines
    /// the values of the comment fields are marked.
    QList<FieldMark> of(int number, QStringView line) const;
    /// The report fields of fixed columns, for titles; empty for the comma-delimited layout.
    const QList<FieldMark> &columns() const { return m_columns; }

private:
    QList<FieldMark> ofHeader(QStringView line) const;
    QList<FieldMark> ofDelimited(QStringView line) const;

    ReportConvSpec m_spec;
    QList<FieldMark> m_columns;
};

/// Gives the fields light colours that remain distinguishable with colour blindness; neighbours differ most. Skipped
/// fields get the default colour.
void setDefaultColours(ReportConvSpec &spec);

} // namespace conversion
