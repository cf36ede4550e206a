#include "CommandLine.h"
#include "CommandTable.h"
#include "SqlOutput.h"
#include "SqlScript.h"
#include "Target.h"

#include <dao/ProgressScope.h>
#include <dao/QueryDef.h>
#include <dao/values/CellFailure.h>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/Messages.h>
#include <db/SessionTransaction.h>
#include <QStringDecoder>
#include <query/Messages.h>
#include <tarnwick/FileWriter.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestScript = 64 * 1024 * 1024;

void writeRows(Target &target, dao::QueryDef &query, RowWriter &writer)
{
    // One pass forward: no keys to keep, the first rows come at once.
    dao::Recordset rows(target.session().database());
    rows.open(dao::Recordset::Type::Snapshot, query);
    writer.begin(rows);
    dao::CellFailures failures;
    QList<dao::Value> cells(rows.fieldCount());
    for (; !rows.isEof(); rows.moveNext()) {
        for (int i = 0; i < rows.fieldCount(); ++i) {
            cells[i] = rows.value(i);
            if (cells[i].isError())
                failures.add(int(cells[i].integer()));
        }
        writer.row(cells);
    }
    writer.end();
    if (!failures.isEmpty())
        printError(u"warning: "_s + failures.summary() + u'\n');
}

dao::DaoException engineError(int number, const QStringList &arguments = {})
{
    return {number, u"DAO.Database"_s, dao::errorText(number, arguments)};
}

// Returns false after reporting the error.
bool runStatement(Target &target, const QString &sql, RowWriter &writer)
{
    try {
        dao::QueryDef query(target.session().database(), sql);
        const bool returnsRows = query.returnsRows();
        query::ParameterResolver resolver(target.queryContext(), target.prompts());
        if (!resolver.resolve({}, query)) {
            writer.fail(engineError(dao::error::TooFewParameters, {QString::number(query.parameterCount())}));
            return false;
        }
        if (returnsRows)
            writeRows(target, query, writer);
        else
            writer.affected(query.execute());
        return true;
    } catch (const dao::DaoException &exception) {
        writer.fail(exception);
        db::showDaoError(target.prompts(), exception, query::messages::kExecute);
        return false;
    } catch (const tarnwick::Cancelled &) {
        writer.fail(engineError(dao::error::CancelledByUser));
        throw;
    }
}

QString readScript(const QString &path)
{
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decode(tarnwick::readFile(path, kLargestScript));
    if (decode.hasError())
        throw tarnwick::Error(u"The file %1 is not text in UTF-8."_s.arg(path));
    return text;
}

bool runScript(Target &target, const QString &path, RowWriter &writer)
{
    const QString text = readScript(path);
    db::SessionTransaction transaction(target.session());
    if (!transaction.begin())
        return false;
    for (const ScriptStatement &statement : splitScript(text)) {
        if (!runStatement(target, statement.sql, writer)) {
            printError(u"in the statement of line %1 of %2; nothing of the file was carried out\n"_s.arg(statement.line)
                           .arg(path));
            transaction.rollback();
            return false;
        }
    }
    return transaction.commit();
}

} // namespace

int runSql(const Arguments &arguments)
{
    const bool hasScript = arguments.has(u"file");
    arguments.atMost(hasScript ? 1 : 2);
    const auto writer = makeRowWriter(arguments.value(u"format", u"table"_s));
    if (!writer)
        throw UsageError(u"--format is table, csv or json."_s);
    const QString path = arguments.positional(0, u"DIR"_s);
    const QString sql = hasScript ? QString() : arguments.positional(1, u"STATEMENT"_s);

    Target target(path, arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect()) {
        const tarnwick::Message &message = db::messages::kConnectDatabase;
        writer->fail(dao::DaoException(message.number, programName(), QString::fromUtf16(message.text)));
        return Failed;
    }
    ConsoleProgress progress;
    const dao::ProgressScope cancellable(target.session().database(), &progress);
    const bool done = hasScript ? runScript(target, target.pathOf(arguments.value(u"file")), *writer)
                                : runStatement(target, sql, *writer);
    return done ? Done : Failed;
}

} // namespace cli
