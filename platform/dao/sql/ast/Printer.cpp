#include "Printer.h"

#include "PrintText.h"

using namespace Qt::StringLiterals;

namespace dao::sql::ast {
namespace {

/// Appends to one text; one function per kind of node, as the parser has one per production.
class Printer
{
public:
    QString text;

    void print(const Statement &statement)
    {
        if (!statement.parameters.empty()) {
            text += u"PARAMETERS "_s;
            list(statement.parameters, [this](const ParameterDeclaration &p) { print(p); });
            text += u";\n"_s;
        }
        std::visit([this](const auto &node) { print(node); }, statement.node);
        // The text of a stored query extends to the end, so no semicolon follows.
        if (!std::holds_alternative<CreateQuery>(statement.node))
            text += u';';
    }

    void print(const Expr &expr)
    {
        std::visit([this](const auto &node) { print(node); }, expr.node);
    }

private:
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

    // ---- expressions --------------------------------------------------------------------------------------------

    void print(const Literal &node) { text += literalText(node.value); }
    void print(const Name &node) { text += nameText(node); }
    void print(const ImpliedField &) {}

    void print(const Unary &node)
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

    void print(const Binary &node)
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

    void print(const Chain &node)
    {
        const Rank rank = node.isAnd ? Rank::And : Rank::Or;
        list(
            node.terms, [&](const ExprPtr &term) { operand(*term, above(rank)); }, node.isAnd ? u" And " : u" Or ");
    }

    // A function whose name is a keyword needs brackets where the keyword would be parsed.
    void print(const Call &node)
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

    void comparedWith(const Expr &expr, bool negated, QStringView word)
    {
        if (!expr.as<ImpliedField>()) {
            operand(expr, Rank::Comparison);
            text += u' ';
        }
        if (negated)
            text += u"Not "_s;
        text += word;
    }

    void print(const Between &node)
    {
        comparedWith(*node.operand, node.negated, u"Between ");
        operand(*node.low, Rank::Concatenation);
        text += u" And "_s;
        operand(*node.high, Rank::Concatenation);
    }

    void print(const InList &node)
    {
        comparedWith(*node.operand, node.negated, u"In (");
        expressions(node.items);
        text += u')';
    }

    void print(const InQuery &node)
    {
        comparedWith(*node.operand, node.negated, u"In ");
        nested(*node.query);
    }

    void print(const IsNull &node) { comparedWith(*node.operand, false, node.negated ? u"Is Not Null" : u"Is Null"); }

    void print(const Exists &node)
    {
        text += u"Exists "_s;
        nested(*node.query);
    }

    void print(const Quantified &node)
    {
        comparedWith(*node.operand, false, operatorText(node.op));
        text += node.all ? u" ALL "_s : u" ANY "_s;
        nested(*node.query);
    }

    void print(const ScalarQuery &node) { nested(*node.query); }

    // ---- queries ------------------------------------------------------------------------------------------------

    void nested(const Query &query)
    {
        text += u'(';
        ++m_nesting;
        print(query);
        --m_nesting;
        text += u')';
    }

    /// Starts a clause with its keyword.
    void clause(QStringView word)
    {
        text += m_nesting == 0 ? u'\n' : u' ';
        text += word;
    }

    void print(const QueryPtr &query) { print(*query); }

    void print(const Query &query)
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

