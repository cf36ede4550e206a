#pragma once
#include "ReportEntry.h"
#include "RowFields.h"

namespace brannock {

/// When a field of a report entry is stored in table 'report'. Report files hold all fields of every entry.
enum class StoredWhen {
    Always,
    NotNdd,         ///< the channel, without its white space
    Measured,       ///< not "NDD", and there is a measurement
    MeasuredAndPos, ///< the same, and the value is above 0
    Located,        ///< not "NDD", and the location names a landmark
    LocatedFrom,    ///< the same of the from-location
    LocatedTo,      ///< the same of the to-location
    InFilesOnly     ///< the table has no such column
};

/// True if a field with this rule is stored for the entry. MeasuredAndPos counts as Measured; the caller tests the
/// value.
inline bool isStored(const ReportEntry &entry, StoredWhen when)
{
    switch (when) {
    case StoredWhen::Always:
        return true;
    case StoredWhen::NotNdd:
        return !entry.isNdd();
    case StoredWhen::Measured:
    case StoredWhen::MeasuredAndPos:
        return !entry.isNdd() && entry.meas.isValid();
    case StoredWhen::Located:
        return !entry.isNdd() && entry.location.isValid();
    case StoredWhen::LocatedFrom:
        return !entry.isNdd() && entry.from.isValid();
    case StoredWhen::LocatedTo:
        return !entry.isNdd() && entry.to.isValid();
    case StoredWhen::InFilesOnly:
        break;
    }
    return false;
}

/// The fields of a report entry, for everything that reads, writes or lists them: name, value, range of the numbers,
/// and the rule by which table 'report' stores them. In report files the columns are in this order, after kind and
/// header. A visitor has field() and sparse() (see RowFields.h) and stored(StoredWhen), which holds for the fields that
/// follow.
template <typename Entry, typename Visitor>
void visitReportFields(Entry &entry, Visitor &visit)
{
    visit.stored(StoredWhen::Always);
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
    visit.stored(StoredWhen::NotNdd);
    visit.field(u"chan", entry.channel);
    visit.stored(StoredWhen::Measured);
    visit.field(u"meas_type", entry.meas.type);
    visit.sparse(u"volts", entry.meas.volts);
    visit.sparse(u"dig_volts", entry.meas.digVolts, kSigned32);
    visit.sparse(u"phase", entry.meas.phase);
    visit.stored(StoredWhen::MeasuredAndPos);
    visit.sparse(u"pcnt", entry.meas.percent, kSigned16);
    visit.stored(StoredWhen::Always);
    visit.field(u"defect", entry.defect);
    visit.stored(StoredWhen::Located);
    visit.field(u"loc_land", entry.location.landmark);
    visit.sparse(u"loc_off", entry.location.offset);
    visit.sparse(u"loc_pnt", entry.location.point, kSigned32);
    visit.sparse(u"loc_dist", entry.location.dist);
    visit.stored(StoredWhen::LocatedFrom);
    visit.field(u"from_land", entry.from.landmark);
    visit.sparse(u"from_off", entry.from.offset);
    visit.sparse(u"from_pnt", entry.from.point, kSigned32);
    visit.stored(StoredWhen::InFilesOnly);
    visit.sparse(u"from_dist", entry.from.dist);
    visit.stored(StoredWhen::LocatedTo);
    visit.field(u"to_land", entry.to.landmark);
    visit.sparse(u"to_off", entry.to.offset);
    visit.sparse(u"to_pnt", entry.to.point, kSigned32);
    visit.stored(StoredWhen::InFilesOnly);
    visit.sparse(u"to_dist", entry.to.dist);
    visit.stored(StoredWhen::Always);
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
    visit.stored(StoredWhen::InFilesOnly);
    visit.field(u"site_name", entry.site.siteName);
    visit.field(u"unit", entry.site.unit);
    visit.field(u"comp_name", entry.site.compName);
    visit.field(u"model", entry.site.model);
}

} // namespace brannock
