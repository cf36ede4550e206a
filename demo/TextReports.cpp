#include "TextReports.h"

using namespace Qt::StringLiterals;
using brannock::ReportEntry;
using conversion::CommentFieldType;
using conversion::CommentPart;
using conversion::ConvField;
using conversion::FilenameFieldType;
using conversion::FilenamePart;
using conversion::ReportFieldType;
using ellery::Axis;

namespace demo {

namespace {

template <typename Type>
ConvField field(Type type, int first, int last)
{
    ConvField made;
    made.type = qint32(type);
    made.firstColumn = first;
    made.lastColumn = last;
    return made;
}

ConvField filenameField(FilenameFieldType type, int first, int last)
{
    ConvField made = field(type, first, last);
    made.part = qint32(FilenamePart::Filename);
    return made;
}

ConvField keywordField(CommentFieldType type, const QString &keyword, int last)
{
    ConvField made = field(type, 1, last); // a blank follows the keyword
    made.part = qint32(CommentPart::Keyword);
    made.keyword = keyword;
    return made;
}

QString place(const brannock::TubeLoc &location)
{
    const QChar sign = location.offset < 0 ? u'-' : u'+';
    return location.landmark.leftJustified(4) + sign + QString::number(std::abs(double(location.offset)), 'f', 2);
}

QString placeText(const ReportEntry &entry)
{
    if (entry.from.isValid())
        return place(entry.from) + u' ' + place(entry.to);
    return entry.location.isValid() ? place(entry.location) : QString();
}

/// The text that the converter will read for the field.
QString fieldText(const ConvField &field, const ReportEntry &entry, const TextLayout &layout,
                  const ellery::SteamGen &gen)
{
    const bool measured = entry.meas.isValid();
    switch (ReportFieldType(field.type)) {
    case ReportFieldType::Sec:
        return gen.tubeLabel(Axis::Sec, entry.sec);
    case ReportFieldType::Row:
        return gen.tubeLabel(Axis::Row, entry.row);
    case ReportFieldType::Col:
        return gen.tubeLabel(Axis::Col, entry.col);
    case ReportFieldType::Volts:
        return measured ? QString::number(entry.meas.volts, 'f', 2) : QString();
    case ReportFieldType::Phase:
        return measured ? QString::number(qRound(entry.meas.phase)) : QString();
    case ReportFieldType::Percent:
        if (entry.meas.percent > 0)
            return QString::number(entry.meas.percent);
        return layout.codeInPercent ? entry.defect : QString();
    case ReportFieldType::Code:
        return entry.defect;
    case ReportFieldType::Channel:
        return entry.channel;
    case ReportFieldType::Location:
        return placeText(entry);
    case ReportFieldType::Extent:
        return entry.beginTest.isEmpty() ? QString() : entry.beginTest + u' ' + entry.endTest;
    case ReportFieldType::BeginTest:
        return entry.beginTest;
    case ReportFieldType::EndTest:
        return entry.endTest;
    case ReportFieldType::Analyst:
        return entry.analystId;
    case ReportFieldType::Operator:
        return entry.operatorId;
    case ReportFieldType::OperType:
        for (const conversion::TextPair &pair : layout.spec.operTypes) {
            if (pair.entry == entry.operType)
                return pair.from;
        }
        return entry.operType;
    case ReportFieldType::Filename:
        return entry.fileName;
    case ReportFieldType::FileIndex:
        return u"%1"_s.arg(entry.fileNumber, 3, 10, QLatin1Char('0'));
    case ReportFieldType::Util1:
        return entry.util1;
    case ReportFieldType::Comment:
        return entry.comment;
    default:
        return QString();
    }
}

bool isNumeric(ReportFieldType type)
{
    return type == ReportFieldType::Row || type == ReportFieldType::Col || type == ReportFieldType::Volts ||
           type == ReportFieldType::Phase || type == ReportFieldType::Percent || type == ReportFieldType::Sec;
}

void put(QString &line, const ConvField &field, QString text)
{
    const int width = field.lastColumn - field.firstColumn + 1;
    if (text.size() > width)
        throw tarnwick::Error(u"'%1' does not fit into %2 columns of a text report."_s.arg(text).arg(width));
    text = isNumeric(ReportFieldType(field.type)) ? text.rightJustified(width) : text.leftJustified(width);
    line.replace(field.firstColumn, width, text);
}

/// Column titles, each cut to its field. If fields overlap, the first has the title.
QString titleLine(const TextLayout &layout)
{
    QString line(layout.width, u' ');
    int end = -1;
    QList<ConvField> fields = layout.spec.reportFields;
    std::stable_sort(fields.begin(), fields.end(),
                     [](const ConvField &a, const ConvField &b) { return a.firstColumn < b.firstColumn; });
    for (const ConvField &field : std::as_const(fields)) {
        if (field.firstColumn <= end)
            continue;
        put(line, field, conversion::reportFieldKeyword(field.type).left(field.lastColumn - field.firstColumn + 1));
        end = field.lastColumn;
    }
    return line;
}

QStringList headerLines(const TextLayout &layout, const InspectedCal &cal, Oper oper, const brannock::Project &project)
{
    const QString site = project.site.siteCode;
    const QString comp = project.site.compCode;
    const QString outage = project.outages[cal.outage].name;
    if (layout.vendor == TextLayout::Vendor::Plain) {
        return {u"EDDY CURRENT RESULTS   %1 %2   Outage: %3   Cal: %4   Date: %5"_s.arg(site, comp, outage)
                    .arg(cal.number)
                    .arg(cal.start.toString()),
                u"Probe: %1   Size: %2   Type: %3   Serial: %4"_s.arg(cal.probe.type.leftJustified(10))
                    .arg(cal.probe.size)
                    .arg(cal.probe.model, cal.probe.serialNumber),
                titleLine(layout)};
    }
    return {u"QUILLMARK ANALYSIS SERVICES"_s.leftJustified(60) + u"ROTATING PROBE RESULTS"_s,
            u"PLANT %1   COMPONENT %2   OUTAGE %3   CAL GROUP %4   %5"_s.arg(site, comp, outage)
                .arg(cal.number)
                .arg(operWord(oper).toUpper()),
            u"PROBE TYPE: %1   ANALYST ID: %2"_s.arg(cal.probe.type.leftJustified(12), cal.analysts[size_t(oper)]),
            u"ACQUIRED: %1"_s.arg(cal.start.toString()),
            titleLine(layout),
            QString(layout.width, u'-')};
}

} // namespace

TextLayout plainLayout()
{
    TextLayout layout;
    layout.folder = u"foreign"_s;
    layout.specFile = u"default.fmt"_s;
    layout.codeInPercent = true;
    conversion::ReportConvSpec &spec = layout.spec;
    spec.reportFields.append(field(ReportFieldType::Code, 62, 64));
    spec.reportFields.append(field(ReportFieldType::Operator, 66, 70));
    spec.filenameFields = {filenameField(FilenameFieldType::Cal, 0, 4),
                           filenameField(FilenameFieldType::OperType, 6, 15)};
    spec.commentFields = {keywordField(CommentFieldType::Probe, u"Probe:"_s, 10),
                          keywordField(CommentFieldType::DateTime, u"Date:"_s, 19)};
    spec.fileTypes = {{u"Text Reports"_s, u"*.txt"_s}};
    layout.width = 119;
    return layout;
}

TextLayout titledLayout()
{
    TextLayout layout;
    layout.vendor = TextLayout::Vendor::Titled;
    layout.folder = u"foreign2"_s;
    layout.specFile = u"quillmark.fmt"_s;
    conversion::ReportConvSpec &spec = layout.spec;
    spec.setPath(u"report_formats\\quillmark.fmt"_s);
    spec.headerLines = 6;
    spec.reportFields = {field(ReportFieldType::Row, 1, 3),         field(ReportFieldType::Col, 5, 7),
                         field(ReportFieldType::Sec, 9, 11),        field(ReportFieldType::Location, 13, 36),
                         field(ReportFieldType::Percent, 38, 40),   field(ReportFieldType::Code, 42, 44),
                         field(ReportFieldType::Volts, 46, 51),     field(ReportFieldType::Phase, 53, 55),
                         field(ReportFieldType::Channel, 57, 59),   field(ReportFieldType::Extent, 61, 68),
                         field(ReportFieldType::Operator, 70, 74),  field(ReportFieldType::Filename, 76, 89),
                         field(ReportFieldType::FileIndex, 91, 93), field(ReportFieldType::Comment, 95, 124)};
    spec.filenameFields = {filenameField(FilenameFieldType::OperType, 0, 0),
                           filenameField(FilenameFieldType::Cal, 1, 4)};
    spec.commentFields = {keywordField(CommentFieldType::Probe, u"PROBE TYPE:"_s, 12),
                          keywordField(CommentFieldType::Analyst, u"ANALYST ID:"_s, 5),
                          keywordField(CommentFieldType::DateTime, u"ACQUIRED:"_s, 19)};
    spec.operTypes = {{u"P"_s, u"PRI"_s}, {u"S"_s, u"SEC"_s}, {u"R"_s, u"RES"_s}};
    spec.fileTypes = {{u"Quillmark Reports"_s, u"*.txt"_s}};
    layout.width = 126;
    return layout;
}

QString textReportName(const TextLayout &layout, const InspectedCal &cal, Oper oper)
{
    if (layout.vendor == TextLayout::Vendor::Plain)
        return u"%1_%2.txt"_s.arg(cal.number, 5, 10, QLatin1Char('0')).arg(operWord(oper));
    return u"%1%2.txt"_s.arg(operCode(oper).at(0)).arg(cal.number, 4, 10, QLatin1Char('0'));
}

QByteArray textReport(const TextLayout &layout, const InspectedCal &cal, Oper oper, const brannock::Project &project)
{
    QByteArray text;
    const QStringList headers = headerLines(layout, cal, oper, project);
    for (const QString &line : headers)
        text += line.toLatin1() + "\r\n";
    for (const ReportEntry &entry : cal.results[size_t(oper)]) {
        QString line(layout.width, u' ');
        for (const ConvField &field : layout.spec.reportFields)
            put(line, field, fieldText(field, entry, layout, project.steamGen));
        // A final mark prevents editors from removing trailing blanks.
        if (line.endsWith(u' '))
            line.back() = u'|';
        text += line.toLatin1() + "\r\n";
    }
    return text;
}

} // namespace demo
