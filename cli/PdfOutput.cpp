#include "PdfOutput.h"

#include <query/QueryMacros.h>
#include <query/ResultSource.h>
#include <query/SQLOptions.h>
#include <tarnwick/OptionPrompts.h>
#include <tarnwick/paint/Paper.h>
#include <tarnwick/paint/TablePdf.h>

namespace cli {

using namespace Qt::StringLiterals;

void writePdf(Target &target, const query::QueryDocument &document, const query::QueryResult &result,
              const QString &path, tarnwick::Progress *progress)
{
    query::SQLOptions options(u"sql"_s);
    tarnwick::loadOptions(options, target.queryContext().roots, target.prompts());
    query::QueryDocument printed = document;
    query::applyPrintOptions(printed, options);
    printed.layout.title = u"Report"_s;

    const query::ResultSource source(result);
    const tarnwick::JMacro macros =
        query::queryMacros(document, result, target.queryContext(), target.map().component());
    const tarnwick::TablePrint print(source, {.count = source.rowCount(), .row = {}}, printed.layout, macros,
                                     tarnwick::defaultPaper().size(QPageSize::Inch));
    const qint64 cut = tarnwick::storeTablePdf(print, path, printed.layout.title, progress);
    if (cut > 0)
        target.prompts().showInformation(
            u"%1 cells were cut because their column is too narrow for their text."_s.arg(cut));
}

} // namespace cli
