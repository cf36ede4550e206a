#include "FileHead.h"

#include <QFile>

namespace jet::wire {
namespace {

constexpr int kVersionAt = 0x14;

} // namespace

FileHead fileHead(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return FileHead::Unreadable;
    const QByteArray head = file.read(kVersionAt + 1);
    if (head.size() <= kVersionAt)
        return FileHead::Other;
    if (head.startsWith(QByteArrayLiteral("\0\1\0\0Standard ACE DB\0")))
        return FileHead::Newer;
    if (!head.startsWith(QByteArrayLiteral("\0\1\0\0Standard Jet DB\0")))
        return FileHead::Other;
    switch (head.at(kVersionAt)) {
    case 0:
        return FileHead::Jet3;
    case 1:
        return FileHead::Jet4;
    default:
        return FileHead::Newer;
    }
}

} // namespace jet::wire
