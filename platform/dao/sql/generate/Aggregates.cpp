#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

#include <QScopeGuard>

using namespace Qt::StringLiterals;

// Count, Min, Max, Sum and Avg are SQLite's own; StDev, Var, First and Last are functions of this engine (see
// functions/Aggregates.cpp).

namespace dao::sql::generate {

using namespace bound;

//     SELECT First(c) AS x, Sum(a) AS y FROM t
//     SELECT jet_first(_s1."c", _s1."id"), sum(_s1."a") FROM "t" AS _s1
Generator::Piece Generator::valueOf(const Aggregate &node, const Expr &expr)
{
    const bool inCell = std::exchange(m_noting, false);
    const auto restore = qScopeGuard([this, inCell] { m_noting = inCell; });
    const QStringView name(node.function->name);
    const bool extreme = name == u"Min" || name == u"Max";
    const bool counts = name == u"Count";
    const bool native = extreme || counts || name == u"Sum" || name == u"Avg";
    QString list = !node.argument ? u"*"_s : extreme ? sortable(*node.argument) : value(*node.argument).text;
    // Computed integers can exceed the range of a field, and their sum 64 bits; the sum is calculated as a double.
    if (name == u"Sum" && node.argument->as<Arithmetic>() && isIntegerType(node.argument->type))
        list = u"1.0 * ("_s + list + u')';
    if (node.own && (node.namesOuter || m_inTestOfRows)) {
        if (!node.argument)
            list = u"1"_s;
        const QString column =
            node.own->table ? keyText(*node.own) : aliasOf(*node.own) + u'.' + m_target.columnPrefix + u'0';
        // CASE x WHEN NULL is never true but SQLite does not simplify it, so the aggregate keeps a reference to a
        // column of its own query.
        list = u"CASE "_s + column + u" WHEN NULL THEN NULL ELSE "_s + list + u" END"_s;
        if (extreme && node.argument && familyOf(node.argument->type) == Family::Text)
            list += m_target.caseless;
    }
    for (const Source *source : node.order)
        list += u", "_s + keyText(*source);
    m_pure = m_pure && native;
    QString text =
        (native ? QString() : m_target.functionPrefix.toString()) + name.toString().toLower() + u'(' + list + u')';
    if (node.filter) {
        const QString filter = u" FILTER (WHERE "_s + truth(*node.filter).text + u')';
        text += filter;
        // In a cross table Count of a cell without rows is Null; of a cell whose rows have no value it is 0.
        if (counts && node.argument)
            text = u"CASE WHEN count(*)"_s + filter + u" > 0 THEN "_s + text + u" END"_s;
        else if (counts)
            text = u"nullif("_s + text + u", 0)"_s;
    }
    const bool rounds = expr.type == DataType::Currency && native && !extreme;
    m_noting = inCell;
    return rounds ? call(u"to_currency", text) : Piece{text, rank::Primary};
}

} // namespace dao::sql::generate
