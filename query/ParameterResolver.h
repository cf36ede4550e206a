#pragma once
#include "QueryContext.h"

#include <dao/QueryDef.h>
#include <tarnwick/Prompts.h>

namespace query {

/// One parameter of a query that is about to be opened.
struct ParameterEntry
{
    enum class Source { SqlQuery = 0, SystemMacro = 1, UserMacro = 2 };

    QString name; ///< without brackets
    dao::DataType type = dao::DataType::Text;
    dao::Value value; ///< Empty when none was found, or its text is none of that type
    QString text;
    Source source = Source::SqlQuery; ///< SqlQuery: typed by the user, or remembered
    QString suggestion;               ///< a column's name, when this one looks like a slip of it; else empty
    bool bareText = false;            ///< a word without brackets where a text is expected

    bool hasValue() const { return !value.hasNoValue() && !text.isEmpty(); }
    /// "SQL Query", "Sys Macro" or "User Macro".
    QString sourceText() const;
    /// What is missing of one without a value: its name, and why it may have none.
    QString lack() const;
    /// Takes a typed text over; prompts is told of a date or currency that cannot be read.
    void setText(const QString &typed, tarnwick::UserPrompts &prompts);
};

/// Shows the parameters of a query for the user to confirm or change.
class ParameterPrompt
{
public:
    virtual ~ParameterPrompt() = default;
    /// False: the user refused, the query is not opened.
    virtual bool confirm(const QString &queryName, QList<ParameterEntry> &entries, QueryContext &context) = 0;
};

/// Gives every parameter of a query a value: from the user macros, the system macros, or the value it was given last
/// time; shows them unless it may be quiet; hands them to the query definition and remembers those the user gave.
class ParameterResolver
{
public:
    ParameterResolver(QueryContext &context, tarnwick::UserPrompts &prompts)
        : m_context(&context)
        , m_prompts(&prompts)
    {
    }

    /// True when the query may be opened; false when the user refused, or its parameters cannot be read (1062), or
    /// there is nobody to ask for one that has no value (1062, too: it is named).
    bool resolve(const QString &queryName, dao::QueryDef &query);

private:
    QList<ParameterEntry> collect(const QString &queryName, const dao::QueryDef &query);
    bool confirm(const QString &queryName, QList<ParameterEntry> &entries);
    void hand(const QString &queryName, const QList<ParameterEntry> &entries, dao::QueryDef &query);
    void storeHistory();

    QueryContext *m_context;
    tarnwick::UserPrompts *m_prompts;
};

} // namespace query
