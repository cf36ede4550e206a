#include "QueryPrinter.h"

using namespace Qt::StringLiterals;

namespace dao::sql::ast {

void QueryPrinter::print(const Expr &expr)
{
    std::visit([this](const auto &node) { print(node); }, expr.node);
}

void QueryPrinter::print(const Literal &node)
{
    text += literalText(node.value);
}

void QueryPrinter::print(const Name &node)
{
    text += nameText(node);
}

void QueryPrinter::print(const ImpliedField &)
{
}

void QueryPrinter::print(const Unary &node)
{
    if (node.op == UnaryOp::Not) {
        text += u"Not "_s;
        operand(*node.operand, Rank::Not);
        return;
    }
    text += node.op == UnaryOp::Minus ? u'-' : u'+';
    // Two adjacent minus signs are a comment in other SQL systems; our lexer refuses them.
    const Unary *inner = node.operand->as<Unary>();
    if (inner && inner->op == UnaryOp::Minus)
        text += u' ';
    operand(*node.operand, Rank::Sign);
}

void QueryPrinter::print(const Binary &node)
{
    const Rank rank = rankOf(node.op);
    // All binary operators are left-associative.
    if (!node.left->as<ImpliedField>()) {
        operand(*node.left, rank);
        text += u' ';
    }
    text += operatorText(node.op);
    text += u' ';
    // Comparisons are not associative: one on the right side needs parentheses.
    operand(*node.right, above(rank));
}

void QueryPrinter::print(const Chain &node)
{
    const Rank rank = node.isAnd ? Rank::And : Rank::Or;
    list(
        node.terms, [&](const ExprPtr &term) { operand(*term, above(rank)); }, node.isAnd ? u" And " : u" Or ");
}

// A function whose name is a keyword needs brackets where the keyword would be parsed.
void QueryPrinter::print(const Call &node)
{
    const Keyword keyword = keywordOf(node.name);
    const bool doubtful = keyword != Keyword::None && keyword != Keyword::Left && keyword != Keyword::Right;
    if (doubtful)
        text += u'(';
    text += node.name + u'(';
    if (node.star)
        text += u'*';
    expressions(node.arguments);
    text += doubtful ? u"))"_s : u")"_s;
}

void QueryPrinter::comparedWith(const Expr &expr, bool negated, QStringView word)
{
    if (!expr.as<ImpliedField>()) {
        operand(expr, Rank::Comparison);
        text += u' ';
    }
    if (negated)
        text += u"Not "_s;
    text += word;
}

void QueryPrinter::print(const Between &node)
{
    comparedWith(*node.operand, node.negated, u"Between ");
    operand(*node.low, Rank::Concatenation);
    text += u" And "_s;
    operand(*node.high, Rank::Concatenation);
}

void QueryPrinter::print(const InList &node)
{
    comparedWith(*node.operand, node.negated, u"In (");
    expressions(node.items);
    text += u')';
}

void QueryPrinter::print(const InQuery &node)
{
    comparedWith(*node.operand, node.negated, u"In ");
    nested(*node.query);
}

void QueryPrinter::print(const IsNull &node)
{
    comparedWith(*node.operand, false, node.negated ? u"Is Not Null" : u"Is Null");
}

void QueryPrinter::print(const Exists &node)
{
    text += u"Exists "_s;
    nested(*node.query);
}

void QueryPrinter::print(const Quantified &node)
{
    comparedWith(*node.operand, false, operatorText(node.op));
    text += node.all ? u" ALL "_s : u" ANY "_s;
    nested(*node.query);
}

void QueryPrinter::print(const ScalarQuery &node)
{
    nested(*node.query);
}

void QueryPrinter::nested(const Query &query)
{
    text += u'(';
    ++m_nesting;
    print(query);
    --m_nesting;
    text += u')';
}

// Starts a clause with its keyword.
void QueryPrinter::clause(QStringView word)
{
    text += m_nesting == 0 ? u'\n' : u' ';
    text += word;
}

void QueryPrinter::print(const QueryPtr &query)
{
    print(*query);
}

void QueryPrinter::print(const Query &query)
{
    bool first = true;
    for (const QueryPart &part : query.parts) {
        if (!first)
            clause(part.all ? u"UNION ALL " : u"UNION ");
        first = false;
        if (part.select)
            print(*part.select);
        else if (part.nested)
            nested(*part.nested);
        else
            text += u"TABLE "_s + nameText(part.table->name);
    }
    orderBy(query.orderBy);
}

void QueryPrinter::print(const Select &select)
{
    text += u"SELECT "_s;
    if (select.duplicates != Duplicates::Keep)
        text += select.duplicates == Duplicates::Distinct ? u"DISTINCT "_s : u"DISTINCTROW "_s;
    if (select.top)
        text +=
            u"TOP "_s + QString::number(qint64(select.top->count)) + (select.top->percent ? u" PERCENT "_s : u" "_s);
    list(select.items, [this](const SelectItem &item) { print(item); });
    if (select.into)
        text += u" INTO "_s + nameText(select.into->name);
    from(select.from);
    where(select.where);
    if (!select.groupBy.empty()) {
        clause(u"GROUP BY ");
        expressions(select.groupBy);
    }
    if (select.having) {
        clause(u"HAVING ");
        print(*select.having);
    }
    orderBy(select.orderBy);
}

void QueryPrinter::print(const SelectItem &item)
{
    if (item.isStar()) {
        text += item.starQualifier.isEmpty() ? u"*"_s : QString(nameText(item.starQualifier) + u".*");
        return;
    }
    print(*item.expr);
    if (!item.alias.isEmpty())
        text += u" AS "_s + nameText(item.alias);
}

void QueryPrinter::from(const std::vector<TableRefPtr> &tables)
{
    if (tables.empty())
        return;
    clause(u"FROM ");
    list(tables, [this](const TableRefPtr &table) { print(*table); });
}

void QueryPrinter::where(const ExprPtr &condition)
{
    if (!condition)
        return;
    clause(u"WHERE ");
    print(*condition);
}

void QueryPrinter::orderBy(const std::vector<OrderItem> &items)
{
    if (items.empty())
        return;
    clause(u"ORDER BY ");
    list(items, [this](const OrderItem &item) {
        print(*item.expr);
        if (item.descending)
            text += u" DESC"_s;
    });
}

void QueryPrinter::print(const TableRef &table)
{
    if (const NamedTable *named = std::get_if<NamedTable>(&table.node))
        text += nameText(named->name);
    else if (const DerivedTable *derived = std::get_if<DerivedTable>(&table.node))
        nested(*derived->query);
    else
        print(std::get<Join>(table.node));
    if (!table.alias.isEmpty())
        text += u" AS "_s + nameText(table.alias);
}

void QueryPrinter::print(const Join &join)
{
    const auto side = [this](const TableRef &table) {
        if (std::holds_alternative<Join>(table.node))
            parenthesised(table);
        else
            print(table);
    };
    side(*join.left);
    text += join.kind == JoinKind::Inner  ? u" INNER JOIN "_s
            : join.kind == JoinKind::Left ? u" LEFT JOIN "_s
                                          : u" RIGHT JOIN "_s;
    side(*join.right);
    text += u" ON "_s;
    print(*join.on);
}

void QueryPrinter::print(const Transform &transform)
{
    text += u"TRANSFORM "_s;
    print(*transform.value);
    if (!transform.valueAlias.isEmpty())
        text += u" AS "_s + nameText(transform.valueAlias);
    text += u'\n';
    print(transform.select);
    clause(u"PIVOT ");
    operand(*transform.pivot, Rank::Concatenation);
    if (transform.headings.empty())
        return;
    text += u" IN ("_s;
    expressions(transform.headings);
    text += u')';
}

} // namespace dao::sql::ast
