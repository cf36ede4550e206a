#include "SearchTerms.h"

#include "ModifyBinder.h"
#include "TransformBinder.h"

#include <dao/sql/ast/Parser.h>

namespace dao::sql::bound {

namespace {

class Collector
{
public:
    QList<SearchTerms> found;

    void query(const Query &query)
    {
        for (const QueryPart &part : query.parts) {
            if (part.select)
                select(*part.select);
            if (part.nested)
                this->query(*part.nested);
        }
    }

    void select(const Select &select)
    {
        for (const auto &source : select.sources) {
            if (source->query)
                query(*source->query);
            else if (source->table)
                found.append({source->number, {}, orderOf(select, *source)});
        }
        if (select.where)
            condition(select, *select.where, false);
        for (const JoinTreePtr &tree : select.from)
            joins(select, *tree);
        for (const OutputColumn &column : select.columns) {
            if (column.expr)
                subqueries(*column.expr);
        }
        if (select.having)
            subqueries(*select.having);
    }

private:
    /// Queries within an expression.
    void subqueries(const Expr &expr)
    {
        if (const Query *nested = subqueryOf(expr))
            query(*nested);
        forEachChild(expr, [this](const ExprPtr &child) { subqueries(*child); });
    }

    void joins(const Select &select, const JoinTree &tree)
    {
        if (tree.left)
            joins(select, *tree.left);
        if (tree.right)
            joins(select, *tree.right);
        if (tree.on)
            condition(select, *tree.on, tree.kind != JoinKind::Inner);
    }

    /// onlyNullable: the condition of an outer join, which chooses rows of the other side only.
    void condition(const Select &select, const Expr &expr, bool onlyNullable)
    {
        const auto add = [&](const ExprPtr &field, bool isEqual, std::initializer_list<ExprPtr> values) {
            term(select, field, isEqual, values, onlyNullable);
        };
        if (const auto *chain = expr.as<Chain>(); chain && chain->isAnd) {
            for (const ExprPtr &each : chain->terms)
                condition(select, *each, onlyNullable);
            return;
        }
        if (const auto *compare = expr.as<Compare>(); compare && compare->op != BinaryOp::NotEqual) {
            add(compare->left, compare->op == BinaryOp::Equal, {compare->right});
            add(compare->right, compare->op == BinaryOp::Equal, {compare->left});
        } else if (const auto *between = expr.as<Between>(); between && !between->negated) {
            add(between->operand, false, {between->low, between->high});
        } else if (const auto *list = expr.as<InList>(); list && !list->negated) {
            add(list->operand, true, {});
        } else if (const auto *query = expr.as<InQuery>(); query && !query->negated) {
            add(query->operand, true, {});
        } else if (const auto *null = expr.as<IsNull>(); null && !null->negated) {
            add(null->operand, true, {});
        } else if (const auto *like = expr.as<Like>(); like && hasPrefix(*like)) {
            add(like->text, false, {});
        }
        subqueries(expr);
    }

    static bool hasPrefix(const Like &like)
    {
        const auto *pattern = like.pattern->as<Literal>();
        const QString text = pattern ? pattern->value.text() : QString();
        return !text.isEmpty() && !QStringView(u"*?#[%_").contains(text.front());
    }

    void term(const Select &select, const ExprPtr &field, bool isEqual, std::initializer_list<ExprPtr> values,
              bool onlyNullable)
    {
        const auto *ref = field->as<FieldRef>();
        if (!ref || (onlyNullable && !ref->source->nullable) || !canBeIndexed(ref->source->table->fields[ref->field]))
            return;
        bool isConstant = true;
        for (const ExprPtr &value : values) {
            const auto reads = [&](const Expr &part) { return sourceOf(part) == ref->source; };
            if (anyPart(*value, reads) || hasAggregate(*value))
                return;
            const auto isOther = [&](const Expr &part) {
                return std::ranges::any_of(select.sources,
                                           [&](const auto &source) { return sourceOf(part) == source.get(); });
            };
            isConstant = isConstant && !anyPart(*value, isOther);
        }
        for (SearchTerms &terms : found) {
            if (terms.source == ref->source->number)
                terms.terms.append({ref->source->table->fields[ref->field].name, isEqual, isConstant});
        }
    }

    static const Source *sourceOf(const Expr &expr)
    {
        if (const auto *field = expr.as<FieldRef>())
            return field->source;
        if (const auto *output = expr.as<Output>())
            return output->source;
        return nullptr;
    }

    // An index over yes and no finds half of the rows.
    static bool canBeIndexed(const FieldInfo &field)
    {
        return field.type != DataType::Memo && field.type != DataType::LongBinary && field.type != DataType::Boolean;
    }

    static QStringList orderOf(const Select &select, const Source &source)
    {
        QStringList fields;
        if (select.sources.size() != 1 || select.aggregated || select.distinct)
            return {};
        for (const OrderKey &key : select.order) {
            const auto *ref = key.expr ? key.expr->as<FieldRef>() : nullptr;
            if (!ref || ref->source != &source || key.descending != select.order.front().descending ||
                !canBeIndexed(source.table->fields[ref->field]))
                return {};
            fields.append(source.table->fields[ref->field].name);
        }
        return fields;
    }
};

/// Binds each kind of statement and collects its terms.
struct StatementTerms
{
    BindContext &context;
    Collector &collector;

    void operator()(const ast::QueryPtr &node) { collector.query(*QueryBinder(context, nullptr).bind(*node)); }
    void operator()(const ast::Transform &node) { collector.select(*TransformBinder(context).bind(node).select); }
    void operator()(const ast::Update &node) { collector.select(*ModifyBinder(context).bind(node).select); }
    void operator()(const ast::Delete &node) { collector.select(*ModifyBinder(context).bind(node).select); }
    void operator()(const ast::Insert &node)
    {
        if (const Insert bound = ModifyBinder(context).bind(node); bound.query)
            collector.query(*bound.query);
    }
    template <typename Other>
    void operator()(const Other &)
    {
    }
};

} // namespace

QList<SearchTerms> searchTermsOf(const SchemaView &schema, const QString &text)
{
    const ast::Statement statement = ast::Parser(text).parseStatement();
    BindContext context(schema, text);
    for (const ast::ParameterDeclaration &declaration : statement.parameters)
        context.declare(declaration);
    Collector collector;
    std::visit(StatementTerms{context, collector}, statement.node);
    return collector.found;
}

} // namespace dao::sql::bound
