#pragma once
#include "Bound.h"

#include <array>
#include <dao/sql/plan/Compiled.h>
#include <dao/values/Errors.h>
#include <memory_resource>
#include <QHash>
#include <utility>

namespace dao::sql::bound {

/// A parameter during binding. Unless it is declared, its type is determined by its uses.
struct BoundParameter
{
    QString name;
    DataType type = DataType::Unknown;
    bool declared = false;
    Range where;
    QString suggestion;
    bool bare = false;        ///< written without brackets
    bool mayBeColumn = false; ///< of a cross table whose columns are not known
};

/// State shared by all binders of one statement: schema, source text, parameters, numbers of sources. It owns the
/// memory of the bound expressions, so they must not outlive it.
class BindContext
{
public:
    BindContext(const SchemaView &schema, const QString &text)
        : m_schema(schema)
        , m_text(text)
        , m_userText(text)
    {
    }
    BindContext(const BindContext &) = delete;
    BindContext &operator=(const BindContext &) = delete;

    const SchemaView &schema() const { return m_schema; }

    std::unique_ptr<Source> newSource(const QString &name, Range where);

    /// Error 3360 if a tree becomes too deep or a text too long for SQLite.
    void limit(int depth, qint64 size, Range where) const;

    /// Creates an expression. All are freed together: allocating each one took a fifth of the time of binding.
    template <typename... Arguments>
    std::shared_ptr<Expr> newExpr(Arguments &&...arguments)
    {
        return std::allocate_shared<Expr>(std::pmr::polymorphic_allocator<Expr>(&m_memory),
                                          std::forward<Arguments>(arguments)...);
    }

    /// Creates a node with bound children; error 3360 if the tree becomes too deep.
    template <typename Node>
    ExprPtr make(Range range, DataType type, Node node, bool fixedType = false)
    {
        std::shared_ptr<Expr> expr = newExpr();
        expr->range = range;
        expr->place = placeOf(range);
        expr->type = type;
        expr->hasFixedType = fixedType;
        // Depth and size are set from the children, so that no later pass has to walk the tree to check them.
        int depth = 0;
        const auto add = [&](int childDepth, qint64 childSize) {
            depth = std::max(depth, childDepth);
            expr->size += childSize;
        };
        forEachOperand(node, [&add](const ExprPtr &child) { add(child->depth, child->size); });
        if constexpr (requires { node.query; })
            add(node.query->depth, node.query->size);
        expr->depth = depth + 1;
        limit(expr->depth, expr->size, range);
        expr->node = std::move(node);
        return expr;
    }

    // Parameters.
    void declare(const ast::ParameterDeclaration &declaration);
    /// The id of the parameter of that name, created if it is new. While columns of a cross table are not known, it is
    /// none of settableParameters() unless it is declared.
    int parameter(const QString &name, Range where, const QString &suggestion = {});
    /// True if the parameter is declared or was used before.
    bool isParameter(const QString &name) const;
    /// True if a similar name should be suggested for this new name.
    bool wantsSuggestion(const QString &name) const;
    void noteUse(int id, DataType type);
    const BoundParameter &parameterAt(int id) const { return m_parameters[size_t(id)]; }
    /// Declared parameters first, then the others by first occurrence. A parameter without any type information is
    /// Text.
    QList<Parameter> finalParameters() const;
    /// finalParameters() without the names at its end that may be columns of a cross table.
    QList<Parameter> settableParameters() const;
    /// The 1-based position of each parameter id in finalParameters().
    QList<int> parameterPositions() const;
    /// Returns the previous setting.
    bool forbidParameters(bool forbid = true) { return std::exchange(m_parametersForbidden, forbid); }

    // Cross tables as sources.
    using Headings = std::optional<QList<CrosstabHeading>>;
    using ReadHeadings = std::function<Headings(const Transform &)>;
    void setReadHeadings(ReadHeadings read) { m_readHeadings = std::move(read); }
    bool canReadHeadings() const { return bool(m_readHeadings); }
    /// Reads the headings from the data, so the bound tree is valid only for the current data. Nothing if they depend
    /// on parameters without values.
    Headings readHeadings(const Transform &transform);
    bool dependsOnData() const { return m_dependsOnData; }

    // Errors. A place inside a stored query is reported as the place of the query's name in the user's text.
    [[noreturn]] void fail(int number, Range where, const QStringList &arguments = {}, const QString &hint = {}) const;
    QString textOf(Range range) const;
    Range placeOf(Range range) const { return m_place.value_or(range); }
    /// Converts a place in the bound text to one in the user's text.
    SourceRange userPlace(Range range) const;

    /// While it exists, another text is bound: that of a stored query or a domain function.
    class Substitution
    {
    public:
        Substitution(BindContext &context, const QString &name, const QString &text, Range where);
        ~Substitution();
        Substitution(const Substitution &) = delete;
        Substitution &operator=(const Substitution &) = delete;

    private:
        BindContext &m_context;
        QString m_outerText;
        std::optional<Range> m_outerPlace;
    };

    /// A recursion level of binding. Levels of nested stored queries add up.
    class Level
    {
    public:
        Level(BindContext &context, Range where);
        ~Level() { --m_context.m_level; }
        Level(const Level &) = delete;
        Level &operator=(const Level &) = delete;

    private:
        BindContext &m_context;
    };

    /// The text that is being bound. rethrow() passes on an exception of another stage with its place converted.
    const QString &text() const { return m_text; }
    [[noreturn]] void rethrow(const DaoException &exception) const;
    /// Like rethrow(), for a part of this text that was bound separately: places count from the start of the part.
    [[noreturn]] void rethrowWithin(const DaoException &exception, Range part) const;
    bool isSubstituted() const { return m_place.has_value(); }

private:
    std::vector<int> parameterOrder() const;

    static constexpr size_t kUsualMemory = 8192; // 50 expressions
    std::array<std::byte, kUsualMemory> m_firstMemory;
    std::pmr::monotonic_buffer_resource m_memory{m_firstMemory.data(), m_firstMemory.size()};
    const SchemaView &m_schema;
    QString m_text;
    QString m_userText;
    std::optional<Range> m_place;
    QStringList m_queryStack;
    std::vector<BoundParameter> m_parameters;
    QHash<QString, int> m_parameterIds;
    int m_sources = 0;
    int m_level = 0;
    bool m_parametersForbidden = false;
    ReadHeadings m_readHeadings;
    bool m_dependsOnData = false;
    bool m_columnsUnknown = false; ///< readHeadings() returned nothing
};

} // namespace dao::sql::bound
