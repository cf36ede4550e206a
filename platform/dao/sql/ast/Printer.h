#pragma once
#include "Statement.h"

namespace dao::sql::ast {

/// The statement as text of the dialect in one canonical form: words of the grammar in capitals, names as they were
/// written, in brackets where they need them, parentheses only where the meaning asks for them, each clause of the
/// outermost query on a line of its own, a semicolon at the end. Parsing it gives the same tree again. What has no
/// meaning to the engine (WITH OWNERACCESS OPTION, the name of a PROCEDURE clause, the sizes of parameters) is not in
/// the tree and is not printed; the texts of stored queries, defaults and CHECK conditions are printed as they stand.
QString printStatement(const Statement &statement);

/// An expression in the same form.
QString printExpression(const Expr &expr);

} // namespace dao::sql::ast
