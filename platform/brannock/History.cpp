#include "History.h"

#include "RowFields.h"

#include <tarnwick/base/Progress.h>

using namespace Qt::StringLiterals;
using fenwright::TableScanner;
using fenwright::TableWriter;

namespace brannock {

namespace {

template <typename Entry, typename Visitor>
void visitFields(Entry &entry, Visitor &visit)
{
    visit.field(u"sec", entry.sec, kSigned16);
    visit.field(u"row", entry.row, kSigned16);
    visit.field(u"col", entry.col, kSigned16);
    visit.field(u"outage", entry.outage);
    visit.field(u"defect", entry.defect);
    visit.field(u"chan", entry.channel);
    visit.sparse(u"volts", entry.volts);
    visit.sparse(u"phase", entry.phase);
    visit.sparse(u"pcnt", entry.percent, kSigned16);
    visit.field(u"loc_land", entry.location.landmark);
    visit.sparse(u"loc_off", entry.location.offset);
    visit.sparse(u"loc_pnt", entry.location.point, kSigned32);
    visit.sparse(u"loc_dist", entry.location.dist);
    visit.field(u"to_land", entry.to.landmark);
    visit.sparse(u"to_off", entry.to.offset);
    visit.sparse(u"to_pnt", entry.to.point, kSigned32);
    visit.sparse(u"to_dist", entry.to.dist);
    visit.field(u"cal_num", entry.calNumber, kUnsigned16);
    visit.field(u"leg", entry.leg, kSigned16);
    visit.field(u"beg_test", entry.beginTest);
    visit.field(u"end_test", entry.endTest);
    visit.sparse(u"probe_size", entry.probeSize, kSigned16);
    visit.field(u"probe_model", entry.probeModel);
    visit.field(u"analyst_id", entry.analystId);
    visit.field(u"oper_id", entry.operatorId);
    visit.field(u"entry_time", entry.entryTime);
    visit.field(u"edited", entry.edited);
}

QStringList fieldNames()
{
    FieldNames collector;
    const HistoryEntry entry;
    visitFields(entry, collector);
    return collector.names;
}

/// The file's properties and their members, in the order of writing.
struct SiteProperty
{
    QStringView name;
    QString fenwright::SiteInfo::*member;
};
constexpr SiteProperty kSiteProperties[] = {
    {u"site_code", &fenwright::SiteInfo::siteCode}, {u"site_name", &fenwright::SiteInfo::siteName},
    {u"unit", &fenwright::SiteInfo::unit},          {u"comp", &fenwright::SiteInfo::compCode},
    {u"comp_name", &fenwright::SiteInfo::compName}, {u"model", &fenwright::SiteInfo::model},
    {u"outage", &fenwright::SiteInfo::outage},
};

struct OriginProperty
{
    QStringView name;
    QString History::Origin::*member;
};
constexpr OriginProperty kOriginProperties[] = {
    {u"database", &History::Origin::database},
    {u"outages", &History::Origin::outages},
    {u"codes", &History::Origin::codes},
};

} // namespace

void History::read(const QString &machinePath, const std::function<void(HistoryEntry &)> &take,
                   tarnwick::Progress *progress)
{
    TableScanner table = TableScanner::open(machinePath, {u"row"_s, u"col"_s, u"outage"_s, u"defect"_s});
    isCounted = table.isCounted();
    for (const SiteProperty &property : kSiteProperties)
        site.*property.member = table.property(property.name.toString());
    for (const OriginProperty &property : kOriginProperties)
        origin.*property.member = table.property(property.name.toString());
    RowReader reader(table, fieldNames());
    const qint64 total = table.bytesLeft();
    tarnwick::ProgressLoop loop(progress, total, u"Reading history"_s);
    while (table.next()) {
        table.requireCells();
        HistoryEntry entry;
        reader.startRow();
        visitFields(entry, reader);
        take(entry);
        loop.tick(total - table.bytesLeft());
    }
}

void History::load(const QString &machinePath)
{
    History loaded;
    loaded.read(machinePath, [&](HistoryEntry &entry) { loaded.entries.append(std::move(entry)); });
    std::swap(*this, loaded);
}

void History::write(const QString &machinePath, const std::function<const HistoryEntry *()> &next) const
{
    TableWriter table;
    for (const SiteProperty &property : kSiteProperties)
        table.property(property.name.toString(), site.*property.member);
    for (const OriginProperty &property : kOriginProperties) {
        if (!(origin.*property.member).isEmpty())
            table.property(property.name.toString(), origin.*property.member);
    }
    table.heading(fieldNames());
    RowWriter writer(table);
    while (const HistoryEntry *entry = next()) {
        visitFields(*entry, writer);
        table.endRow();
    }
    table.write(machinePath);
}

void History::store(const QString &machinePath) const
{
    qsizetype written = 0;
    write(machinePath, [&] { return written < entries.size() ? &entries[written++] : nullptr; });
}

} // namespace brannock
