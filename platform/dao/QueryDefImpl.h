#pragma once
#include "DatabaseImpl.h"
#include "QueryDef.h"

#include <dao/sql/Compiler.h>

namespace dao {

struct QueryDef::Impl
{
    Impl(Database &owner, std::shared_ptr<DatabaseImpl> ownerImpl, const QString &text);

    /// Compiles when it has not been, or when the schema is another by now. Values of parameters stay.
    const sql::CompiledStatement &ensureCompiled();
    /// Before a run: also when the data may be other by now than that which told the columns.
    void compileForRun();
    /// The columns; of a cross table those that its data gives now, or only the row heads while parameters lack values.
    const sql::SelectPlan &describedPlan();
    int indexOfParameter(QStringView name) const;
    void setParameter(int index, const Value &value, const QString &from);
    void requireParameters(const QString &from); ///< 3061
    /// A failure of a run goes on with the place of the expression that failed, where that can be found.
    [[noreturn]] void rethrowWithPlace(const DaoException &exception);

    Database *database;
    std::shared_ptr<DatabaseImpl> db;
    QString sql;
    sql::SyntaxTree syntax; ///< null before it is parsed
    std::optional<sql::CompiledStatement> compiled;
    quint64 generation = 0;
    QList<Value> parameters;             ///< Empty: not set
    std::vector<store::Statement> steps; ///< of an action, prepared at its first run
    bool fitsData = false;               ///< compiled since the last run
    std::optional<sql::SelectPlan> described;
    quint64 describedAt = 0;

private:
    void compile();
    std::optional<SourceRange> placeOf(const DaoException &exception);
};

/// Runs the part of a cross table that tells its columns.
QList<sql::CrosstabHeading> readHeadings(DatabaseImpl &db, const sql::CrosstabPlan &crosstab,
                                         const QList<Value> &parameters = {});
/// Compiles a text against the database as it is. syntax: of the text, when it is known already.
sql::CompiledStatement compileIn(DatabaseImpl &db, const QString &text, const sql::SyntaxTree &syntax = {});

} // namespace dao
