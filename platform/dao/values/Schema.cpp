#include "Schema.h"

namespace dao {
namespace {

template <typename List>
qsizetype indexOfName(const List &list, QStringView name)
{
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (name.compare(list[i].name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

} // namespace

int TableInfo::indexOf(QStringView fieldName) const
{
    return int(indexOfName(fields, fieldName));
}

const FieldInfo *TableInfo::field(QStringView fieldName) const
{
    const qsizetype found = indexOfName(fields, fieldName);
    return found < 0 ? nullptr : &fields[found];
}

const IndexInfo *TableInfo::index(QStringView indexName) const
{
    const qsizetype found = indexOfName(indexes, indexName);
    return found < 0 ? nullptr : &indexes[found];
}

} // namespace dao
