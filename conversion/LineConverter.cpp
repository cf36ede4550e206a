#include "LineConverter.h"

#include "LocationRules.h"

#include <tarnwick/Format.h>
#include <tarnwick/StringToValue.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace conversion {

using namespace Qt::StringLiterals;
using brannock::ReportEntry;
using ellery::Axis;

// Code in the defect list that holds the requirements of an entry with a depth.
static const QString kPercentCode = u"PCNT"_s;

// Limits of the numbers in report files.
static constexpr int kMostCal = std::numeric_limits<quint16>::max();
static constexpr int kMostPercent = std::numeric_limits<qint16>::max();
static constexpr int kLeastInt = std::numeric_limits<qint32>::min();
static constexpr int kMostInt = std::numeric_limits<qint32>::max();

LineConverter::LineConverter(const brannock::Project &project, ReportConvSpec &spec, ConversionPrompts &prompts,
                             Remarks &remarks, const QString &file)
    : m_project(project)
    , m_spec(spec)
    , m_prompts(prompts)
    , m_remarks(remarks)
    , m_file(file)
    , m_cutter(spec)
{
}

template <typename Text>
void LineConverter::remark(const QString &kind, const Text &text)
{
    if (m_remarks.isFull())
        m_remarks.addUnkept();
    else
        m_remarks.add(m_file, m_number, text(), kind);
}

template <typename Text>
void LineConverter::remarkOnValue(const Text &text)
{
    m_lineRemarks.append(m_remarks.isFull() ? QString() : text());
}

bool LineConverter::needsVolts()
{
    if (m_askedCode != m_codeText) {
        m_askedCode = m_codeText;
        m_needsVolts = m_project.defects.isRequiredField(m_codeText, brannock::DefectList::Volts);
    }
    return m_needsVolts;
}

void LineConverter::convert(int number, QStringView line, ReportEntry &entry)
{
    m_number = number;
    if (number <= m_spec.headerLines) {
        convertHeader(line, entry);
        return;
    }

    m_hasVolts = false;
    m_codeText.clear();
    m_lineRemarks.clear();
    entry.calNumber = -1;
    entry.sec = -1;
    m_cutter.cut(line);
    for (const ConvField &field : std::as_const(m_spec.reportFields))
        applyField(entry, field);

    if (m_hasVolts && needsVolts())
        entry.meas.type = u"V"_s;
    // The suite's tube numbers have 16 bits.
    if (qint16(entry.row) < 0 || qint16(entry.col) < 0 || qint16(entry.sec) < 0) {
        remarkOnAddress(entry);
        entry = ReportEntry();
        convertHeader(line, entry);
    } else {
        remarkOnResult(entry);
    }
}

