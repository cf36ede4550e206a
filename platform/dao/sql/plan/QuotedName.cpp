#include "QuotedName.h"

using namespace Qt::StringLiterals;

namespace dao::sql {

QString quotedName(QStringView name)
{
    QString result = name.toString();
    result.replace(u"\""_s, u"\"\""_s);
    return u'"' + result + u'"';
}

} // namespace dao::sql
