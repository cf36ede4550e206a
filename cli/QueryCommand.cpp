#include "CommandLine.h"
#include "CommandTable.h"
#include "PdfOutput.h"
#include "RowOutput.h"
#include "TubeFile.h"

#include <dao/ProgressScope.h>
#include <dao/QueryDef.h>
#include <query/Messages.h>
#include <query/ResultExport.h>
#include <query/StoredQueryCommands.h>
#include <tarnwick/Failures.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

bool isPdf(const QString &path)
{
    return path.endsWith(u".pdf"_s, Qt::CaseInsensitive);
}

/// Runs the query for its rows. Returns false after reporting the error.
bool runForRows(Target &target, const query::QueryDocument &document, query::QueryResult &result,
                tarnwick::Progress *progress)
{
    bool hasRows = false;
    const auto run = [&] {
        dao::QueryDef definition(target.session().database(), document.sql);
        // A query that changes data is not run when its rows are wanted.
        if (!definition.returnsRows())
            throw tarnwick::Error(u"The query has no rows to write. Leave out --out to run it."_s);
        hasRows = result.run(document.name, definition, progress);
    };
    return tarnwick::attempt(target.prompts(), run, query::messages::kExecute) && hasRows;
}

/// Runs the query and writes its rows to a file. Returns false after reporting the error.
bool writeFile(Target &target, const query::QueryDocument &document, const QString &path)
{
    ConsoleProgress progress;
    query::QueryResult result(target.session(), target.queryContext());
    if (!runForRows(target, document, result, &progress))
        return false;
    const auto write = [&] {
        if (isPdf(path))
            return writePdf(target, document, result, path, &progress);
        const query::ExportForm form = query::exportFormOf(path).value_or(query::ExportForm::Text);
        const dao::CellFailures failures = query::exportRows(result, form, path, &progress);
        if (!failures.isEmpty())
            target.prompts().information(query::messages::kCellsFailed, failures.summary());
    };
    if (!tarnwick::attempt(target.prompts(), write, query::messages::kExportResults))
        return false;
    print(tarnwick::format(query::messages::kEntries.text, result.rowCount()) + u'\n');
    return true;
}

/// Reads the query that an argument names. Returns false after reporting the error.
bool readDocument(Target &target, const QString &name, query::QueryDocument &document)
{
    if (query::QueryDocument::isFileName(name)) {
        const auto read = [&] { query::readQueryFile(document, target.pathOf(name), target.queryContext().roots); };
        return tarnwick::attempt(target.prompts(), read, query::messages::kReadFile);
    }
    const std::optional<QString> sql = query::fetchQuery(target.session(), name);
    document.name = name;
    document.sql = sql.value_or(QString());
    if (!sql)
        printError(u"\"arvo-cli queries\" lists the stored queries; \"%1\" is none.\n"_s.arg(name));
    return sql.has_value();
}

} // namespace

int runQuery(const Arguments &arguments)
{
    arguments.atMost(2);
    const auto writer = makeRowWriter(arguments);
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString name = arguments.positional(1, u"NAME or FILE.qry"_s);
    const QString out = arguments.value(u"out");
    if (arguments.has(u"out") && !query::exportFormOf(out) && !isPdf(out))
        throw UsageError(u"--out needs a name that ends in .txt, .csv, .xlsx or .pdf."_s);

    Target target(folder, arguments, Target::Takes::ProjectOrDatabase);
    const QString path = out.isEmpty() ? QString() : placeToWrite(target, out);
    query::QueryDocument document;
    document.layout = tarnwick::JTablePrintArg::forResults(); // as in the SQL editor
    if (!(path.isEmpty() ? connectFor(target, *writer) : target.connect()) || !readDocument(target, name, document))
        return Failed;
    if (!path.isEmpty())
        return writeFile(target, document, path) ? Done : Failed;
    ConsoleProgress progress;
    const dao::ProgressScope cancellable(target.session().database(), &progress);
    return runStatement(target, document.name, document.sql, *writer) ? Done : Failed;
}

} // namespace cli
