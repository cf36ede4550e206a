#include "TubeListing.h"

#include "Messages.h"

#include <dao/Recordset.h>
#include <db/ReportRows.h>
#include <tarnwick/Failures.h>
#include <tarnwick/Format.h>

namespace query {

using namespace Qt::StringLiterals;
using ellery::Axis;

tarnwick::JMacro tubeMacros(const ellery::SteamGen &steamGen, const ellery::TubeAddress &tube)
{
    tarnwick::JMacro macros;
    const auto set = [&](const QString &name, Axis axis, int number) {
        // The label stands in a text of SQL: an apostrophe in it is doubled.
        const QString label = steamGen.tubeLabel(axis, number).replace(u'\'', u"''"_s);
        macros.set(u'[' + name + u']', QString::number(number));
        macros.set(u'[' + name + u"#]"_s, u'\'' + label + u'\'');
    };
    set(u"ROW"_s, Axis::Row, tube.row);
    set(u"COL"_s, Axis::Col, tube.col);
    set(u"SEC"_s, Axis::Sec, tube.sec);
    return macros;
}

QList<TubeListing> tubeListings(const ArvoOptions &options, const ellery::SteamGen &steamGen,
                                const ellery::TubeAddress &tube)
{
    QList<TubeListing> listings{
        {u"Report"_s, tarnwick::format(u"SELECT *\nFROM report\nWHERE sec=%d\nAND row=%d\nAND col=%d\n"
                                       "ORDER BY outage,sec,row,col",
                                       int(tube.sec), int(tube.row), int(tube.col))}};
    const tarnwick::JMacro macros = tubeMacros(steamGen, tube);
    for (const ArvoOptions::TubeInfoTab &tab : options.tubeInfoTabs)
        listings.append({tab.name, macros.expand(tab.sql)});
    return listings;
}

bool readTubeReport(db::DatabaseSession &session, const QString &sql, brannock::Report &report)
{
    if (!db::checkConnected(session))
        return false;
    brannock::Report read;
    const auto readRows = [&] {
        dao::Recordset rows(session.database());
        rows.open(dao::Recordset::Type::Dynaset, sql);
        for (const db::ReportReader reader(rows); !rows.isEof(); rows.moveNext())
            read.entries.append(reader.read());
    };
    if (!tarnwick::attempt(session.prompts(), readRows, messages::kExecute))
        return false;
    report = read;
    return true;
}

QList<QStringList> indicationRows(const QList<brannock::TubeIndication> &indications)
{
    QList<QStringList> rows;
    for (const brannock::TubeIndication &each : indications) {
        const QString place =
            each.landmark.isEmpty() ? QString() : each.landmark + tarnwick::format(u" %+.2f", double(each.offset));
        rows.append({each.outage, each.defect, each.volts != 0 ? tarnwick::format(u"%.2f", each.volts) : QString(),
                     each.voltsGrowth ? tarnwick::format(u"%+.2f", *each.voltsGrowth) : QString(),
                     each.percent != 0 ? QString::number(each.percent) : QString(),
                     each.percentGrowth ? tarnwick::format(u"%+d", *each.percentGrowth) : QString(), place});
    }
    return rows;
}

tarnwick::JTablePrintArg tubePrintLayout(const TubeListing &listing, bool isReport)
{
    using Layout = tarnwick::JTablePrintArg;
    Layout layout = isReport ? Layout::forResults() : Layout();
    layout.title = listing.title;
    layout.sections[Layout::ReportHeader].text = tarnwick::format(u"%S\n\n%S", listing.title, listing.sql);
    layout.sections[Layout::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    return layout;
}

const QStringList &tubeReportFields()
{
    static const QStringList fields{u"file_name"_s,  u"outage"_s,      u"site_code"_s,  u"sec"_s,       u"cal_num"_s,
                                    u"comp"_s,       u"file_num"_s,    u"row"_s,        u"col"_s,       u"id"_s,
                                    u"chan"_s,       u"meas_type"_s,   u"volts"_s,      u"dig_volts"_s, u"phase"_s,
                                    u"pcnt"_s,       u"entry_time"_s,  u"defect"_s,     u"loc_land"_s,  u"loc_off"_s,
                                    u"loc_pnt"_s,    u"loc_dist"_s,    u"from_land"_s,  u"from_off"_s,  u"from_pnt"_s,
                                    u"to_land"_s,    u"to_off"_s,      u"to_pnt"_s,     u"beg_test"_s,  u"end_test"_s,
                                    u"probe_type"_s, u"probe_model"_s, u"probe_size"_s, u"probe_sn"_s,  u"oper_type"_s,
                                    u"analyst_id"_s, u"oper_id"_s};
    return fields;
}

} // namespace query
