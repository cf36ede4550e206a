#include "MemoryCheck.h"

#include <QFile>
#include <tarnwick/base/Error.h>

namespace conversion {

using namespace Qt::StringLiterals;

std::optional<qint64> freeMemory()
{
    QFile file(u"/proc/meminfo"_s);
    if (!file.open(QFile::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.readAll();
    static constexpr QByteArrayView kName = "MemAvailable:";
    const qsizetype place = content.indexOf(kName);
    if (place < 0)
        return std::nullopt;
    const qsizetype number = place + kName.size();
    const QByteArray kilobytes = content.mid(number, content.indexOf("kB", number) - number).trimmed();
    bool isNumber = false;
    const qint64 free = kilobytes.toLongLong(&isNumber) * 1024;
    return isNumber ? std::optional(free) : std::nullopt;
}

void requireMemory(const QString &file, qint64 bytes, const QString &work)
{
    constexpr double kGigabyte = 1e9;
    const std::optional<qint64> free = freeMemory();
    if (free && bytes > *free) {
        const auto gigabytes = [](qint64 number) { return QString::number(double(number) / kGigabyte, 'f', 1); };
        throw tarnwick::FileError(
            file, 0,
            u"is too large for this computer. %1 needs about %2 GB of memory, and %3 GB are free. "
            u"Divide the file."_s.arg(work, gigabytes(bytes), gigabytes(*free)));
    }
}

} // namespace conversion
