#include "ColumnPrinter.h"
#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"
#include "TextOrJson.h"

#include <dao/Explain.h>
#include <db/FieldDefinition.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <query/Messages.h>
#include <query/StatementWords.h>
#include <tarnwick/Failures.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

QString typeText(const dao::FieldInfo &field)
{
    const QString name = db::daoTypeName(field.type);
    return field.type == dao::DataType::Text && field.size > 0 ? u"%1 %2"_s.arg(name).arg(field.size) : name;
}

/// Source of a column's values: table and field, or "calculated".
QString sourceText(const dao::sql::Column &column)
{
    const dao::FieldInfo &info = column.info;
    return info.sourceTable.isEmpty() ? u"(expression)"_s : info.sourceTable + u'.' + info.sourceField;
}

QString updatableText(const dao::Explanation &explanation)
{
    return explanation.whyNot == dao::sql::NotUpdatable::No ? u"yes"_s
                                                            : u"no: "_s + notUpdatableText(explanation.whyNot);
}

void writeText(const dao::Explanation &explanation, const query::StatementWords &words)
{
    print(words.text());
    print(u"\nStatement: %1\n"_s.arg(explanation.kind));
    if (explanation.returnsRows)
        print(u"Rows can be changed: %1\n"_s.arg(updatableText(explanation)));
    if (!explanation.parameters.isEmpty()) {
        print(u"\n");
        ColumnPrinter printer({u"Parameter"_s, u"Type"_s, u"Declared"_s, u"Perhaps meant"_s});
        for (const dao::sql::Parameter &parameter : explanation.parameters)
            printer.row({parameter.name, db::daoTypeName(parameter.type), parameter.declared ? u"yes"_s : QString(),
                         parameter.suggestion});
        printer.end();
    }
    if (!explanation.columns.isEmpty()) {
        print(u"\n");
        QStringList titles{u"Column"_s, u"Type"_s, u"Source"_s};
        if (explanation.returnsRows)
            titles.append(u"Changeable"_s);
        ColumnPrinter printer(titles);
        for (const dao::sql::Column &column : explanation.columns) {
            QStringList cells{column.info.name, typeText(column.info), sourceText(column)};
            if (explanation.returnsRows)
                cells.append(column.updatable ? u"yes"_s : QString());
            printer.row(cells);
        }
        printer.end();
    }
    for (const dao::Explanation::Step &step : explanation.steps) {
        print(u"\nInner engine, %1:\n  %2\n"_s.arg(step.purpose, step.sql));
        for (const QString &line : step.plan)
            print(u"    "_s + line + u'\n');
    }
}

QJsonObject json(const dao::Explanation &explanation, const query::StatementWords &words)
{
    QJsonArray advice;
    for (const query::StatementWords::Advice &each : words.advice)
        advice.append(QJsonObject{{u"text"_s, each.text}, {u"create"_s, each.create}});
    QJsonArray parameters;
    for (const dao::sql::Parameter &parameter : explanation.parameters)
        parameters.append(QJsonObject{{u"name"_s, parameter.name},
                                      {u"type"_s, db::daoTypeName(parameter.type)},
                                      {u"declared"_s, parameter.declared},
                                      {u"suggestion"_s, parameter.suggestion}});
    QJsonArray columns;
    for (const dao::sql::Column &column : explanation.columns)
        columns.append(QJsonObject{{u"name"_s, column.info.name},
                                   {u"type"_s, db::daoTypeName(column.info.type)},
                                   {u"size"_s, column.info.size},
                                   {u"sourceTable"_s, column.info.sourceTable},
                                   {u"sourceField"_s, column.info.sourceField},
                                   {u"updatable"_s, column.updatable}});
    QJsonArray steps;
    for (const dao::Explanation::Step &step : explanation.steps)
        steps.append(QJsonObject{
            {u"purpose"_s, step.purpose}, {u"sql"_s, step.sql}, {u"plan"_s, QJsonArray::fromStringList(step.plan)}});
    QJsonObject object{{u"statement"_s, explanation.kind},
                       {u"parameters"_s, parameters},
                       {u"columns"_s, columns},
                       {u"words"_s, QJsonArray::fromStringList(words.steps)},
                       {u"advice"_s, advice},
                       {u"innerEngine"_s, steps}};
    if (explanation.returnsRows) {
        object.insert(u"updatable"_s, explanation.whyNot == dao::sql::NotUpdatable::No);
        object.insert(u"whyNotUpdatable"_s, notUpdatableText(explanation.whyNot));
    }
    return object;
}

} // namespace

int runExplain(const Arguments &arguments)
{
    arguments.atMost(2);
    const bool isJson = wantsJson(arguments);
    const QString path = arguments.positional(0, u"DIR"_s);
    const QString sql = arguments.positional(1, u"STATEMENT"_s);
    Target target(path, arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect(Target::Use::Read))
        return Failed;
    const auto explain = [&] {
        dao::Database &database = target.session().database();
        const dao::Explanation explanation = dao::explain(database, sql);
        const auto words = query::StatementWords::of(database, sql);
        if (isJson)
            printData(QJsonDocument(json(explanation, words)).toJson());
        else
            writeText(explanation, words);
    };
    return tarnwick::attempt(target.prompts(), explain, query::messages::kExecute) ? Done : Failed;
}

} // namespace cli
