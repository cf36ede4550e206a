#include "FieldMarks.h"

#include <algorithm>

namespace conversion {

using tarnwick::ColourRef;

static FieldMark reportMark(const ConvField &field, qsizetype first, qsizetype last)
{
    return {first, last, field.colour, reportFieldLabel(field.type), reportFieldKeyword(field.type)};
}

FieldMarks::FieldMarks(const ReportConvSpec &spec, const ellery::SteamGen &component)
    : m_spec(spec)
    , m_component(&component)
{
    for (const ConvField &field : spec.reportFields) {
        const bool isSection = field.type == qint32(ReportFieldType::Sec);
        if (isSection || field.type == qint32(ReportFieldType::Row) || field.type == qint32(ReportFieldType::Col))
            m_address.append({field, isSection ? ellery::Axis::Sec : ellery::Axis::Row});
        m_hasSection = m_hasSection || isSection;
        if (!spec.isCommaDelimited() && field.lastColumn >= field.firstColumn)
            m_columns.append(reportMark(field, field.firstColumn, field.lastColumn));
    }
}

QList<FieldMark> FieldMarks::of(int number, QStringView line) const
{
    if (number <= m_spec.headerLines)
        return ofHeader(line);
    const QList<DelimitedValue> values =
        m_spec.isCommaDelimited() ? splitCommaDelimited(line) : QList<DelimitedValue>();
    const QList<FieldMark> fields = m_spec.isCommaDelimited() ? ofDelimited(values) : m_columns;
    // Without a field for the section every line is a header line. The fields are shown as well then, for whoever is
    // making the format.
    if (!m_hasSection)
        return fields + ofHeader(line);
    return isWithoutTube(line, values) ? ofHeader(line) : fields;
}

// Decides like the conversion. A line that is too short for a part of the address gets it from an earlier line, so it
// is not without a tube.
bool FieldMarks::isWithoutTube(QStringView line, const QList<DelimitedValue> &values) const
{
    const auto isMissing = [&](const AddressField &part) {
        const ConvField &field = part.field;
        if (m_spec.isCommaDelimited()) {
            return field.firstColumn >= 0 && field.firstColumn < values.size() &&
                   m_component->stringToNumber(part.axis, values[field.firstColumn].text) < 0;
        }
        return field.lastColumn < line.size() &&
               m_component->stringToNumber(part.axis, cutColumns(line, field.firstColumn, field.lastColumn)) < 0;
    };
    return std::any_of(m_address.begin(), m_address.end(), isMissing);
}

QList<FieldMark> FieldMarks::ofHeader(QStringView line) const
{
    QList<FieldMark> marks;
    for (const ConvField &field : m_spec.commentFields) {
        qsizetype start = 0;
        if (field.part != qint32(CommentPart::FixedCols)) {
            start = line.indexOf(field.keyword);
            if (start < 0)
                continue;
            start += field.keyword.size();
        }
        const QString label = commentFieldLabels().value(field.type);
        marks.append({start + field.firstColumn, start + field.lastColumn, field.colour, label, label});
    }
    return marks;
}

QList<FieldMark> FieldMarks::ofDelimited(const QList<DelimitedValue> &values) const
{
    QList<FieldMark> marks;
    for (const ConvField &field : m_spec.reportFields) {
        if (field.firstColumn < 0 || field.firstColumn >= values.size())
            continue;
        const DelimitedValue &value = values[field.firstColumn];
        if (value.end > value.start)
            marks.append(reportMark(field, value.start, value.end - 1));
    }
    return marks;
}

void setDefaultColours(ReportConvSpec &spec)
{
    constexpr ColourRef kColours[] = {ColourRef::fromRgb(0x77, 0xAA, 0xDD), ColourRef::fromRgb(0xEE, 0xDD, 0x88),
                                      ColourRef::fromRgb(0xFF, 0xAA, 0xBB), ColourRef::fromRgb(0x99, 0xDD, 0xFF),
                                      ColourRef::fromRgb(0xBB, 0xCC, 0x33), ColourRef::fromRgb(0x44, 0xBB, 0x99),
                                      ColourRef::fromRgb(0xEE, 0x88, 0x66), ColourRef::fromRgb(0xDD, 0xDD, 0xDD)};
    size_t next = 0;
    const auto colour = [&next, &kColours](ConvField &field) { field.colour = kColours[next++ % std::size(kColours)]; };
    // In the order of the columns, so that neighbours in the text get neighbours of the palette.
    QList<ConvField *> fields;
    for (ConvField &field : spec.reportFields)
        fields.append(&field);
    std::stable_sort(fields.begin(), fields.end(),
                     [](const ConvField *a, const ConvField *b) { return a->firstColumn < b->firstColumn; });
    for (ConvField *field : std::as_const(fields)) {
        if (field->type == qint32(ReportFieldType::Skip))
            field->colour = ConvField::kDefaultColour;
        else
            colour(*field);
    }
    for (ConvField &field : spec.commentFields)
        colour(field);
}

} // namespace conversion
