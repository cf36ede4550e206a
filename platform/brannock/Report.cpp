#include "Report.h"

#include "RowFields.h"

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

/// All columns of a report file except the first two, kind and header.
template <typename Entry, typename Visitor>
void visitFields(Entry &entry, Visitor &visit)
{
    visit.field(u"outage", entry.outage);
    visit.field(u"site_code", entry.site.siteCode);
    visit.field(u"comp", entry.site.compCode);
    visit.field(u"leg", entry.leg, kSigned16);
    visit.field(u"cal_num", entry.calNumber, kUnsigned16);
    visit.field(u"file_num", entry.fileNumber, kSigned32);
    visit.field(u"id", entry.id, kUnsigned16);
    visit.field(u"sec", entry.sec, kSigned16);
    visit.field(u"row", entry.row, kSigned16);
    visit.field(u"col", entry.col, kSigned16);
    visit.field(u"chan", entry.channel);
    visit.field(u"meas_type", entry.meas.type);
    visit.sparse(u"volts", entry.meas.volts);
    visit.sparse(u"dig_volts", entry.meas.digVolts, kSigned32);
    visit.sparse(u"phase", entry.meas.phase);
    visit.sparse(u"pcnt", entry.meas.percent, kSigned16);
    visit.field(u"defect", entry.defect);
    visit.field(u"loc_land", entry.location.landmark);
    visit.sparse(u"loc_off", entry.location.offset);
    visit.sparse(u"loc_pnt", entry.location.point, kSigned32);
    visit.sparse(u"loc_dist", entry.location.dist);
    visit.field(u"from_land", entry.from.landmark);
    visit.sparse(u"from_off", entry.from.offset);
    visit.sparse(u"from_pnt", entry.from.point, kSigned32);
    visit.sparse(u"from_dist", entry.from.dist);
    visit.field(u"to_land", entry.to.landmark);
    visit.sparse(u"to_off", entry.to.offset);
    visit.sparse(u"to_pnt", entry.to.point, kSigned32);
    visit.sparse(u"to_dist", entry.to.dist);
    visit.field(u"beg_test", entry.beginTest);
    visit.field(u"end_test", entry.endTest);
    visit.field(u"probe_type", entry.probe.type);
    visit.field(u"probe_model", entry.probe.model);
    visit.sparse(u"probe_size", entry.probe.size, kSigned16);
    visit.field(u"probe_sn", entry.probe.serialNumber);
    visit.field(u"oper_type", entry.operType);
    visit.field(u"analyst_id", entry.analystId);
    visit.field(u"oper_id", entry.operatorId);
    visit.field(u"entry_time", entry.entryTime);
    visit.field(u"file_name", entry.fileName);
    visit.field(u"util1", entry.util1);
    visit.field(u"util2", entry.util2);
    visit.field(u"plan", entry.plan);
    visit.field(u"comment", entry.comment);
    visit.field(u"site_name", entry.site.siteName);
    visit.field(u"unit", entry.site.unit);
    visit.field(u"comp_name", entry.site.compName);
    visit.field(u"model", entry.site.model);
}

QStringList fieldNames()
{
    FieldNames collector;
    const ReportEntry entry;
    visitFields(entry, collector);
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
        visitFields(entry, reader);
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
        visitFields(entry, writer);
        table.endRow();
    }
    table.write(machinePath);
}

} // namespace brannock
