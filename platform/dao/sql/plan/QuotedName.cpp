#include "QuotedName.h"

using namespace Qt::StringLiterals;

namespace dao::sql {

namespace {

/// Doubles the quotes in a name.
QString escaped(QStringView name)
{
    return name.toString().replace(u"\""_s, u"\"\""_s);
}

} // namespace

QString quotedName(QStringView name)
{
    return name.contains(u'"') ? QString(u'"' + escaped(name) + u'"') : QString(u'"' + name + u'"');
}

QString qualifiedName(QStringView source, QStringView name)
{
    return name.contains(u'"') ? QString(source + u".\"" + escaped(name) + u'"')
                               : QString(source + u".\"" + name + u'"');
}

} // namespace dao::sql
