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
    int indexOfParameter(QStringView name) const;
    void setParameter(int index, const Value &value, const QString &from);
    void requireParameters(const QString &from); ///< 3061

    Database *database;
    std::shared_ptr<DatabaseImpl> db;
    QString sql;
    sql::SyntaxTree syntax; ///< null before it is parsed
    std::optional<sql::CompiledStatement> compiled;
    quint64 generation = 0;
    QList<Value> parameters;             ///< Empty: not set
    std::vector<store::Statement> steps; ///< of an action, prepared at its first run
};

} // namespace dao
