#include "Compiled.h"

#include <dao/values/Errors.h>

using namespace Qt::StringLiterals;

namespace dao::sql {

SelectPlan withHeadings(const SelectPlan &plan, const QList<CrosstabHeading> &headings)
{
    SelectPlan complete = plan;
    const CrosstabPlan &crosstab = *plan.crosstab;
    const qsizetype count = plan.columns.size() + headings.size();
    if (count > kMaxCrosstabColumns)
        raise(error::TooManyCrosstabColumns, u"DAO.Database"_s, {QString::number(count)});
    QString names = crosstab.names;
    QString cells = crosstab.head;
    for (qsizetype i = 0; i < headings.size(); ++i) {
        const CrosstabHeading &heading = headings[i];
        cells += u", "_s + crosstab.cell.join(heading.valueSql);
        if (!names.isEmpty()) {
            const QString name = u"_h"_s + QString::number(i);
            cells += u" AS "_s + name;
            names += u", "_s + name;
        }
        Column column;
        column.info = crosstab.cellInfo;
        column.info.name = heading.name;
        column.info.ordinal = int(complete.columns.size());
        complete.columns.append(column);
    }
    complete.fullSql = names + cells + crosstab.tail;
    complete.crosstab.reset();
    return complete;
}

} // namespace dao::sql
