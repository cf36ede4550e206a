#include "SqlCheck.h"

#include <dao/Database.h>
#include <dao/sql/ast/Token.h>
#include <dao/sql/Compiler.h>
#include <dao/values/Errors.h>

namespace query {

using namespace Qt::StringLiterals;

TextPart partOf(const dao::SourceRange &where, const QString &text)
{
    if (!where.isValid() || text.isEmpty())
        return {};
    const int start = std::clamp(where.start, 0, int(text.size()) - 1);
    return {start, std::clamp(where.length, 1, int(text.size()) - start)};
}

namespace {

namespace ast = dao::sql::ast;
using ast::Symbol;
using ast::Token;

bool isComparison(const Token &token)
{
    return token.kind == Token::Kind::Symbol && token.symbol >= Symbol::Equal;
}

/// Whether the token makes a name beside it a part of something larger.
bool extends(const Token &token)
{
    const bool isArithmetic = token.symbol >= Symbol::Plus && token.symbol <= Symbol::Ampersand;
    const bool isPlace = token.is(Symbol::Dot) || token.is(Symbol::Bang) || token.is(Symbol::LeftParen);
    return (token.kind == Token::Kind::Symbol && (isArithmetic || isPlace)) || token.is(ast::Keyword::Mod);
}

/// A name with its qualifier, if there is one: "row", "report.row", "[row]".
struct Column
{
    QString table = {};
    QString name = {};
    ast::Range range = {};
    int next = -1; ///< index of the token behind it; -1 if there is no name

    static Column at(const QList<Token> &tokens, int first)
    {
        if (first >= tokens.size() || !tokens[first].isName())
            return {};
        const bool isQualified = first + 2 < tokens.size() && tokens[first + 2].isName() &&
                                 (tokens[first + 1].is(Symbol::Dot) || tokens[first + 1].is(Symbol::Bang));
        const int last = isQualified ? first + 2 : first;
        return {isQualified ? tokens[first].string() : QString(), tokens[last].string(),
                tokens[first].range.to(tokens[last].range), last + 1};
    }
    bool isSameAs(const Column &other) const
    {
        const auto equal = [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) == 0; };
        return equal(name, other.name) && (table.isEmpty() || other.table.isEmpty() || equal(table, other.table));
    }
};

/// The right side of the first comparison of a column with itself. "row = [ROW]" is one, because a name in brackets is
/// the column where there is one of this name.
std::optional<SqlCheck::Error> selfComparisonIn(const QString &text, const QList<dao::sql::Parameter> &parameters)
{
    const QList<Token> tokens = ast::tokenize(text);
    for (int i = 0; i < tokens.size(); ++i) {
        const Column left = Column::at(tokens, i);
        if (left.next < 0 || left.next >= tokens.size() || !isComparison(tokens[left.next]) ||
            (i > 0 && extends(tokens[i - 1]) && !tokens[i - 1].is(Symbol::LeftParen)))
            continue;
        const Column right = Column::at(tokens, left.next + 1);
        const bool isParameter = std::ranges::any_of(parameters, [&](const dao::sql::Parameter &parameter) {
            return parameter.name.compare(right.name, Qt::CaseInsensitive) == 0;
        });
        if (right.next >= 0 && right.isSameAs(left) && !isParameter &&
            (right.next >= tokens.size() || !extends(tokens[right.next])))
            return SqlCheck::Error{u"Both sides are the column '%1': a name in brackets is the column if there is one. "
                                   "A parameter needs another name."_s.arg(left.name),
                                   {right.range.start, right.range.length}};
    }
    return std::nullopt;
}

} // namespace

SqlCheck SqlCheck::of(const dao::Database &database, const QString &text)
{
    SqlCheck check;
    for (const TextPart &part : statementsIn(text)) {
        try {
            const dao::sql::CompiledStatement compiled =
                dao::sql::compile(database.schema(), statementInPlace(text, part));
            for (const dao::sql::Parameter &parameter : compiled.parameters) {
                const bool isKnown = std::ranges::any_of(check.parameters, [&](const dao::sql::Parameter &known) {
                    return known.name.compare(parameter.name, Qt::CaseInsensitive) == 0;
                });
                if (!isKnown)
                    check.parameters.append(parameter);
            }
        } catch (const dao::DaoException &exception) {
            // The columns of a cross table as a source depend on its data, which is not read here.
            const bool needsData = exception.number() == dao::error::SyntaxInTransform;
            if (!needsData) {
                check.error = Error{exception.details(), partOf(exception.where(), text)};
                return check;
            }
        }
    }
    check.remark = selfComparisonIn(text, check.parameters);
    return check;
}

} // namespace query
