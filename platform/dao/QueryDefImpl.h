#pragma once
#include "DatabaseImpl.h"

namespace dao {

/// Implementation of QueryDef: a statement, its compiled plan and its parameter values.
struct QueryDefImpl
{
    QueryDefImpl(std::shared_ptr<DatabaseImpl> owner, const QString &text);

    /// Parses the text, if it is not parsed yet; throws its syntax errors.
    void parse();
    /// Compiles the statement if it is not compiled yet or the schema has changed. Parameter values are kept.
    const sql::CompiledStatement &ensureCompiled();
    /// Like ensureCompiled(), but also compiles again if the columns depend on data that may have changed.
    void compileForRun();
    /// The plan with its columns. For a cross table: the columns that its data gives now, or only the row headings
    /// while parameters have no values.
    const sql::SelectPlan &describedPlan();
    /// For EXECUTE of a stored query that returns rows: that query, with its arguments if the parameters of this one
    /// have values. Else null.
    std::unique_ptr<QueryDefImpl> calledQuery();
    /// The stored query that EXECUTE names, without arguments; error 3265.
    std::unique_ptr<QueryDefImpl> queryOf(const sql::ExecutePlan &plan) const;
    /// The values of the arguments of EXECUTE.
    QList<Value> argumentsOf(const sql::ExecutePlan &plan) const;
    int indexOfParameter(QStringView name) const;
    void setParameter(int index, const Value &value, const QString &from);
    void requireParameters(const QString &from); ///< 3061
    /// Rethrows an error of a run with the place of the failed expression, if that can be determined.
    [[noreturn]] void rethrowWithPlace(const DaoException &exception);

    std::shared_ptr<DatabaseImpl> db;
    QString sql;
    sql::SyntaxTree syntax; ///< null before it is parsed
    std::optional<sql::CompiledStatement> compiled;
    quint64 generation = 0;
    QList<Value> parameters;             ///< Empty: not set
    std::vector<store::Statement> steps; ///< statements of an action query, prepared at its first run
    bool isStale = false;                ///< values have changed that the columns depend on
    bool fitsData = false; ///< true if it was compiled since the last run, so that its columns fit the data
    std::optional<sql::SelectPlan> described;
    quint64 describedAt = 0;
    std::unique_ptr<QueryDefImpl> called; ///< the query that EXECUTE names, for describedPlan()
    bool isCalled = false;                ///< by EXECUTE: places in its text are none in the user's

private:
    void compile();
    /// Reads headings with the values that parameters have now.
    sql::HeadingReader headingReader() const;
    std::optional<SourceRange> placeOf(const DaoException &exception);
};

} // namespace dao
