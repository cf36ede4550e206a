#include "SystemOption.h"

using namespace Qt::StringLiterals;

namespace brannock {

namespace {

constexpr int kVersion = 1;

QString comparable(const QString &path)
{
    QString text = path.toLower();
    text.replace(u'\\', u'/');
    while (text.endsWith(u'/') && text.size() > 1)
        text.chop(1);
    return text;
}

} // namespace

void addRecent(QStringList &list, const QString &entry, int limit)
{
    const QString wanted = comparable(entry);
    list.removeIf([&](const QString &other) { return comparable(other) == wanted; });
    list.prepend(entry);
    if (list.size() > limit)
        list.resize(limit);
}

SystemOption::SystemOption()
    : OptionFile(u"config\\system.opt"_s, u"System Options"_s, kVersion)
{
}

void SystemOption::serializeBody(tarnwick::JFile &file, int)
{
    file.serialize(recentProjects);
}

void SystemOption::resetToDefaults()
{
    recentProjects.clear();
}

} // namespace brannock
