#include "Compiler.h"

#include <dao/sql/ast/NearestName.h>
#include <dao/sql/ast/Parser.h>
#include <dao/sql/bind/DefinitionPlanner.h>
#include <dao/sql/bind/ModifyBinder.h>
#include <dao/sql/bind/RuleBinder.h>
#include <dao/sql/bind/TransformBinder.h>
#include <dao/sql/bind/Types.h>
#include <dao/sql/generate/Generator.h>

using namespace Qt::StringLiterals;

namespace dao::sql {
namespace {

using bound::BindContext;
using generate::Generator;

/// Runs binder and generator for one statement. Binding is always complete before generation starts, because only then
/// all parameters are known.
class StatementCompiler
{
public:
    StatementCompiler(const SchemaView &schema, const QString &text, const HeadingReader &readHeadings)
        : m_context(schema, text)
        , m_readHeadings(readHeadings)
    {
        if (!readHeadings)
            return;
        m_context.setReadHeadings([this](const bound::Transform &transform) {
            const SelectPlan plan = Generator(m_context).transform(transform);
            m_dependsOnValues = m_dependsOnValues || plan.crosstab->valuesNeedParameters;
            return m_readHeadings(*plan.crosstab, m_context.settableParameters());
        });
    }

    CompiledStatement compile(const ast::Statement &statement)
    {
        for (const ast::ParameterDeclaration &declaration : statement.parameters)
            m_context.declare(declaration);
        CompiledStatement result;
        result.plan = std::visit([this](const auto &node) { return plan(node); }, statement.node);
        result.parameters = m_context.settableParameters();
        result.dependsOnData = m_context.dependsOnData();
        result.dependsOnValues = m_dependsOnValues;
        return result;
    }

    QString places(const ast::Statement &statement)
    {
        for (const ast::ParameterDeclaration &declaration : statement.parameters)
            m_context.declare(declaration);
        return std::visit([this](const auto &node) { return places(node); }, statement.node);
    }

private:
    template <typename Bound>
    QString reading(const Bound &bound, bool keeps = false)
    {
        Generator generator(m_context);
        generator.tellPlaces();
        if (keeps)
            generator.keepFailures();
        return generator.reading(bound);
    }

    QString places(const ast::QueryPtr &query)
    {
        const std::shared_ptr<bound::Query> bound = bound::QueryBinder(m_context, nullptr).bind(*query);
        const ast::Select *single = query->singleSelect();
        return reading(*bound, !single || !single->into);
    }

    // The query of the row headings contains all clauses.
    QString places(const ast::Transform &node)
    {
        const bound::Transform bound = bound::TransformBinder(m_context).bind(node);
        bound::Query query;
        query.parts.push_back({bound.select, nullptr, false});
        return reading(query, true);
    }

    QString places(const ast::Insert &node) { return reading(bound::ModifyBinder(m_context).bind(node)); }
    QString places(const ast::Update &node) { return reading(bound::ModifyBinder(m_context).bind(node)); }
    QString places(const ast::Delete &node) { return reading(bound::ModifyBinder(m_context).bind(node)); }

    template <typename Definition>
    QString places(const Definition &)
    {
        return {};
    }

    Plan plan(const ast::QueryPtr &query)
    {
        const std::shared_ptr<bound::Query> bound = bound::QueryBinder(m_context, nullptr).bind(*query);
        const ast::Select *single = query->singleSelect();
        Generator generator(m_context);
        if (single && single->into)
            return selectInto(*single->into, *bound, generator.select(*bound));
        generator.keepFailures();
        return generator.select(*bound);
    }

    Plan plan(const ast::Transform &node)
    {
        const bound::Transform bound = bound::TransformBinder(m_context).bind(node);
        Generator generator(m_context);
        generator.keepFailures();
        return generator.transform(bound);
    }

    Plan plan(const ast::Insert &node)
    {
        const bound::Insert bound = bound::ModifyBinder(m_context).bind(node);
        return Generator(m_context).insert(bound);
    }

    Plan plan(const ast::Update &node)
    {
        const bound::Update bound = bound::ModifyBinder(m_context).bind(node);
        return Generator(m_context).update(bound);
    }

