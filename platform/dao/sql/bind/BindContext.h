#pragma once
#include "Bound.h"

#include <dao/sql/Compiled.h>
#include <dao/values/Errors.h>
#include <QHash>
#include <utility>

namespace dao::sql::bound {

/// A parameter while the statement is bound. Its type follows from where it is used, unless it is declared.
struct BoundParameter
{
    QString name;
    DataType type = DataType::Unknown;
    bool declared = false;
    Range where;
    QString suggestion;
    bool bare = false; ///< written without brackets
};

/// What all binders of one statement share: the schema, the text that places refer to, parameters, numbers of sources.
class BindContext
{
public:
    BindContext(const SchemaView &schema, const QString &text)
        : m_schema(schema)
        , m_text(text)
        , m_userText(text)
    {
    }

    const SchemaView &schema() const { return m_schema; }

    std::unique_ptr<Source> newSource(const QString &name, Range where);

    /// Error 3360 when trees become too deep, or a text too long, for the inner engine.
    void limit(int depth, qint64 size, Range where) const;

    /// A node over bound children; error 3360 when the tree becomes too deep.
    template <typename Node>
    ExprPtr make(Range range, DataType type, Node node, bool firm = false)
    {
        auto expr = std::make_shared<Expr>();
        expr->range = range;
        expr->place = placeOf(range);
        expr->type = type;
        expr->firm = firm;
        expr->node = std::move(node);
        limitDepth(*expr);
        return expr;
    }

    // Parameters.
    void declare(const ast::ParameterDeclaration &declaration);
    /// The parameter of that name, made when it is new.
    int parameter(const QString &name, Range where, const QString &suggestion = {});
    /// True for one that is declared, or has been named before.
    bool isParameter(const QString &name) const;
    /// True where a name that is new deserves a look for what is meant.
    bool wantsSuggestion(const QString &name) const;
    void noteUse(int id, DataType type);
    const BoundParameter &parameterAt(int id) const { return m_parameters[size_t(id)]; }
    /// Declared ones first, then by their first appearance in the text; the type of one without any context is Text.
    QList<Parameter> finalParameters() const;
    /// Position (from 1) of each parameter id in finalParameters().
    QList<int> parameterPositions() const;
    /// Returns what held before.
    bool forbidParameters(bool forbid = true) { return std::exchange(m_parametersForbidden, forbid); }

    // Cross tables as sources.
    using ReadHeadings = std::function<QList<CrosstabHeading>(const Transform &)>;
    void setReadHeadings(ReadHeadings read) { m_readHeadings = std::move(read); }
    bool canReadHeadings() const { return bool(m_readHeadings); }
    /// Looks into the data: what is bound afterwards fits this moment only.
    QList<CrosstabHeading> readHeadings(const Transform &transform);
    bool dependsOnData() const { return m_dependsOnData; }

    // Failures. Places inside a stored query are shown as the place of its name in the user's text.
    [[noreturn]] void fail(int number, Range where, const QStringList &arguments = {}, const QString &hint = {}) const;
    QString textOf(Range range) const;
    Range placeOf(Range range) const { return m_place.value_or(range); }
    /// The same place in the user's text.
    SourceRange userPlace(Range range) const;

    /// While it lives, another text is bound: that of a stored query, or of a domain function.
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

    /// A level of recursion while binding, as long as it lives: stored queries within each other add up.
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

    /// The text being bound, and the same as an exception of another stage: keeps number and text, moves the place.
    const QString &text() const { return m_text; }
    [[noreturn]] void rethrow(const DaoException &exception) const;
    /// The same for a part of this text that was bound by itself: its places count from where the part begins.
    [[noreturn]] void rethrowWithin(const DaoException &exception, Range part) const;
    bool isSubstituted() const { return m_place.has_value(); }

private:
    void limitDepth(Expr &expr) const;
    std::vector<int> parameterOrder() const;

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
};

} // namespace dao::sql::bound