void LineConverter::applyField(ReportEntry &entry, const ConvField &field)
{
    const QString &value = field.value;
    switch (ReportFieldType(field.type)) {
    case ReportFieldType::Skip:
        break;
    case ReportFieldType::Cal:
        entry.calNumber = integer(field, -1, kMostCal);
        break;
    case ReportFieldType::Sec:
        entry.sec = tubeNumber(Axis::Sec, field);
        break;
    case ReportFieldType::Row:
        entry.row = tubeNumber(Axis::Row, field);
        break;
    case ReportFieldType::Col:
        // columns are parsed by the row's rule; the converted reports depend on it
        entry.col = tubeNumber(Axis::Row, field);
        break;
    case ReportFieldType::Volts:
        entry.meas.volts = number(field);
        m_hasVolts = true;
        break;
    case ReportFieldType::Phase:
        entry.meas.phase = number(field);
        break;
    case ReportFieldType::Percent:
        applyPercent(entry, field);
        break;
    case ReportFieldType::Code:
        entry.defect = value;
        m_codeText = value;
        break;
    case ReportFieldType::Channel:
        entry.channel = value;
        entry.channel.removeIf([](QChar c) { return c.isSpace(); });
        break;
    case ReportFieldType::Location:
        applyLocation(entry, value);
        break;
    case ReportFieldType::Extent: {
        const ExtentText extent = parseExtent(value);
        entry.beginTest = extent.begin;
        entry.endTest = extent.end;
        break;
    }
    case ReportFieldType::BeginTest:
        entry.beginTest = value;
        break;
    case ReportFieldType::EndTest:
        entry.endTest = value;
        break;
    case ReportFieldType::Analyst:
        entry.analystId = value;
        break;
    case ReportFieldType::Operator:
        entry.operatorId = value;
        break;
    case ReportFieldType::OperType:
        entry.operType = m_spec.mapOperType(value);
        break;
    case ReportFieldType::Filename:
        entry.fileName = value;
        break;
    case ReportFieldType::FileIndex:
        entry.fileNumber = integer(field, kLeastInt, kMostInt);
        break;
    case ReportFieldType::DataPoint:
        entry.location.point = integer(field, kLeastInt, kMostInt);
        break;
    case ReportFieldType::Util1:
        entry.util1 = value;
        break;
    case ReportFieldType::Util2:
        entry.util2 = value;
        break;
    case ReportFieldType::Comment:
        entry.comment = value;
        break;
    }
}

