#include "Cal.h"

#include <db/FieldAccess.h>
#include <db/SqlText.h>

namespace results {

using brannock::ReportEntry;

Cal Cal::of(const ReportEntry &entry)
{
    return {entry.site.siteCode, entry.site.compCode, entry.operType, entry.outage, entry.sec, entry.calNumber};
}

bool Cal::isValid() const
{
    return !siteCode.isEmpty() && !comp.isEmpty() && !operType.isEmpty() && !outage.isEmpty() && sec >= 0 && calNum > 0;
}

bool belongsTo(const ReportEntry &entry, const Cal &cal)
{
    return entry.calNumber == cal.calNum && entry.sec == cal.sec && entry.site.siteCode == cal.siteCode &&
           entry.site.compCode == cal.comp && entry.operType == cal.operType && entry.outage == cal.outage;
}

qint64 countCalRows(dao::Database &database, const Cal &cal)
{
    const QString sql = db::sqlText(u"SELECT COUNT(cal_num)\nFROM report\nWHERE site_code = '%S'\nAND comp = '%S'\n"
                                    u"AND oper_type = '%S'\nAND outage = '%S'\nAND sec = %d\nAND cal_num = %d\n",
                                    cal.siteCode, cal.comp, cal.operType, cal.outage, cal.sec, cal.calNum);
    return db::fieldAs<qint32>(db::firstValue(database, sql));
}

int deleteCalRows(dao::Database &database, const Cal &cal)
{
    return db::executeSql(database,
                          db::sqlText(u"DELETE FROM report\nWHERE site_code = '%S'\nAND comp = '%S'\n"
                                      u"AND oper_type = '%S'\nAND outage = '%S'\nAND sec = %d\nAND cal_num = %d",
                                      cal.siteCode, cal.comp, cal.operType, cal.outage, cal.sec, cal.calNum));
}

} // namespace results
