#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

using namespace Qt::StringLiterals;

namespace dao::sql::generate {

using namespace bound;

//     TRANSFORM Count(*) SELECT a FROM t GROUP BY a PIVOT b
//     SELECT coalesce(jet_as_text(_p), '<>'), quote(_p) FROM (SELECT DISTINCT _s1."b" AS _p FROM "t" AS _s1) ORDER BY
//         _p
//     SELECT _s1."a" FROM "t" AS _s1 GROUP BY _s1."a"
SelectPlan Generator::transform(const Transform &transform)
{
    SelectPlan plan;
    plan.whyNot = NotUpdatable::Crosstab;
    Query query;
    query.parts.push_back({transform.select, nullptr, false});
    if (m_keepsFailures)
        show(query);
    planColumns(plan, query);
    const Select &select = *transform.select;
    if (!transform.cell) {
        plan.fullSql = queryText(query, Shape::Plain);
        return plan;
    }
    markGrouped(select);
    CrosstabPlan crosstab;
    const auto cellValue = [&] { return value(*transform.cell).text; };
    const bool keeps = m_keepsFailures && mayFail(*transform.cell);
    crosstab.cell = (keeps ? noting(cellValue) : cellValue()).split(kHeadingMark);
    planRows(crosstab, select);
    crosstab.cellInfo = outputInfo({}, *transform.cell);

    // The distinct values of the pivot, as names and as SQLite literals.
    Select values;
    values.from = select.from;
    values.where = select.where;
    m_usesParameters = false;
    const QString pivot = sortable(*transform.pivot);
    const QString cell = u"_p"_s;
    const QString function = transform.pivot->type == DataType::Date     ? u"as_text_date"_s
                             : transform.pivot->type == DataType::Single ? u"as_text_single"_s
                                                                         : u"as_text"_s;
    crosstab.valuesSql = u"SELECT coalesce("_s + call(function, cell).text + u", '<>'), quote("_s + cell +
                         u") FROM (SELECT DISTINCT "_s + pivot + u" AS "_s + cell + fromToHaving(values) +
                         u") ORDER BY "_s + cell;
    crosstab.valuesNeedParameters = m_usesParameters;
    plan.crosstab = crosstab;
    return plan;
}

// The select of the rows, split where the cells of the headings are inserted.
void Generator::planRows(CrosstabPlan &plan, const Select &select)
{
    const QStringList cells = cellsOf(select, Shape::Plain);
    if (select.top && !select.order.empty()) {
        const Ranked ranked = rankedText(select, cells);
        plan.names = ranked.names;
        plan.head = ranked.cells;
        plan.tail = ranked.rest;
        return;
    }
    plan.head = u"SELECT "_s + cells.join(u", ");
    const QStringList order = orderOf(select, Shape::Plain);
    plan.tail = fromToHaving(select) + (order.isEmpty() ? QString() : QString(u" ORDER BY "_s + order.join(u", "))) +
                limitText(select, cells);
}

} // namespace dao::sql::generate
