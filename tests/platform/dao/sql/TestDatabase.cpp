#include "TestDatabase.h"

#include <dao/Recordset.h>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>

#include <stdexcept>

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::Value;

namespace {

// The files of statements name errors by their numbers, those of cells like all others.
QString cellText(const Value &value, DataType type)
{
    if (value.isNull())
        return u"Null"_s;
    if (value.isError())
        dao::raise(int(value.integer()), u"DAO.Database"_s);
    switch (type) {
    case DataType::Date:
        return dao::generalDateText(value.real());
    case DataType::Single:
        return dao::singleText(value.real());
    case DataType::LongBinary:
    case DataType::Binary:
        return u"<binary>"_s;
    case DataType::Boolean:
    case DataType::Currency:
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        return dao::convertValue(value, DataType::Text).text();
    default:
        return dao::numberText(value.real());
    }
}

QList<QStringList> rowsOf(dao::Recordset &set)
{
    QList<QStringList> rows;
    for (; !set.isEof(); set.moveNext()) {
        QStringList row;
        for (int i = 0; i < set.fieldCount(); ++i)
            row.append(cellText(set.value(i), set.field(i).type));
        rows.append(row);
    }
    return rows;
}

} // namespace

TestDatabase::TestDatabase()
{
    database.create(folder.filePath(u"test.mdb"_s), {});
}

TestDatabase::Result TestDatabase::run(const QString &sql, const Parameters &parameters)
{
    Result result;
    dao::QueryDef query(database, sql);
    for (const auto &[name, value] : parameters)
        query.setParameter(name, value);
    if (!query.returnsRows()) {
        result.affected = query.execute();
        return result;
    }
    const auto &plan = std::get<dao::sql::SelectPlan>(query.compiled().plan);
    result.whyNot = plan.whyNot;
    result.keyed = plan.keyed;
    dao::Recordset set(database);
    set.open(dao::Recordset::Type::Snapshot, query);
    for (int i = 0; i < set.fieldCount(); ++i)
        result.columns.append(set.column(i));
    result.rows = rowsOf(set);
    set.open(dao::Recordset::Type::Dynaset, query);
    if (rowsOf(set) != result.rows)
        throw std::runtime_error("a dynaset has other rows than a snapshot: " + sql.toStdString());
    return result;
}
