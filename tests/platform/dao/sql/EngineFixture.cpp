#include "EngineFixture.h"

#include <dao/values/CellFailure.h>

using namespace Qt::StringLiterals;

EngineTest::EngineTest()
{
    m_database.create(m_folder.filePath(u"test.mdb"_s), u";LANGID=0x0409;CP=1252;COUNTRY=0"_s);
    m_database.execute(u"CREATE TABLE sales (id COUNTER PRIMARY KEY, who TEXT(20), area TEXT(20), amount CURRENCY)"_s);
    for (const QString &sale : {u"'Ann', 'North', 10"_s, u"'Ann', 'South', 5"_s, u"'Bob', 'North', 7.25"_s})
        m_database.execute(u"INSERT INTO sales (who, area, amount) VALUES (%1)"_s.arg(sale));
}

QString EngineTest::rows(const QString &sql, dao::Recordset::Type type)
{
    dao::Recordset set(m_database);
    set.open(type, sql);
    QStringList names;
    for (int i = 0; i < set.fieldCount(); ++i)
        names.append(set.field(i).name);
    QStringList lines{names.join(u'|')};
    for (; !set.isEof(); set.moveNext()) {
        QStringList cells;
        for (int i = 0; i < set.fieldCount(); ++i)
            cells.append(set.value(i).isNull()    ? u"-"_s
                         : set.value(i).isError() ? dao::failureWord(int(set.value(i).integer()))
                                                  : dao::convertValue(set.value(i), dao::DataType::Text).text());
        lines.append(cells.join(u'|'));
    }
    return lines.join(u'\n');
}

int EngineTest::errorOf(const QString &sql)
{
    try {
        rows(sql);
    } catch (const dao::DaoException &exception) {
        return exception.number();
    }
    return 0;
}
