#pragma once
#include "RowFields.h"

namespace brannock {

/// The fields of a history entry, for everything that reads, writes or converts them: name, value, range of the
/// numbers. The names are those of table 'report', too, except for to_dist and edited, which only files have; in files
/// the columns are in this order. Left and Right are two forms of an entry, such as HistoryEntry and a compact one: the
/// visitor gets the field of both. sparse(): zero means "not measured".
template <typename Left, typename Right, typename Visitor>
void visitHistoryFields(Left &left, Right &right, Visitor &visit)
{
    visit.field(u"sec", left.sec, right.sec, kSigned16);
    visit.field(u"row", left.row, right.row, kSigned16);
    visit.field(u"col", left.col, right.col, kSigned16);
    visit.field(u"outage", left.outage, right.outage);
    visit.field(u"defect", left.defect, right.defect);
    visit.field(u"chan", left.channel, right.channel);
    visit.sparse(u"volts", left.volts, right.volts);
    visit.sparse(u"phase", left.phase, right.phase);
    visit.sparse(u"pcnt", left.percent, right.percent, kSigned16);
    visit.field(u"loc_land", left.location.landmark, right.location.landmark);
    visit.sparse(u"loc_off", left.location.offset, right.location.offset);
    visit.sparse(u"loc_pnt", left.location.point, right.location.point, kSigned32);
    visit.sparse(u"loc_dist", left.location.dist, right.location.dist);
    visit.field(u"to_land", left.to.landmark, right.to.landmark);
    visit.sparse(u"to_off", left.to.offset, right.to.offset);
    visit.sparse(u"to_pnt", left.to.point, right.to.point, kSigned32);
    visit.sparse(u"to_dist", left.to.dist, right.to.dist);
    visit.field(u"cal_num", left.calNumber, right.calNumber, kUnsigned16);
    visit.field(u"leg", left.leg, right.leg, kSigned16);
    visit.field(u"beg_test", left.beginTest, right.beginTest);
    visit.field(u"end_test", left.endTest, right.endTest);
    visit.sparse(u"probe_size", left.probeSize, right.probeSize, kSigned16);
    visit.field(u"probe_model", left.probeModel, right.probeModel);
    visit.field(u"analyst_id", left.analystId, right.analystId);
    visit.field(u"oper_id", left.operatorId, right.operatorId);
    visit.field(u"entry_time", left.entryTime, right.entryTime);
    visit.field(u"edited", left.edited, right.edited);
}

/// Passes the fields of one entry to a visitor of the kind that RowFields.h describes.
template <typename Visitor>
class OneEntry
{
public:
    explicit OneEntry(Visitor &visit)
        : m_visit(visit)
    {
    }
    template <typename T, typename... Range>
    void field(QStringView name, T &value, T &, Range... range)
    {
        m_visit.field(name, value, range...);
    }
    template <typename T, typename... Range>
    void sparse(QStringView name, T &value, T &, Range... range)
    {
        m_visit.sparse(name, value, range...);
    }

private:
    Visitor &m_visit;
};

template <typename Entry, typename Visitor>
void visitHistoryFields(Entry &entry, Visitor &visit)
{
    OneEntry<Visitor> one(visit);
    visitHistoryFields(entry, entry, one);
}

} // namespace brannock
