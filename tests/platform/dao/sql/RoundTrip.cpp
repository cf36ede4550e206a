#include "RoundTrip.h"

#include <dao/sql/ast/Parser.h>
#include <dao/sql/ast/Printer.h>
#include <dao/sql/Compiler.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace dao::sql;

namespace {

QStringList textsOf(const CompiledStatement &compiled)
{
    QStringList texts;
    for (const Parameter &parameter : compiled.parameters)
        texts.append(parameter.name + u' ' + QString::number(int(parameter.type)));
    if (const auto *select = std::get_if<SelectPlan>(&compiled.plan)) {
        for (const Column &column : select->columns)
            texts.append(column.info.name);
        texts += {select->fullSql, select->keySql, select->rowSql};
        if (select->crosstab)
            texts += QStringList{select->crosstab->valuesSql, select->crosstab->tail} + select->crosstab->cell;
    } else if (const auto *action = std::get_if<ActionPlan>(&compiled.plan)) {
        for (const ActionPlan::Step &step : action->steps)
            texts.append(step.sql);
    } else if (const auto *into = std::get_if<SelectIntoPlan>(&compiled.plan)) {
        texts += {into->table.name, into->select.fullSql};
    } else if (const auto *create = std::get_if<CreateTablePlan>(&compiled.plan)) {
        for (const dao::FieldInfo &field : create->table.fields)
            texts.append(field.name + QString::number(int(field.type)) + u' ' + QString::number(field.size) + u' ' +
                         field.defaultValue);
        texts.append(create->table.validationRule);
    }
    return texts;
}

std::string compiledText(const dao::SchemaView &schema, const QString &sql)
{
    try {
        return textsOf(compile(schema, sql)).join(u'\n').toStdString();
    } catch (const dao::DaoException &exception) {
        return "error " + std::to_string(exception.number());
    }
}

} // namespace

void expectRoundTrip(const dao::SchemaView &schema, const QString &sql)
{
    try {
        checkSyntax(sql);
    } catch (const dao::DaoException &) {
        return;
    }
    const QString printed = ast::printStatement(ast::Parser(sql).parseStatement());
    SCOPED_TRACE("printed: " + printed.toStdString());
    try {
        EXPECT_EQ(ast::printStatement(ast::Parser(printed).parseStatement()).toStdString(), printed.toStdString());
    } catch (const dao::DaoException &exception) {
        ADD_FAILURE() << exception.what();
    }
    EXPECT_EQ(compiledText(schema, printed), compiledText(schema, sql));
}
