#include "ColumnPrinter.h"
#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"
#include "TextOrJson.h"

#include <db/StoredQueries.h>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <query/Messages.h>
#include <query/QueryDocument.h>
#include <query/QueryVersions.h>
#include <query/StoredQueryCommands.h>
#include <tarnwick/Failures.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestQuery = 128 * 1024 * 1024;
constexpr int kLongestName = 30;

void printQueries(const QList<query::StoredQueryInfo> &queries)
{
    ColumnPrinter printer({u"Query"_s, u"Kind"_s, u"Parameters"_s, u"Error"_s});
    for (const query::StoredQueryInfo &info : queries)
        printer.row({info.name, info.kind, info.parameters.join(u", "_s), info.error});
    printer.end();
}

QJsonDocument queriesJson(const QList<query::StoredQueryInfo> &queries)
{
    QJsonArray array;
    for (const query::StoredQueryInfo &info : queries) {
        QJsonObject object{{u"name"_s, info.name},
                           {u"kind"_s, info.kind},
                           {u"parameters"_s, QJsonArray::fromStringList(info.parameters)}};
        if (!info.error.isEmpty())
            object.insert(u"error"_s, info.error);
        array.append(object);
    }
    return QJsonDocument(QJsonObject{{u"queries"_s, array}});
}

int printVersions(const Target &target, const QString &name)
{
    query::QueryVersions versions(target.databasePath());
    versions.read();
    const QList<query::QueryVersions::Version> found = versions.versionsOf(name);
    if (found.isEmpty())
        throw tarnwick::Error(u"There are no versions of a stored query \"%1\"."_s.arg(name));
    for (qsizetype i = 0; i < found.size(); ++i)
        print(u"Version %1, replaced %2\n%3\n\n"_s.arg(i + 1).arg(found[i].time, found[i].sql.trimmed()));
    return Done;
}

QString readStandardInput()
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        throw tarnwick::Error(u"The standard input cannot be read."_s);
    const QByteArray bytes = input.read(kLargestQuery + 1);
    if (input.error() != QFileDevice::NoError)
        throw tarnwick::Error(u"The standard input cannot be read."_s);
    if (bytes.size() > kLargestQuery)
        throw tarnwick::Error(u"The query is too long."_s);
    return query::textOfQuery(bytes);
}

/// The text to store: of a version, of the standard input, or of a file. Nothing after a file's error was reported.
std::optional<QString> textToStore(Target &target, const QString &name, const Arguments &arguments)
{
    if (arguments.has(u"version")) {
        query::QueryVersions versions(target.databasePath());
        versions.read();
        const QList<query::QueryVersions::Version> found = versions.versionsOf(name);
        const qint64 number = arguments.integer(u"version", 1, 1, query::QueryVersions::kMostVersions);
        if (number > found.size())
            throw tarnwick::Error(u"There are %1 versions of the query \"%2\"."_s.arg(found.size()).arg(name));
        return found[number - 1].sql;
    }
    const QString file = arguments.positional(2, u"FILE or -"_s);
    if (file == "-"_L1)
        return readStandardInput();
    query::QueryDocument document;
    const auto read = [&] { query::readQueryFile(document, target.pathOf(file), target.queryContext().roots); };
    if (!tarnwick::attempt(target.prompts(), read, query::messages::kReadFile))
        return std::nullopt;
    return document.sql;
}

} // namespace

int runQueries(const Arguments &arguments)
{
    arguments.atMost(1);
    const bool isJson = wantsJson(arguments);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::ProjectOrDatabase);
    if (arguments.has(u"versions"))
        return printVersions(target, arguments.value(u"versions"));
    if (!target.connect(Target::Use::Read))
        return Failed;
    const QList<query::StoredQueryInfo> queries = query::storedQueries(target.session().database());
    if (isJson)
        printData(queriesJson(queries).toJson());
    else
        printQueries(queries);
    return Done;
}

int runStoreQuery(const Arguments &arguments)
{
    arguments.atMost(arguments.has(u"version") ? 2 : 3);
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString name = arguments.positional(1, u"NAME"_s).trimmed();
    // A version can be that of a query with a longer name, from another program.
    if (name.isEmpty() || (name.size() > kLongestName && !arguments.has(u"version")))
        throw UsageError(u"NAME needs 1 to %1 characters."_s.arg(kLongestName));
    if (query::QueryDocument::isFileName(name))
        throw UsageError(u"NAME must not end in .qry, which is for files."_s);
    Target target(folder, arguments, Target::Takes::ProjectOrDatabase);
    const std::optional<QString> sql = textToStore(target, name, arguments);
    if (!sql || !target.connect() || !query::storeQuery(target.session(), name, *sql, query::Overwrite::Ask))
        return Failed;
    print(tarnwick::format(query::messages::kStoredQuery.text, name) + u'\n');
    return Done;
}

int runDeleteQuery(const Arguments &arguments)
{
    arguments.atMost(2);
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString name = arguments.positional(1, u"NAME"_s);
    Target target(folder, arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect() || !query::deleteQuery(target.session(), name))
        return Failed;
    print(tarnwick::format(query::messages::kDeletedQuery.text, name) + u'\n');
    return Done;
}

} // namespace cli
