#include "RowOutput.h"

#include "Console.h"

#include <dao/QueryDef.h>
#include <dao/values/CellFailure.h>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/Messages.h>
#include <query/Messages.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

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

} // namespace

bool connectFor(Target &target, RowWriter &writer)
{
    if (target.connect())
        return true;
    const tarnwick::Message &message = db::messages::kConnectDatabase;
    writer.fail(dao::DaoException(message.number, programName(), QString::fromUtf16(message.text)));
    return false;
}

bool runStatement(Target &target, const QString &name, const QString &sql, RowWriter &writer)
{
    try {
        dao::QueryDef query(target.session().database(), sql);
        const bool returnsRows = query.returnsRows();
        query::ParameterResolver resolver(target.queryContext(), target.prompts());
        if (!resolver.resolve(name, query)) {
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

} // namespace cli
