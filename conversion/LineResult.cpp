#include "LineResult.h"

#include "LineConverter.h"
#include "ReportConversion.h"

#include <brannock/ReportColumns.h>
#include <tarnwick/StringToValue.h>

namespace conversion {

using namespace Qt::StringLiterals;
using brannock::ReportEntry;

// Names of the columns that show what a field sets, in the order of ReportFieldType.
static constexpr std::array<std::u16string_view, 3> kResultColumns[] = {
    {},
    {u"cal_num"},
    {u"sec"},
    {u"row"},
    {u"col"},
    {u"volts", u"meas_type"},
    {u"phase"},
    {u"pcnt", u"defect"},
    {u"defect"},
    {u"chan"},
    {u"loc_land", u"from_land", u"to_land"},
    {u"beg_test", u"end_test"},
    {u"beg_test"},
    {u"end_test"},
    {u"analyst_id"},
    {u"oper_id"},
    {u"oper_type"},
    {u"file_name"},
    {u"file_num"},
    {},
    {u"util1"},
    {u"util2"},
    {u"comment"},
};
static_assert(std::size(kResultColumns) == size_t(ReportFieldType::Comment) + 1);

static QString resultOf(const ReportEntry &entry, int type)
{
    if (type == qint32(ReportFieldType::DataPoint))
        return QString::number(entry.location.point);
    QStringList texts;
    if (type >= 0 && size_t(type) < std::size(kResultColumns)) {
        for (const std::u16string_view name : kResultColumns[size_t(type)]) {
            if (!name.empty())
                texts.append(brannock::reportColumn(name).text(entry));
        }
    }
    texts.removeAll(QString());
    return texts.join(u"  "_s);
}

void LineResult::convert(const brannock::Project &project, const ReportConvSpec &spec, int number, QStringView line)
{
    m_rows.clear();
    if (line.isEmpty()) {
        m_rows.append({u"An empty line makes no entry."_s});
        return;
    }
    ReportConvSpec tried = spec;
    for (ConvField &field : tried.reportFields)
        field.value.clear();
    ConversionPrompts prompts;
    Remarks remarks;
    ReportEntry entry;
    LineConverter(project, tried, prompts, remarks, {}).convert(number, line, entry);
    if (entry.isHeader())
        m_rows.append({number <= spec.headerLines ? u"A header line."_s
                                                  : u"A header line: it has no section, row and column."_s});
    if (number > spec.headerLines) {
        for (const ConvField &field : std::as_const(tried.reportFields)) {
            m_rows.append({reportFieldLabel(field.type), field.value,
                           entry.isHeader() ? QString() : resultOf(entry, field.type)});
        }
    }
    if (entry.isHeader()) {
        for (const ConvField &field : std::as_const(tried.commentFields))
            m_rows.append({commentFieldLabels().value(field.type, u"???"_s), field.value, field.value});
    }
    for (const Remark &remark : remarks.kept())
        m_rows.append({remark.text});
}

void LineResult::convertPath(const ReportConvSpec &spec, const QString &machinePath)
{
    m_rows.clear();
    for (const ConvField &field : spec.filenameFields) {
        const QString part = ReportConversion::pathPart(machinePath, field.part);
        const QString text = cutColumns(part, field.firstColumn, field.lastColumn).toString();
        const int cal = tarnwick::leadingInteger(text);
        QString result;
        if (field.type == qint32(FilenameFieldType::OperType))
            result = spec.mapOperType(text);
        else if (field.type == qint32(FilenameFieldType::Cal))
            result = ConversionPrompts::isCal(cal) ? QString::number(cal) : u"not from 1 to 999"_s;
        m_rows.append({filenameFieldLabels().value(field.type, u"???"_s), text, result});
    }
}

tarnwick::GridColumn LineResult::column(int column) const
{
    static const tarnwick::GridColumn columns[] = {
        {.title = u"FIELD"_s, .width = 12}, {.title = u"TEXT"_s, .width = 16}, {.title = u"RESULT"_s, .width = 18}};
    return columns[column];
}

QString LineResult::lineText(int row) const
{
    return m_rows[row].size() == 1 ? m_rows[row].constFirst() : QString();
}

} // namespace conversion
