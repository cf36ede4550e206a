#include "Memory.h"

#include <malloc.h>
#include <QFile>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

/// A line of /proc/self/status, in bytes (the file uses KiB).
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

qint64 residentBytes()
{
    malloc_trim(0); // returns freed memory to the system
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
