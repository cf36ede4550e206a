#include "History.h"

#include "HistoryFields.h"

#include <tarnwick/base/Progress.h>

using namespace Qt::StringLiterals;
using fenwright::TableScanner;
using fenwright::TableWriter;

namespace brannock {

namespace {

QStringList fieldNames()
{
    FieldNames collector;
    const HistoryEntry entry;
    visitHistoryFields(entry, collector);
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
        visitHistoryFields(entry, reader);
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
        visitHistoryFields(*entry, writer);
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
