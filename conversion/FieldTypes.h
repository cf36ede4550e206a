#pragma once
#include <QString>
#include <QStringList>

namespace conversion {

/// What a field of a result line fills in the report entry.
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

/// What a part of the text file's path fills.
enum class FilenameFieldType { Cal, Analyst, OperType };
enum class FilenamePart { Directory, Filename, Extension };

/// What a text found in a header line fills.
enum class CommentFieldType { Cal, Probe, Analyst, DateTime };
enum class CommentPart { Keyword, FixedCols };

enum class FieldLayout { FixedFields, CommaDelimited };

/// The label of a report field type as the conversion spec editor shows it ("Tube Sec"); "???" for a number that is
/// none.
QString reportFieldLabel(int type);
/// Its keyword in column titles and prints ("SEC"); "???" for a number that is none.
QString reportFieldKeyword(int type);
/// The label in the print of a spec: as above, but "Field type %d" for a number that is none.
QString reportFieldPrintLabel(int type);

// All labels of a choice, in the order of its numbers.
const QStringList &reportFieldLabels();
const QStringList &filenameFieldLabels();
const QStringList &filenamePartLabels();
const QStringList &commentFieldLabels();
const QStringList &commentPartLabels();
const QStringList &fieldLayoutLabels();

} // namespace conversion
