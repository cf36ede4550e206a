#include "InnerSql.h"
#include "SmallSchema.h"
#include "StatementMaker.h"
#include "Targets.h"

#include <dao/sql/ast/Parser.h>
#include <dao/sql/ast/Printer.h>
#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;
using namespace dao::sql;

namespace fuzz {
namespace {

constexpr uint8_t Utf16Mark = 255;
constexpr uint8_t MadeMark = 254;

QString textOf(Bytes bytes)
{
    if (!bytes.empty() && bytes.front() == MadeMark) {
        ByteReader reader(bytes.subspan(1));
        return StatementMaker(reader).statement();
    }
    if (bytes.empty() || bytes.front() != Utf16Mark)
        return QString::fromUtf8(reinterpret_cast<const char *>(bytes.data()), qsizetype(bytes.size()));
    QString text;
    for (size_t i = 1; i + 1 < bytes.size(); i += 2)
        text += QChar(char16_t(bytes[i] | bytes[i + 1] << 8));
    return text;
}

void checkError(const dao::DaoException &exception, const QString &text)
{
    const dao::SourceRange &where = exception.where();
    if (exception.number() <= 0 || exception.description().isEmpty())
        throw Finding("an error without number or text");
    if (where.start < 0 || where.length < 0 || where.start + where.length > text.size())
        throw Finding("a place outside the text: " + exception.description().toStdString());
    if (exception.description().size() > 4000)
        throw Finding("a message of pages");
}

std::optional<ast::Statement> parsed(const QString &text)
{
    try {
        return ast::Parser(text).parseStatement();
    } catch (const dao::DaoException &exception) {
        checkError(exception, text);
        return std::nullopt;
    }
}

/// All that comes out of compiling a text, as one text; the number, when it is refused.
QString compiledText(const SmallSchema &schema, const QString &text, std::optional<CompiledStatement> &compiled)
{
    try {
        compiled = compile(schema, text);
    } catch (const dao::DaoException &exception) {
        checkError(exception, text);
        return QString::number(exception.number());
    }
    QStringList lines;
    for (const Parameter &parameter : compiled->parameters)
        lines.append(parameter.name + u' ' + QString::number(int(parameter.type)));
    if (const auto *select = std::get_if<SelectPlan>(&compiled->plan)) {
        for (const Column &column : select->columns)
            lines.append(column.info.name);
        lines += {select->fullSql, select->keySql, select->rowSql};
    } else if (const auto *action = std::get_if<ActionPlan>(&compiled->plan)) {
        for (const ActionPlan::Step &step : action->steps)
            lines.append(step.sql);
    }
    return lines.join(u'\n');
}

} // namespace

void compileText(Bytes bytes)
{
    static const SmallSchema schema;
    const QString text = textOf(bytes);
    const std::optional<ast::Statement> statement = parsed(text);
    if (!statement)
        return;
    const QString printed = ast::printStatement(*statement);
    const std::optional<ast::Statement> again = parsed(printed);
    const QString tooComplex = QString::number(dao::error::TooComplex);
    std::optional<CompiledStatement> compiled;
    std::optional<CompiledStatement> compiledAgain;
    const QString result = compiledText(schema, text, compiled);
    const QString resultAgain = compiledText(schema, printed, compiledAgain);
    // Parentheses that were not in the text may be one too many.
    if (resultAgain == tooComplex)
        return;
    if (!again || ast::printStatement(*again) != printed)
        throw Finding("not read as printed: " + printed.toStdString());
    if (result != resultAgain)
        throw Finding("printed text means something else: " + printed.toStdString() + "\n" + result.toStdString() +
                      "\n" + resultAgain.toStdString());
    if (compiled)
        InnerSql(schema.handle(), *compiled).run();
}

} // namespace fuzz
