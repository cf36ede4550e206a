#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

// A calculated cell of a result that fails does not cost the other rows: its functions note the failure, and the cell
// becomes that failure (see functions/Register.cpp). Conditions, sorting, grouping and changes end with the failure.
//     SELECT a / b FROM t
//     SELECT cell_end(cell_begin(), try_divide(_s1."a", _s1."b")) FROM "t" AS _s1 ORDER BY _s1."id"

namespace dao::sql::generate {

using namespace bound;

// Where values are compared, as for duplicates or an order, failures are not allowed: they would be compared as values.
bool Generator::keepsFailure(const Select &select, size_t index)
{
    const Expr &expr = *select.columns[index].expr;
    const bool isSafeField = expr.as<FieldRef>() && expr.type != DataType::Currency;
    if (!m_keepsFailures || select.distinct || isSafeField)
        return false;
    const auto known = m_kept.constFind({&select, index});
    if (known != m_kept.constEnd())
        return *known;
    const bool isKey =
        std::ranges::any_of(select.order, [&](const OrderKey &key) { return key.output == int(index); }) ||
        std::ranges::any_of(select.groupBy, [&](const ExprPtr &key) { return sameExpr(*key, expr); });
    const bool keeps = !isKey && mayFail(expr);
    m_kept.insert({&select, index}, keeps);
    return keeps;
}

bool Generator::keepsFailure(const Query &query, size_t index)
{
    if (const Select *select = query.singleSelect())
        return keepsFailure(*select, index);
    const bool compares = !query.order.empty() || std::ranges::any_of(query.parts, [&](const QueryPart &part) {
        return part.nested || (!part.all && &part != &query.parts.front());
    });
    return !compares &&
           std::ranges::any_of(query.parts, [&](const QueryPart &part) { return keepsFailure(*part.select, index); });
}

bool Generator::mayFail(const Expr &expr)
{
    return anyPart(expr, [this](const Expr &part) {
        if (const Output *output = part.as<Output>())
            return output->source->query && keepsFailure(*output->source->query, size_t(output->index));
        if (const ScalarQuery *scalar = part.as<ScalarQuery>())
            return !scalar->single || keepsFailure(*scalar->query, 0);
        const Convert *convert = part.as<Convert>();
        return part.as<Arithmetic>() || part.as<AddAny>() || part.as<Call>() || part.as<Like>() ||
               (convert && convert->conversion != Conversion::ToText) || part.type == DataType::Currency;
    });
}

bool Generator::callsOwn(const Expr &expr)
{
    if (const Output *output = expr.as<Output>())
        return output->source->query && keepsFailure(*output->source->query, size_t(output->index));
    if (const ScalarQuery *scalar = expr.as<ScalarQuery>())
        return !scalar->single;
    return expr.as<Arithmetic>() || expr.as<AddAny>() || expr.as<Concatenate>() || expr.as<Call>() || expr.as<Like>() ||
           expr.as<Convert>() || (expr.as<Aggregate>() && expr.type == DataType::Currency);
}

// The innermost failing expression ends the statement and reports its place. A cell keeps its failure.
Generator::Piece Generator::placed(const Expr &expr, Piece piece)
{
    if (!m_tellsPlaces || m_noting || expr.place.length == 0 || !callsOwn(expr))
        return piece;
    return {m_target.placing + u"(cell_begin(), "_s + QString::number(expr.place.start) + u", "_s +
                QString::number(expr.place.length) + u", "_s + piece.text + u')',
            rank::Primary};
}

QString Generator::reading(const Query &query)
{
    if (m_keepsFailures)
        show(query);
    return queryText(query, Shape::Plain);
}

QString Generator::reading(const Insert &insert)
{
    if (!insert.query)
        return u"SELECT "_s + arguments(insert.values);
    return insert.rows ? u"SELECT "_s + arguments(insert.converted) + u" FROM "_s + leafText(*insert.rows)
                       : queryText(*insert.query, Shape::Plain);
}

QString Generator::reading(const Update &update)
{
    markGrouped(*update.select);
    QStringList cells;
    for (const AssignedField &field : update.fields)
        cells.append(value(*field.value).text);
    return u"SELECT "_s + cells.join(u", ") + fromToHaving(*update.select);
}

QString Generator::reading(const Delete &statement)
{
    markGrouped(*statement.select);
    return u"SELECT 1"_s + fromToHaving(*statement.select);
}

void Generator::show(const Query &query)
{
    for (const QueryPart &part : query.parts) {
        bool keeps = part.select != nullptr;
        for (size_t i = 0; keeps && query.isUnion() && i < query.columns.size(); ++i)
            keeps = keepsFailure(query, i) || !mayFail(*part.select->columns[i].expr);
        if (keeps)
            m_shown.insert(part.select.get());
    }
}

QString Generator::cellText(const Select &select, size_t index, bool compares)
{
    const Expr &expr = *select.columns[index].expr;
    const auto plain = [&] { return compares ? sortable(expr) : value(expr).text; };
    if (!m_shown.contains(&select) || !keepsFailure(select, index))
        return plain();
    // Passed on unchanged.
    if (expr.as<Output>())
        return aliasOf(*expr.as<Output>()->source) + u'.' + m_target.columnPrefix +
               QString::number(expr.as<Output>()->index);
    QString text = noting(plain);
    if (compares && familyOf(expr.type) == Family::Text)
        text += m_target.caseless;
    return text;
}

QString Generator::noting(const std::function<QString()> &text)
{
    const QScopedValueRollback inCell(m_noting, true);
    return u"cell_end(cell_begin(), "_s + text() + u')';
}

} // namespace dao::sql::generate