    Plan plan(const ast::Delete &node)
    {
        const bound::Delete bound = bound::ModifyBinder(m_context).bind(node);
        return Generator(m_context).remove(bound);
    }

    Plan plan(const ast::Execute &node)
    {
        const QueryInfo *query = m_context.schema().findQuery(node.query.name);
        if (!query)
            m_context.fail(error::UnknownSource, node.query.range, {node.query.name},
                           didYouMean(node.query.name, m_context.schema().sourceNames()));
        const CompiledStatement called = compileCalled(*query, node.query.range);
        checkArguments(node, *query, called.parameters.size());
        bound::ExpressionBinder binder(m_context, nullptr, bound::clause::kValues);
        std::vector<bound::ExprPtr> arguments;
        for (const ast::ExprPtr &argument : node.arguments)
            arguments.push_back(binder.bind(*argument));
        ExecutePlan plan{.query = query->name, .arguments = {}, .returnsRows = called.returnsRows()};
        Generator generator(m_context);
        for (const bound::ExprPtr &argument : arguments)
            plan.arguments.append(generator.expression(*argument));
        return plan;
    }

    void checkArguments(const ast::Execute &node, const QueryInfo &query, qsizetype taken)
    {
        const qsizetype given = qsizetype(node.arguments.size());
        const QString hint = u"'%1' takes %2 parameters."_s.arg(query.name).arg(taken);
        if (given > taken)
            m_context.fail(error::ItemNotFound, node.arguments[size_t(taken)]->range, {}, hint);
        if (given < taken)
            m_context.fail(error::TooFewParameters, node.query.range, {QString::number(taken - given)}, hint);
    }

    CompiledStatement compileCalled(const QueryInfo &query, bound::Range where)
    {
        constexpr qsizetype kMaxCalls = 40;
        if (m_callers.contains(query.name))
            m_context.fail(error::CircularQuery, where, {query.name});
        if (m_callers.size() >= kMaxCalls)
            m_context.fail(error::TooComplex, where);
        const BindContext::Substitution substitution(m_context, query.name, query.sql, where);
        try {
            StatementCompiler called(m_context.schema(), query.sql, m_readHeadings);
            called.m_callers = m_callers + QStringList{query.name};
            return called.compile(*checkSyntax(query.sql));
        } catch (const DaoException &exception) {
            m_context.rethrow(exception);
        }
    }

    template <typename Definition>
    Plan plan(const Definition &node)
    {
        return bound::DefinitionPlanner(m_context).plan(node);
    }

    // The new table gets names, types and sizes of the select list; of other field properties only the autonumber.
    Plan selectInto(const ast::NameAt &into, const bound::Query &query, SelectPlan select)
    {
        const bound::Select &source = *query.singleSelect();
        for (const auto &table : source.sources) {
            if (table->table && table->table->name.compare(into.name, Qt::CaseInsensitive) == 0)
                m_context.fail(error::SourceIsTarget, into.range, {into.name});
        }
        if (m_context.schema().findTable(into.name) || m_context.schema().findQuery(into.name))
            m_context.fail(error::TableExists, into.range, {into.name});
        SelectIntoPlan plan;
        plan.table.name = into.name;
        bool counted = false; // a table has at most one autonumber
        for (const Column &column : select.columns) {
            FieldInfo field;
            // Two tables have the field, so the column is named "report.sec"; a field name must not contain a dot.
            field.name = column.info.name;
            if (!column.info.sourceField.isEmpty() && field.name.endsWith(u'.' + column.info.sourceField))
                field.name.replace(u'.', u'_');
            field.type = column.info.type;
            field.size = column.info.size;
            field.ordinal = int(plan.table.fields.size());
            field.allowZeroLength = isTextType(field.type);
            const bool counts =
                column.info.isAutoIncrement() && source.sources.size() == 1 && !source.aggregated && !counted;
            counted = counted || counts;
            field.attributes = counts ? FixedField | AutoIncrement : 0;
            if (plan.table.field(field.name))
                m_context.fail(error::DuplicateDestination, into.range, {field.name});
            plan.table.fields.append(field);
        }
        plan.select = std::move(select);
        return plan;
    }

