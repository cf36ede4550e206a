#pragma once
#include "FieldCutter.h"
#include "ReportConvSpec.h"

#include <ellery/SteamGen.h>

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
    /// component: by its sections, rows and columns a line is a result or a header line. It must outlive the object.
    FieldMarks(const ReportConvSpec &spec, const ellery::SteamGen &component);

    /// In the order of the fields; a later one lies above an earlier one. number: of the line, from 1. In header lines
    /// the values of the comment fields are marked, also in lines that are header lines because they have no tube.
    QList<FieldMark> of(int number, QStringView line) const;
    /// The report fields of fixed columns, for titles; empty for the comma-delimited layout.
    const QList<FieldMark> &columns() const { return m_columns; }

private:
    /// A tube's section, row or column.
    struct AddressField
    {
        ConvField field;
        ellery::Axis axis;
    };
    QList<FieldMark> ofHeader(QStringView line) const;
    QList<FieldMark> ofDelimited(const QList<DelimitedValue> &values) const;
    bool isWithoutTube(QStringView line, const QList<DelimitedValue> &values) const;

    ReportConvSpec m_spec;
    const ellery::SteamGen *m_component = nullptr;
    QList<AddressField> m_address;
    bool m_hasSection = false;
    QList<FieldMark> m_columns;
};

/// Gives the fields light colours that remain distinguishable with colour blindness; neighbours differ most. Skipped
/// fields get the default colour.
void setDefaultColours(ReportConvSpec &spec);

} // namespace conversion
