#pragma once
#include "Statement.h"

namespace dao::sql::ast {

/// The statement as dialect text in canonical form: keywords in capitals, names as written (in brackets if necessary),
/// parentheses only where necessary, each clause of the outermost query on its own line, a final semicolon. Parsing the
/// text gives the same tree. Elements without meaning for the engine (WITH OWNERACCESS OPTION, the name in a PROCEDURE
/// clause, sizes of parameters) are not in the tree and are not printed. The texts of stored queries, defaults and
/// CHECK conditions are printed unchanged.
QString printStatement(const Statement &statement);

/// An expression in canonical form.
QString printExpression(const Expr &expr);

} // namespace dao::sql::ast
