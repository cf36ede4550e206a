#include "Report.h"

#include "ReportFields.h"

#include <QFile>
#include <tarnwick/base/Error.h>

using namespace Qt::StringLiterals;
using fenwright::TableScanner;
using fenwright::TableWriter;

namespace brannock {

namespace {

constexpr QStringView kKindColumn = u"kind";
constexpr QStringView kHeaderColumn = u"header";
constexpr QStringView kKindWords[] = {u"RESULT", u"HEADER", u"STANDARD"};

QStringList fieldNames()
{
    FieldNames collector;
    const ReportEntry entry;
    visitReportFields(entry, collector);
    return collector.names;
}

ReportEntry::Kind kindOf(const TableScanner &table, int column)
{
    const QByteArrayView cell = table.raw(column);
    for (int i = 0; i < 3; ++i) {
        if (QLatin1StringView(cell).compare(kKindWords[i], Qt::CaseInsensitive) == 0)
            return ReportEntry::Kind(i);
    }
    if (!cell.trimmed().isEmpty())
        table.fail(column, u"'%1' is not one of RESULT, HEADER, STANDARD"_s.arg(table.text(column)));
    return ReportEntry::Kind::Result;
}

void requireTube(const TableScanner &table, int row, int col)
{
    for (const int column : {row, col}) {
        if (table.raw(column).trimmed().isEmpty())
            table.fail(column, u"a result needs its tube's number here, the cell is empty"_s);
    }
}

} // namespace

const QStringList &ReportSchema::columns()
{
    static const QStringList all = QStringList{kKindColumn.toString(), kHeaderColumn.toString()} + fieldNames();
    return all;
}

void Report::loadReport(const QString &machinePath)
{
    TableScanner table = TableScanner::open(machinePath, {kKindColumn.toString(), u"row"_s, u"col"_s, u"defect"_s});
    const int kind = table.column(kKindColumn);
    const int header = table.column(kHeaderColumn);
    const int row = table.column(u"row");
    const int col = table.column(u"col");
    RowReader reader(table, fieldNames());
    QList<ReportEntry> read;
    // Lower bound of an entry's length, so that the reserved memory is limited by the file's size.
    constexpr qint64 kBytesPerEntry = 100;
    read.reserve(table.bytesLeft() / kBytesPerEntry);
    while (table.next()) {
        ReportEntry &entry = read.emplaceBack();
        entry.kind = kindOf(table, kind);
        if (entry.isHeader()) {
            entry.headerText = table.text(header);
        } else {
            table.requireCells();
            if (entry.isResult())
                requireTube(table, row, col);
        }
        reader.startRow();
        visitReportFields(entry, reader);
        entry.site.outage = entry.outage;
    }
    entries.swap(read);
    path = machinePath;
    isCounted = table.isCounted();
}

void Report::storeReport(const QString &machinePath, int mode) const
{
    constexpr int kReplace = 1;
    if (mode != kReplace && QFile::exists(machinePath))
        throw tarnwick::FileError(machinePath, 0, u"The file exists already."_s);
    TableWriter table;
    table.heading(ReportSchema::columns());
    RowWriter writer(table);
    for (const ReportEntry &entry : entries) {
        table.cell(kKindWords[int(entry.kind)]);
        table.cell(entry.headerText);
        visitReportFields(entry, writer);
        table.endRow();
    }
    table.write(machinePath);
}

} // namespace brannock