    BindContext m_context;
    HeadingReader m_readHeadings;
    bool m_dependsOnValues = false;
    QStringList m_callers; ///< names of the stored queries being executed, outermost first
};

struct RuleText
{
    QString sql;
    bool pure = false;
};

/// A rule or default belongs to no statement, so an error in it has no place in a text; the message names the field or
/// table instead.
template <typename Compile>
auto withoutPlace(const QString &what, const QString &text, const Compile &compileText)
{
    constexpr qsizetype kLongestName = 1000;
    try {
        return compileText();
    } catch (const DaoException &exception) {
        QString hint = u"In the %1 '%2'"_s.arg(what, text.left(kLongestName));
        hint += exception.hint().isEmpty() ? u"."_s : QString(u": "_s + exception.hint());
        throw DaoException(exception.number(), exception.source(), exception.description()).withHint(hint);
    }
}

// A rule that is Null for a row is not broken, as in the dialect; for a field that means that Null is always allowed
// unless the field is required.
RuleText ruleTextOf(const QString &rule, const TableInfo &table, const FieldInfo *implied)
{
    const bound::NoSchema schema;
    BindContext context(schema, rule);
    bound::Source source;
    source.name = table.name;
    source.table = &table;
    const bound::ExprPtr condition = bound::bindRule(context, source, implied);
    Generator generator(context);
    generator.setStandalone(true);
    RuleText result;
    result.sql = generator.condition(*condition);
    if (implied)
        result.sql = quotedName(implied->name) + u" IS NULL OR ("_s + result.sql + u')';
    result.pure = generator.isPure();
    return result;
}

RuleText ruleText(const QString &rule, const TableInfo &table, const FieldInfo *implied)
{
    return withoutPlace(u"rule"_s, rule, [&] { return ruleTextOf(rule, table, implied); });
}

RuleText fieldRuleText(const QString &rule, const FieldInfo &field)
{
    TableInfo table;
    table.fields.append(field);
    return ruleText(rule, table, &field);
}

} // namespace

CompiledStatement compile(const SchemaView &schema, const QString &text, const HeadingReader &readHeadings)
{
    return compile(schema, text, checkSyntax(text), readHeadings);
}

CompiledStatement compile(const SchemaView &schema, const QString &text, const SyntaxTree &tree,
                          const HeadingReader &readHeadings)
{
    return StatementCompiler(schema, text, readHeadings).compile(*tree);
}

QString placesSql(const SchemaView &schema, const QString &text, const SyntaxTree &tree,
                  const HeadingReader &readHeadings)
{
    return StatementCompiler(schema, text, readHeadings).places(*tree);
}

SyntaxTree checkSyntax(const QString &text)
{
    return std::make_shared<const ast::Statement>(ast::Parser(text).parseStatement());
}

std::optional<QString> ruleAsCheck(const QString &rule, const FieldInfo &field)
{
    const RuleText text = fieldRuleText(rule, field);
    return text.pure ? std::optional(text.sql) : std::nullopt;
}

QString ruleWithFunctions(const QString &rule, const FieldInfo &field)
{
    return fieldRuleText(rule, field).sql;
}

std::optional<QString> tableRuleAsCheck(const QString &rule, const TableInfo &table)
{
    const RuleText text = ruleText(rule, table, nullptr);
    return text.pure ? std::optional(text.sql) : std::nullopt;
}

QString tableRuleWithFunctions(const QString &rule, const TableInfo &table)
{
    return ruleText(rule, table, nullptr).sql;
}

// Defaults were entered in a property sheet, where a single word needs no quotes (see bindDefault()).
DefaultExpression defaultExpression(const QString &text, const FieldInfo &field)
{
    if (text.trimmed().isEmpty())
        return {};
    const bound::NoSchema schema;
    BindContext context(schema, text);
    context.forbidParameters();
    const bound::ExprPtr value =
        withoutPlace(u"default"_s, text, [&] { return bound::bindDefault(context, text, field); });
    const QString sql = Generator(context).expression(*value);
    // A text with control characters is generated as a CAST, which a DEFAULT clause does not accept.
    const bool constant = value->as<bound::Literal>() && !sql.startsWith(u"CAST"_s);
    return {sql, constant};
}

} // namespace dao::sql