    void print(const Select &select)
    {
        text += u"SELECT "_s;
        if (select.duplicates != Duplicates::Keep)
            text += select.duplicates == Duplicates::Distinct ? u"DISTINCT "_s : u"DISTINCTROW "_s;
        if (select.top)
            text += u"TOP "_s + QString::number(qint64(select.top->count)) +
                    (select.top->percent ? u" PERCENT "_s : u" "_s);
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

    void print(const SelectItem &item)
    {
        if (item.isStar()) {
            text += item.starQualifier.isEmpty() ? u"*"_s : QString(nameText(item.starQualifier) + u".*");
            return;
        }
        print(*item.expr);
        if (!item.alias.isEmpty())
            text += u" AS "_s + nameText(item.alias);
    }

    void from(const std::vector<TableRefPtr> &tables)
    {
        if (tables.empty())
            return;
        clause(u"FROM ");
        list(tables, [this](const TableRefPtr &table) { print(*table); });
    }

    void where(const ExprPtr &condition)
    {
        if (!condition)
            return;
        clause(u"WHERE ");
        print(*condition);
    }

    void orderBy(const std::vector<OrderItem> &items)
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

    void print(const TableRef &table)
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

    void print(const Join &join)
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

    void print(const Transform &transform)
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

    // ---- statements that change rows ----------------------------------------------------------------------------

    void print(const Insert &insert)
    {
        text += u"INSERT INTO "_s + nameText(insert.table.name);
        if (!insert.columns.empty()) {
            text += u' ';
            names(insert.columns);
        }
        if (insert.query) {
            text += u'\n';
            print(*insert.query);
            return;
        }
        clause(u"VALUES (");
        expressions(insert.values);
        text += u')';
    }

    void print(const Update &update)
    {
        text += u"UPDATE "_s;
        list(update.from, [this](const TableRefPtr &table) { print(*table); });
        clause(u"SET ");
        list(update.assignments, [this](const Assignment &assignment) {
            print(*assignment.target);
            text += u" = "_s;
            print(*assignment.value);
        });
        where(update.where);
    }

    void print(const Delete &statement)
    {
        text += u"DELETE"_s;
        if (!statement.items.empty())
            text += u' ';
        list(statement.items, [this](const SelectItem &item) { print(item); });
        from(statement.from);
        where(statement.where);
    }

    void print(const Execute &execute)
    {
        text += u"EXECUTE "_s + nameText(execute.query.name);
        if (!execute.arguments.empty())
            text += u' ';
        expressions(execute.arguments);
    }

    // ---- definitions --------------------------------------------------------------------------------------------

    void print(const ParameterDeclaration &parameter)
    {
        text += nameText(parameter.name.name) + u' ' + typeText(parameter.type, false);
    }

    void print(const CreateTable &create)
    {
        text += u"CREATE TABLE "_s + nameText(create.table.name) + u" ("_s;
        list(create.fields, [this](const FieldDefinition &field) { print(field); });
        if (!create.fields.empty() && !create.constraints.empty())
            text += u", "_s;
        list(create.constraints, [this](const Constraint &constraint) { print(constraint); });
        text += u')';
    }

    void print(const FieldDefinition &field)
    {
        text += nameText(field.name.name) + u' ' + typeText(field.type.type, field.type.autoIncrement);
        if (field.size > 0)
            text += u'(' + QString::number(field.size) + u')';
        if (field.notNull)
            text += *field.notNull ? u" NOT NULL"_s : u" NULL"_s;
        if (!field.defaultValue.isEmpty())
            text += u" DEFAULT "_s + field.defaultValue;
        for (const Constraint &constraint : field.constraints) {
            text += u' ';
            print(constraint);
        }
    }

    void print(const Constraint &constraint)
    {
        if (!constraint.name.isEmpty())
            text += u"CONSTRAINT "_s + nameText(constraint.name) + u' ';
        const bool isForeign = constraint.kind == Constraint::Kind::ForeignKey;
        switch (constraint.kind) {
        case Constraint::Kind::PrimaryKey:
            text += u"PRIMARY KEY"_s;
            break;
        case Constraint::Kind::Unique:
            text += u"UNIQUE"_s;
            break;
        case Constraint::Kind::NotNull:
            text += u"NOT NULL"_s;
            break;
        case Constraint::Kind::Check:
            text += u"CHECK ("_s + constraint.check + u')';
            break;
        case Constraint::Kind::ForeignKey:
            text += constraint.fields.empty() ? QString() : u"FOREIGN KEY"_s;
            break;
        }
        if (!constraint.fields.empty()) {
            text += u' ';
            names(constraint.fields);
            text += isForeign ? u" "_s : QString();
        }
        if (isForeign)
            references(constraint);
    }

    void references(const Constraint &constraint)
    {
        text += u"REFERENCES "_s + nameText(constraint.referencedTable.name);
        if (!constraint.referencedFields.empty()) {
            text += u' ';
            names(constraint.referencedFields);
        }
        if (constraint.cascadeUpdate)
            text += u" ON UPDATE CASCADE"_s;
        if (constraint.cascadeDelete)
            text += u" ON DELETE CASCADE"_s;
    }

    void print(const AlterTable &alter)
    {
        text += u"ALTER TABLE "_s + nameText(alter.table.name) + u' ';
        std::visit([this](const auto &change) { printChange(change); }, alter.change);
    }

    void printChange(const AlterTable::AddField &change)
    {
        text += u"ADD COLUMN "_s;
        print(change.field);
    }
    void printChange(const AlterTable::AlterField &change)
    {
        text += u"ALTER COLUMN "_s;
        print(change.field);
    }
    void printChange(const AlterTable::DropField &change) { text += u"DROP COLUMN "_s + nameText(change.field.name); }
    void printChange(const Constraint &change)
    {
        text += u"ADD "_s;
        print(change);
    }
    void printChange(const AlterTable::DropConstraint &change)
    {
        text += u"DROP CONSTRAINT "_s + nameText(change.constraint.name);
    }

    void print(const CreateIndex &create)
    {
        text += (create.unique ? u"CREATE UNIQUE INDEX "_s : u"CREATE INDEX "_s) + nameText(create.index.name) +
                u" ON "_s + nameText(create.table.name) + u" ("_s;
        list(create.fields, [this](const CreateIndex::Field &field) {
            text += nameText(field.name.name) + (field.descending ? u" DESC"_s : QString());
        });
        text += u')';
        if (create.primary)
            text += u" WITH PRIMARY"_s;
        else if (create.disallowNull)
            text += u" WITH DISALLOW NULL"_s;
        else if (create.ignoreNull)
            text += u" WITH IGNORE NULL"_s;
    }

    void print(const DropTable &drop) { text += u"DROP TABLE "_s + nameText(drop.table.name); }
    void print(const DropIndex &drop)
    {
        text += u"DROP INDEX "_s + nameText(drop.index.name) + u" ON "_s + nameText(drop.table.name);
    }
    void print(const DropQuery &drop) { text += u"DROP VIEW "_s + nameText(drop.query.name); }

    void print(const CreateQuery &create)
    {
        text += u"CREATE PROCEDURE "_s + nameText(create.query.name) + u" AS\n"_s + create.sql;
    }

    int m_nesting = 0;
};

} // namespace

QString printStatement(const Statement &statement)
{
    Printer printer;
    printer.print(statement);
    return printer.text;
}

QString printExpression(const Expr &expr)
{
    Printer printer;
    printer.print(expr);
    return printer.text;
}

} // namespace dao::sql::ast
