#pragma once
#include "PrintText.h"

namespace dao::sql::ast {

/// Prints expressions and queries, which contain each other: one function per kind of node, as the parser has one per
/// production. All functions append to one text.
class QueryPrinter
{
public:
    QString text;

    void print(const Expr &expr);

protected:
    template <typename Items, typename PrintOne>
    void list(const Items &items, PrintOne printOne, QStringView between = u", ")
    {
        bool first = true;
        for (const auto &item : items) {
            if (!first)
                text += between;
            first = false;
            printOne(item);
        }
    }

    void names(const std::vector<NameAt> &items)
    {
        text += u'(';
        list(items, [this](const NameAt &name) { text += nameText(name.name); });
        text += u')';
    }

    void expressions(const std::vector<ExprPtr> &items)
    {
        list(items, [this](const ExprPtr &item) { print(*item); });
    }

    void parenthesised(const auto &node)
    {
        text += u'(';
        print(node);
        text += u')';
    }

    /// Prints an operand; in parentheses if its rank is lower than required.
    void operand(const Expr &expr, Rank rank)
    {
        if (rankOf(expr) < rank)
            parenthesised(expr);
        else
            print(expr);
    }

    static Rank above(Rank rank) { return Rank(int(rank) + 1); }

    // Expressions
    void print(const Literal &node);
    void print(const Name &node);
    void print(const ImpliedField &);
    void print(const Unary &node);
    void print(const Binary &node);
    void print(const Chain &node);
    void print(const Call &node);
    void comparedWith(const Expr &expr, bool negated, QStringView word);
    void print(const Between &node);
    void print(const InList &node);
    void print(const InQuery &node);
    void print(const IsNull &node);
    void print(const Exists &node);
    void print(const Quantified &node);
    void print(const ScalarQuery &node);

    // Queries
    void nested(const Query &query);
    /// Starts a clause with its keyword.
    void clause(QStringView word);
    void print(const QueryPtr &query);
    void print(const Query &query);
    void print(const Select &select);
    void print(const SelectItem &item);
    void from(const std::vector<TableRefPtr> &tables);
    void where(const ExprPtr &condition);
    void orderBy(const std::vector<OrderItem> &items);
    void print(const TableRef &table);
    void print(const Join &join);
    void print(const Transform &transform);

private:
    int m_nesting = 0; ///< of queries in parentheses: only the clauses of the outermost query begin on a new line
};

} // namespace dao::sql::ast
