#pragma once
#include "Compiled.h"

#include <memory>

namespace dao::sql {

namespace ast {
struct Statement;
}
/// What the parser made of a text.
using SyntaxTree = std::shared_ptr<const ast::Statement>;

/// Compiles one statement of Access SQL: lexer, parser, binder, generator.
/// readHeadings: to read cross tables whose columns only their data can tell; without it they are refused (3143).
/// Throws DaoException with the engine's number and a place in the text.
CompiledStatement compile(const SchemaView &schema, const QString &text, const HeadingReader &readHeadings = {});
/// The same for a text that was parsed before.
CompiledStatement compile(const SchemaView &schema, const QString &text, const SyntaxTree &tree,
                          const HeadingReader &readHeadings = {});

/// The statement as a text of the inner engine that reads what it would read, calculates what it would calculate, and
/// changes nothing; when an expression outside the cells of a result fails, the DaoException has its start and length
/// in the user's text, without line and column. Parameters are bound as in the plan. Empty for a definition.
QString placesSql(const SchemaView &schema, const QString &text, const SyntaxTree &tree,
                  const HeadingReader &readHeadings);

/// The plan of a cross table with its headings. Throws 3205 when there are too many.
SelectPlan withHeadings(const SelectPlan &plan, const QList<CrosstabHeading> &headings);

/// Only lexer and parser: throws on a syntax error, never looks at the schema.
SyntaxTree checkSyntax(const QString &text);

/// A validation rule as a pure condition of the inner engine over one column, with only operators and functions that
/// every SQLite tool has, so that it can stand in a CHECK constraint; empty optional when the rule needs more than that
/// (then the engine alone enforces it, through ruleWithFunctions). The field is the implied left operand where a
/// comparison has none. Throws DaoException for a rule that is no rule.
std::optional<QString> ruleAsCheck(const QString &rule, const FieldInfo &field);
QString ruleWithFunctions(const QString &rule, const FieldInfo &field);

/// The same for the validation rule of a table: a condition over its fields.
std::optional<QString> tableRuleAsCheck(const QString &rule, const TableInfo &table);
QString tableRuleWithFunctions(const QString &rule, const TableInfo &table);

/// A default value as inner SQL. A bare word that is no expression counts as text.
struct DefaultExpression
{
    QString sql;
    bool constant = false; ///< a literal, fit for a DEFAULT clause of any SQLite tool
};
DefaultExpression defaultExpression(const QString &text, const FieldInfo &field);

/// A name as the inner engine quotes it.
QString quotedName(QStringView name);

} // namespace dao::sql
