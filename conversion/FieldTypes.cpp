#include "FieldTypes.h"

#include <tarnwick/Format.h>

namespace conversion {

using namespace Qt::StringLiterals;

namespace {

struct Names
{
    const char16_t *label;
    const char16_t *keyword;
};

// In the order of ReportFieldType.
constexpr Names kReportFields[] = {
    {u"Skip", u"SKIP"},      {u"Cal", u"CAL"},           {u"Tube Sec", u"SEC"},   {u"Tube Row", u"ROW"},
    {u"Tube Col", u"COL"},   {u"Volts", u"VOLT"},        {u"Phase", u"DEG"},      {u"Percent", u"%"},
    {u"Code", u"DEF"},       {u"Channel", u"CH"},        {u"Location", u"LOC"},   {u"Extent", u"EXT"},
    {u"Begin Test", u"BEG"}, {u"End Test", u"END"},      {u"Analyst", u"ANA"},    {u"Operator", u"OPER"},
    {u"Oper Type", u"TYP"},  {u"Filename", u"FILENAME"}, {u"File Index", u"IDX"}, {u"Data Point", u"POINT"},
    {u"Util1", u"UTIL1"},    {u"Util2", u"UTIL2"},       {u"Comment", u"COMMENT"}};
static_assert(std::size(kReportFields) == size_t(ReportFieldType::Comment) + 1);

} // namespace

static bool isReportFieldType(int type)
{
    return type >= 0 && size_t(type) < std::size(kReportFields);
}

QString reportFieldLabel(int type)
{
    return isReportFieldType(type) ? QString::fromUtf16(kReportFields[type].label) : u"???"_s;
}

QString reportFieldKeyword(int type)
{
    return isReportFieldType(type) ? QString::fromUtf16(kReportFields[type].keyword) : u"???"_s;
}

QString reportFieldPrintLabel(int type)
{
    return isReportFieldType(type) ? reportFieldLabel(type) : tarnwick::format(u"Field type %d", type);
}

const QStringList &reportFieldLabels()
{
    static const QStringList labels = [] {
        QStringList all;
        for (const Names &names : kReportFields)
            all.append(QString::fromUtf16(names.label));
        return all;
    }();
    return labels;
}

const QStringList &filenameFieldLabels()
{
    static const QStringList labels{u"Cal"_s, u"Analyst"_s, u"Oper Type"_s};
    return labels;
}

const QStringList &filenamePartLabels()
{
    static const QStringList labels{u"Directory"_s, u"Filename"_s, u"Extension"_s};
    return labels;
}

const QStringList &commentFieldLabels()
{
    static const QStringList labels{u"Cal"_s, u"Probe"_s, u"Analyst"_s, u"Date & Time"_s};
    return labels;
}

const QStringList &commentPartLabels()
{
    static const QStringList labels{u"Keyword"_s, u"Fixed Cols"_s};
    return labels;
}

const QStringList &fieldLayoutLabels()
{
    static const QStringList labels{u"Fixed Fields"_s, u"Comma Delimited"_s};
    return labels;
}

} // namespace conversion
