#include "Figures.h"

#include <bench/ReportTable.h>

#include <malloc.h>
#include <QFile>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

/// A line of /proc/self/status, which counts in kibibytes.
qint64 statusBytes(const QByteArray &name)
{
    constexpr qint64 kKibibyte = 1024;
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(name))
            return line.mid(name.size()).trimmed().split(' ').first().toLongLong() * kKibibyte;
    }
    return 0;
}

} // namespace

const QString kHistorySql = u"SELECT *\nFROM report\n"
                            u"ORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC"_s;
const QString kCalListSql = u"SELECT COUNT(*), site_code, comp, outage, cal_num, oper_type, sec\nFROM report\n"
                            u"GROUP BY site_code, comp, outage, cal_num, oper_type, sec\n"
                            u"ORDER BY site_code, comp, outage, cal_num, oper_type, sec"_s;

Opened::Opened(qint64 rows)
    : Opened(reportDatabase(rows))
{
}

Opened::Opened(const QString &path)
    : plain(path)
{
    database.open(path, dao::OpenMode::ReadOnly);
}

qint64 readRow(const dao::Recordset &rows)
{
    qint64 sum = 0;
    const int fields = rows.fieldCount();
    for (int i = 0; i < fields; ++i) {
        const dao::Value value = rows.value(i);
        sum += value.type() == dao::Value::Type::Text ? value.text().size() : qint64(value.real());
    }
    return sum;
}

qint64 residentBytes()
{
    malloc_trim(0); // what was given back is not held
    return statusBytes("VmRSS:");
}

qint64 peakBytes()
{
    return statusBytes("VmHWM:");
}

void resetPeak()
{
    QFile references(u"/proc/self/clear_refs"_s);
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
}

} // namespace bench
