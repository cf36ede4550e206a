#include "StoredQueries.h"

namespace db {

void storeQueryDef(dao::Database &database, const QString &name, const QString &sql)
{
    if (database.hasQuery(name))
        database.setQuerySql(name, sql);
    else
        database.createQuery({name, sql});
}

bool isViewName(QStringView name)
{
    return name.endsWith(u'#');
}

QStringList storedQueryNames(const dao::Database &database)
{
    QStringList names;
    for (const QString &name : database.queryNames())
        if (!isViewName(name) && !name.startsWith(u'~'))
            names.append(name);
    return names;
}

} // namespace db
