#include "Compiled.h"

using namespace Qt::StringLiterals;

namespace dao::sql {

QString notUpdatableText(NotUpdatable reason)
{
    switch (reason) {
    case NotUpdatable::No:
        return {};
    case NotUpdatable::Distinct:
        return u"The query shows each different row once (DISTINCT)."_s;
    case NotUpdatable::Grouped:
        return u"The query shows groups of rows (GROUP BY)."_s;
    case NotUpdatable::Aggregate:
        return u"The query shows one total of many rows."_s;
    case NotUpdatable::Union:
        return u"The query is a union of several."_s;
    case NotUpdatable::Crosstab:
        return u"The query is a cross table."_s;
    case NotUpdatable::CommaJoin:
        return u"The query combines tables without a JOIN."_s;
    case NotUpdatable::NoTable:
        return u"The query reads no table."_s;
    case NotUpdatable::SubqueryColumn:
        return u"A column of the query is itself a query."_s;
    case NotUpdatable::NestedQuery:
        return u"The query reads another query whose rows cannot be changed."_s;
    case NotUpdatable::ReadOnlyDatabase:
        return u"The database is open for reading only."_s;
    case NotUpdatable::ManyToMany:
        return u"The query joins tables over fields that are unique on neither side."_s;
    }
    return {};
}

} // namespace dao::sql
