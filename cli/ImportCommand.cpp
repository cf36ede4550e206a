#include "CommandLine.h"
#include "CommandTable.h"
#include "Console.h"

#include <db/revision/JetImport.h>
#include <QFileInfo>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

void printReport(const db::JetImportReport &report)
{
    qsizetype width = 0;
    qint64 rows = 0;
    for (const db::JetImportReport::Table &table : report.tables) {
        width = std::max(width, table.name.size());
        rows += table.rows;
    }
    for (const db::JetImportReport::Table &table : report.tables)
        print(u"%1  %2\n"_s.arg(table.name.leftJustified(width)).arg(table.rows, 9));
    print(u"Jet %1: %2 tables with %3 rows, %4 relations, %5 stored queries.\n"_s.arg(report.jetVersion)
              .arg(report.tables.size())
              .arg(rows)
              .arg(report.relations.size())
              .arg(report.queries.size()));
    if (report.remarks.isEmpty())
        return print(u"Everything was carried over.\n");
    print(u"The following could not be carried over as it is:\n");
    for (const QString &line : report.remarkLines())
        print(u"    "_s + line + u'\n');
}

} // namespace

int runImport(const Arguments &arguments)
{
    arguments.atMost(1);
    const QString file = QFileInfo(arguments.positional(0, u"FILE.mdb"_s)).absoluteFilePath();
    if (arguments.value(u"out").isEmpty())
        throw UsageError(u"--out DB is missing."_s);
    db::JetImportOptions options;
    options.acceptLosses = arguments.has(u"damaged");
    ConsoleProgress progress;
    printReport(db::importJetFile(file, QFileInfo(arguments.value(u"out")).absoluteFilePath(), &progress, options));
    return Done;
}

} // namespace cli
