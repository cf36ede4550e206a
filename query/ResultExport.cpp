#include "ResultExport.h"

#include "Messages.h"

#include <db/Errors.h>
#include <tarnwick/FileWriter.h>

namespace query {

using namespace Qt::StringLiterals;

void exportText(const QueryResult &result, const QString &machinePath, tarnwick::Progress *progress)
{
    tarnwick::AtomicFile file(machinePath);
    tarnwick::ProgressLoop loop(progress, result.rowCount(), u"Exporting"_s);
    for (qint64 row = 0; row < result.rowCount(); ++row) {
        loop.tick(row);
        QString line = u"|"_s;
        for (int column = 0; column < result.columnCount(); ++column)
            line += result.cellText(row, column).rightJustified(result.column(column).width) + u'|';
        line += u'\n';
        file.write(line.toUtf8());
    }
    file.commit();
}

bool exportText(const QueryResult &result, const QString &machinePath, tarnwick::UserPrompts &prompts,
                tarnwick::Progress *progress)
{
    try {
        exportText(result, machinePath, progress);
        return true;
    } catch (const tarnwick::FileError &error) {
        prompts.showError(tarnwick::kErrorSeverity, messages::kExportResults.number,
                          QString::fromUtf16(messages::kExportResults.text) + u"\n\n"_s + error.text());
    } catch (const tarnwick::Cancelled &) {
        prompts.status(messages::kCancelled);
    } catch (const dao::DaoException &exception) {
        db::showDaoError(prompts, exception, messages::kExportResults);
    }
    return false;
}

} // namespace query
