#include "CommandLine.h"
#include "CommandTable.h"
#include "RowOutput.h"
#include "SqlScript.h"

#include <dao/ProgressScope.h>
#include <db/SessionTransaction.h>
#include <QStringDecoder>
#include <tarnwick/FileWriter.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestScript = 64 * 1024 * 1024;

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
        if (!runStatement(target, {}, statement.sql, writer)) {
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
    const auto writer = makeRowWriter(arguments);
    const QString path = arguments.positional(0, u"DIR"_s);
    const QString sql = hasScript ? QString() : arguments.positional(1, u"STATEMENT"_s);

    Target target(path, arguments, Target::Takes::ProjectOrDatabase);
    if (!connectFor(target, *writer))
        return Failed;
    ConsoleProgress progress;
    const dao::ProgressScope cancellable(target.session().database(), &progress);
    const bool done = hasScript ? runScript(target, target.pathOf(arguments.value(u"file")), *writer)
                                : runStatement(target, {}, sql, *writer);
    return done ? Done : Failed;
}

} // namespace cli
