#include "ReportConvSpec.h"

#include <QFileInfo>

namespace conversion {

using namespace Qt::StringLiterals;
using tarnwick::JFile;

namespace {

constexpr int kSpecVersion = 1;
constexpr int kElementVersion = 1;
// Smallest record of a field: version and members, with empty texts.
constexpr int kLeastFieldBytes = 9 * 4;
constexpr int kLeastPairBytes = 3 * 4;

struct DefaultField
{
    ReportFieldType type;
    int first;
    int last;
};

// Columns of the most widely used analysis program. File index is in the last characters of the file name.
constexpr DefaultField kDefaultFields[] = {
    {ReportFieldType::Sec, 0, 2},          {ReportFieldType::Row, 4, 6},          {ReportFieldType::Col, 8, 10},
    {ReportFieldType::Volts, 12, 16},      {ReportFieldType::Phase, 18, 20},      {ReportFieldType::Percent, 22, 24},
    {ReportFieldType::Channel, 26, 28},    {ReportFieldType::Location, 30, 53},   {ReportFieldType::BeginTest, 55, 57},
    {ReportFieldType::EndTest, 58, 60},    {ReportFieldType::Analyst, 82, 86},    {ReportFieldType::OperType, 88, 98},
    {ReportFieldType::Filename, 105, 118}, {ReportFieldType::FileIndex, 116, 118}};

} // namespace

ReportConvSpec::ReportConvSpec()
    : OptionFile(QString::fromUtf16(kDefaultPath), u"Report Conversion Spec"_s, kSpecVersion)
{
    ReportConvSpec::resetToDefaults();
}

void ReportConvSpec::resetToDefaults()
{
    headerLines = 3;
    layout = qint32(FieldLayout::FixedFields);
    reportFields.clear();
    for (const DefaultField &field : kDefaultFields) {
        ConvField added;
        added.type = qint32(field.type);
        added.firstColumn = field.first;
        added.lastColumn = field.last;
        reportFields.append(added);
    }
    filenameFields.clear();
    commentFields.clear();
    operTypes = {
        {u"primary"_s, u"PRI"_s}, {u"secondary"_s, u"SEC"_s}, {u"resolution"_s, u"RES"_s}, {u"tertiary"_s, u"TER"_s}};
    fileTypes.clear();
}

QString ReportConvSpec::mapOperType(const QString &text) const
{
    for (const TextPair &pair : operTypes) {
        if (pair.from == text)
            return pair.entry;
    }
    return text.toUpper();
}

void ReportConvSpec::assignSettings(const ReportConvSpec &other)
{
    headerLines = other.headerLines;
    layout = other.layout;
    reportFields = other.reportFields;
    filenameFields = other.filenameFields;
    commentFields = other.commentFields;
    operTypes = other.operTypes;
    fileTypes = other.fileTypes;
}

bool ReportConvSpec::sameSettings(const ReportConvSpec &other) const
{
    return headerLines == other.headerLines && layout == other.layout && reportFields == other.reportFields &&
           filenameFields == other.filenameFields && commentFields == other.commentFields &&
           operTypes == other.operTypes && fileTypes == other.fileTypes;
}

bool ReportConvSpec::loadOrReset(const QString &machinePath)
{
    if (QFileInfo::exists(machinePath)) {
        loadFrom(machinePath);
        return true;
    }
    resetToDefaults();
    return false;
}

static void serializeField(JFile &file, ConvField &field)
{
    file.version(kElementVersion);
    file.serialize(field.type);
    file.serialize(field.part);
    file.serialize(field.keyword);
    file.serialize(field.firstColumn);
    file.serialize(field.lastColumn);
    file.serialize(field.value);
    file.serialize(field.flag);
    file.serialize(field.colour);
}

static void serializePair(JFile &file, TextPair &pair)
{
    file.version(kElementVersion);
    file.serialize(pair.from);
    file.serialize(pair.entry);
}

void ReportConvSpec::serializeBody(JFile &file, int /*version*/)
{
    file.serialize(headerLines);
    file.serialize(layout);
    file.list(reportFields, kLeastFieldBytes, serializeField);
    file.list(filenameFields, kLeastFieldBytes, serializeField);
    file.list(commentFields, kLeastFieldBytes, serializeField);
    file.list(operTypes, kLeastPairBytes, serializePair);
    file.list(fileTypes, kLeastPairBytes, serializePair);
}

} // namespace conversion
