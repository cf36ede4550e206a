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
    dao::Value value; ///< Empty if no value was found, or its text cannot be converted to the type.
    QString text;
    Source source = Source::SqlQuery; ///< SqlQuery: typed by the user, or remembered
    QString suggestion;               ///< name of a column that the parameter may be a misspelling of; else empty
    bool bareText = false;            ///< an unbracketed word in a place where a text is expected

    bool hasValue() const { return !value.hasNoValue() && !text.isEmpty(); }
    /// "SQL Query", "Sys Macro" or "User Macro".
    QString sourceText() const;
    /// Explains a parameter without a value: its name, and the probable reason.
    QString lack() const;
    /// Sets the value from a typed text. A date or currency that cannot be parsed is reported to prompts.
    void setText(const QString &typed, tarnwick::UserPrompts &prompts);
};

/// Shows the parameters of a query, so that the user can confirm or change them.
class ParameterPrompt
{
public:
    virtual ~ParameterPrompt() = default;
    /// Returns false if the user refused; the query is then not opened.
    virtual bool confirm(const QString &queryName, QList<ParameterEntry> &entries, QueryContext &context) = 0;
};

/// Stores the query history. A failure is reported; the changes stay in memory.
void storeHistory(QueryContext &context, tarnwick::UserPrompts &prompts);

/// Gives every parameter of a query a value: from the user macros, the system macros, or the value last used. Unless
/// quiet mode applies, it shows them to the user. Then sets them in the query definition and remembers the values that
/// the user gave.
class ParameterResolver
{
public:
    ParameterResolver(QueryContext &context, tarnwick::UserPrompts &prompts)
        : m_context(&context)
        , m_prompts(&prompts)
    {
    }

    /// Returns true if the query may be opened. Returns false if the user refused, if the parameters cannot be read
    /// (1062), or if a parameter has no value and nobody can be asked (1062, with its name).
    bool resolve(const QString &queryName, dao::QueryDef &query);

private:
    QList<ParameterEntry> collect(const QString &queryName, const dao::QueryDef &query);
    bool confirm(const QString &queryName, QList<ParameterEntry> &entries);
    void hand(const QString &queryName, const QList<ParameterEntry> &entries, dao::QueryDef &query);

    QueryContext *m_context;
    tarnwick::UserPrompts *m_prompts;
};

} // namespace query
