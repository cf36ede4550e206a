#pragma once
#include <QString>
#include <QStringList>

namespace conversion {

/// Member of the report entry that a field of a result line sets.
enum class ReportFieldType {
    Skip,
    Cal,
    Sec,
    Row,
    Col,
    Volts,
    Phase,
    Percent,
    Code,
    Channel,
    Location,
    Extent,
    BeginTest,
    EndTest,
    Analyst,
    Operator,
    OperType,
    Filename,
    FileIndex,
    DataPoint,
    Util1,
    Util2,
    Comment
};

/// Setting that a part of the text file's path gives.
enum class FilenameFieldType { Cal, Analyst, OperType };
enum class FilenamePart { Directory, Filename, Extension };

/// Setting that a text in a header line gives.
enum class CommentFieldType { Cal, Probe, Analyst, DateTime };
enum class CommentPart { Keyword, FixedCols };

enum class FieldLayout { FixedFields, CommaDelimited };

/// Label of a report field type in the format editor ("Tube Sec"); "???" for an unknown number.
QString reportFieldLabel(int type);
/// Keyword of a report field type in column titles and prints ("SEC"); "???" for an unknown number.
QString reportFieldKeyword(int type);
/// Label of a report field type in the print of a spec; "Field type %d" for an unknown number.
QString reportFieldPrintLabel(int type);

// All labels, in the order of their numbers.
const QStringList &reportFieldLabels();
const QStringList &filenameFieldLabels();
const QStringList &filenamePartLabels();
const QStringList &commentFieldLabels();
const QStringList &commentPartLabels();
const QStringList &fieldLayoutLabels();

} // namespace conversion