void LineConverter::applyPercent(ReportEntry &entry, const ConvField &field)
{
    const QString &value = field.value;
    const bool allDigits = std::all_of(value.begin(), value.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (allDigits) {
        entry.meas.percent = value.isEmpty() ? 0 : integer(field, 0, kMostPercent);
        m_codeText = kPercentCode;
    } else {
        entry.defect = value;
    }
}

void LineConverter::applyLocation(ReportEntry &entry, const QString &value)
{
    const LocationText text = parseLocation(value);
    entry.location = text.location;
    entry.from = text.from;
    entry.to = text.to;
}

int LineConverter::tubeNumber(Axis axis, const ConvField &field)
{
    return axis == Axis::Sec ? m_project.steamGen.stringToSec(field.value)
                             : m_project.steamGen.stringToRow(field.value);
}

int LineConverter::integer(const ConvField &field, int least, int most)
{
    const int found = tarnwick::leadingInteger(field.value);
    const int held = std::clamp(found, least, most);
    if (held != found || !tarnwick::string_to_value<qint32>(field.value)) {
        remarkOnValue([&] {
            return u"%1 \"%2\" is not a whole number from %3 to %4; %5 is used"_s.arg(
                reportFieldKeyword(field.type), field.value, QString::number(least), QString::number(most),
                QString::number(held));
        });
    }
    return held;
}

double LineConverter::number(const ConvField &field)
{
    // Without a signal these columns are blank, which needs no remark.
    if (field.value.isEmpty())
        return 0;
    if (const auto whole = tarnwick::string_to_value<double>(field.value))
        return *whole;
    const double found = leadingNumber(field.value);
    const double held = std::isfinite(found) ? found : 0;
    remarkOnValue([&] {
        return u"%1 \"%2\" is not a number; %3 is used"_s.arg(reportFieldKeyword(field.type), field.value).arg(held);
    });
    return held;
}

void LineConverter::convertHeader(QStringView line, ReportEntry &entry)
{
    entry.kind = ReportEntry::Kind::Header;
    entry.headerText = line.left(brannock::ReportSchema::kHeaderColumns).toString();
    for (ConvField &field : m_spec.commentFields)
        applyCommentField(field, line);
}

void LineConverter::applyCommentField(ConvField &field, QStringView line)
{
    if (field.part == qint32(CommentPart::FixedCols)) {
        field.value = cutColumns(line, field.firstColumn, field.lastColumn).toString();
    } else {
        const qsizetype place = line.indexOf(field.keyword);
        const qint64 after = place + field.keyword.size();
        field.value =
            place < 0 ? QString() : cutColumns(line, after + field.firstColumn, after + field.lastColumn).toString();
    }
    if (field.value.isEmpty())
        return;
    switch (CommentFieldType(field.type)) {
    case CommentFieldType::Cal:
        break; // a cal in a header line has no effect
    case CommentFieldType::Probe:
        m_prompts.probe = field.value;
        break;
    case CommentFieldType::Analyst:
        m_prompts.analyst = field.value;
        break;
    case CommentFieldType::DateTime:
        if (const auto time = tarnwick::JDateTime::parse(field.value))
            m_prompts.dateTime = *time;
        else
            remark(u"not a date"_s, [&] { return u"\"%1\" is not a date and time"_s.arg(field.value); });
        break;
    }
}

// A line without a tube is a heading, a rule or an empty line. It gets a remark only if a part of the address can be
// read and another cannot.
void LineConverter::remarkOnAddress(const ReportEntry &entry)
{
    int readable = 0;
    QStringList unreadable;
    for (const ConvField &field : std::as_const(m_spec.reportFields)) {
        const auto type = ReportFieldType(field.type);
        int number = -1;
        if (type == ReportFieldType::Sec)
            number = entry.sec;
        else if (type == ReportFieldType::Row)
            number = entry.row;
        else if (type == ReportFieldType::Col)
            number = entry.col;
        else
            continue;
        if (qint16(number) >= 0)
            ++readable;
        else
            unreadable.append(u"%1 \"%2\""_s.arg(reportFieldKeyword(field.type), field.value));
    }
    if (readable > 0 && !unreadable.isEmpty())
        remark(u"not a number"_s,
               [&] { return u"treated as a header line; not a number: %1"_s.arg(unreadable.join(u", "_s)); });
}

void LineConverter::remarkOnResult(const ReportEntry &entry)
{
    const auto isUsed = [this](int i) { return m_spec.reportFields.at(i).type != qint32(ReportFieldType::Skip); };
    if (std::any_of(m_cutter.missed().begin(), m_cutter.missed().end(), isUsed)) {
        remark(u"short line"_s, [&] {
            QStringList fields;
            for (const int i : m_cutter.missed()) {
                const ConvField &field = m_spec.reportFields.at(i);
                if (isUsed(i))
                    fields.append(u"%1 \"%2\""_s.arg(reportFieldKeyword(field.type), field.value));
            }
            return u"too short; an earlier value is used for %1"_s.arg(fields.join(u", "_s));
        });
    }
    for (const QString &text : std::as_const(m_lineRemarks))
        remark(u"not a number"_s, [&text] { return text; });
    remarkOnLocations(entry);
    const ellery::SteamGen &steamGen = m_project.steamGen;
    const ellery::TubeAddress address = entry.address();
    if (steamGen.numTube() > 0 && steamGen.findTube(address) < 0) {
        remark(kUnknownTube, [&] {
            // Numbers beyond 16 bits have no address.
            const QString name = address.row == entry.row
                                     ? steamGen.tubeName(address)
                                     : u"SEC %1 ROW %2 COL %3"_s.arg(entry.sec).arg(entry.row).arg(entry.col);
            return u"%1 does not exist in %2"_s.arg(name, steamGen.name);
        });
    }
}

// Report files and table 'report' keep the numbers of a location only with its landmark.
void LineConverter::remarkOnLocations(const ReportEntry &entry)
{
    const std::pair<const char16_t *, const brannock::TubeLoc *> locations[] = {
        {u"location", &entry.location}, {u"from location", &entry.from}, {u"to location", &entry.to}};
    for (const auto &[name, location] : locations) {
        if (location->landmark.isEmpty() && (location->offset != 0 || location->point != 0)) {
            remark(kNoLandmark, [name = name, location = location] {
                return tarnwick::format(u"the %S has no landmark; its offset %g and data point %d are not stored", name,
                                        double(location->offset), location->point);
            });
        }
    }
}

} // namespace conversion
