#pragma once
#include <dao/sql/plan/Compiled.h>
#include <dao/sql/plan/QuotedName.h>

#include <memory>

namespace dao::sql {

namespace ast {
struct Statement;
}
/// The syntax tree of a statement.
using SyntaxTree = std::shared_ptr<const ast::Statement>;

/// Compiles one statement of Access SQL: lexer, parser, binder, generator.
/// readHeadings: reads the columns of cross tables that depend on data; without it such statements are refused (3143).
/// Throws DaoException with the error number and the place in the text.
CompiledStatement compile(const SchemaView &schema, const QString &text, const HeadingReader &readHeadings = {});
/// Compiles a text that is already parsed.
CompiledStatement compile(const SchemaView &schema, const QString &text, const SyntaxTree &tree,
                          const HeadingReader &readHeadings = {});

/// An SQLite query that reads and calculates the same as the statement but changes nothing. If an expression outside of
/// result cells fails, the DaoException has its start and length in the user's text, without line and column.
/// Parameters are bound as in the plan. Empty for a definition.
QString placesSql(const SchemaView &schema, const QString &text, const SyntaxTree &tree,
                  const HeadingReader &readHeadings);

/// Runs lexer and parser only: throws on a syntax error and does not use the schema.
SyntaxTree checkSyntax(const QString &text);

/// Translates a validation rule to a condition that uses only operators and functions of plain SQLite, for a CHECK
/// constraint. Empty if the rule needs functions of this engine; these rules are enforced with ruleWithFunctions(). If
/// a comparison has no left operand, the field is used. Throws DaoException for an invalid rule.
std::optional<QString> ruleAsCheck(const QString &rule, const FieldInfo &field);
QString ruleWithFunctions(const QString &rule, const FieldInfo &field);

/// Translates the validation rule of a table: a condition over its fields.
std::optional<QString> tableRuleAsCheck(const QString &rule, const TableInfo &table);
QString tableRuleWithFunctions(const QString &rule, const TableInfo &table);

/// A default value as SQLite SQL. A single word that is not an expression is treated as text.
struct DefaultExpression
{
    QString sql;
    bool constant = false; ///< a literal that is valid in a DEFAULT clause of plain SQLite
};
DefaultExpression defaultExpression(const QString &text, const FieldInfo &field);

} // namespace dao::sql
