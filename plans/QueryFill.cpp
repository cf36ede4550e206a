#include "QueryFill.h"

#include "Messages.h"
#include "QuerySource.h"

#include <db/Errors.h>
#include <query/CellText.h>
#include <query/Messages.h>
#include <query/TubeColumns.h>
#include <tarnwick/Paths.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

constexpr int kOwnVersion = 2;

query::TubeColumns addressColumns(const QueryRecords &records, const ellery::SteamGen &steamGen)
{
    QStringList names;
    for (int i = 0; i < records.columnCount(); ++i)
        names.append(records.columnName(i));
    return {names, steamGen};
}

QString missingFields(const query::TubeColumns &columns)
{
    QString text;
    if (!columns.hasRow())
        text += u"\t'row'\n"_s;
    if (!columns.hasCol())
        text += u"\t'col'\n"_s;
    if (!columns.hasSec())
        text += u"\t'sec'"_s;
    return text;
}

} // namespace

QueryFill::QueryFill()
{
    typeKey = u"QUERY"_s;
}

QString QueryFill::className() const
{
    return u"QueryFill"_s;
}

void QueryFill::serialize(tarnwick::JFile &file, int version)
{
    MapFill::serialize(file, version);
    file.version(kOwnVersion);
    parameters.query.serialize(file);
}

void QueryFill::readOldFormat(tarnwick::JFile &file)
{
    const int version = file.version(kOwnVersion);
    if (version == 1) {
        QString unused;
        file.serialize(unused);
        file.serialize(parameters.oldText);
        file.serialize(unused);
        return;
    }
    parameters.query.serialize(file);
    // The records that the query then returned, each the row, col and sec of a tube.
    struct OldRecord
    {
        qint32 row = 0;
        qint32 col = 0;
        qint32 sec = 0;
    };
    QList<OldRecord> records;
    file.list(records, int(sizeof(OldRecord)), [](tarnwick::JFile &f, OldRecord &record) {
        f.serialize(record.row);
        f.serialize(record.col);
        f.serialize(record.sec);
    });
}

void QueryFill::symbolChanged(MapHost &host)
{
    host.queries().rememberMark(parameters.query.name, {symbol, colour});
}

bool QueryFill::compute(MapHost &host)
{
    if (!host.queries().isReady())
        return false;
    const auto records = host.queries().run(parameters.query.name, parameters.query.sql);
    if (!records)
        return false;
    return mapResult(host, *records).has_value();
}

std::optional<tarnwick::Answer> QueryFill::mapResult(MapHost &host, QueryRecords &records)
{
    const query::TubeColumns columns = addressColumns(records, host.steamGen());
    if (const QString missing = missingFields(columns); !missing.isEmpty()) {
        tubes.clear();
        host.prompts().error(messages::kQueryFieldsMissing, missing);
        return tarnwick::Answer::No;
    }
    Invalid invalid;
    try {
        invalid = takeTubes(host, records, columns);
    } catch (const dao::DaoException &exception) {
        // A value may fail as late as when it is read.
        db::showDaoError(host.prompts(), exception, query::messages::kExecute);
        return std::nullopt;
    }
    if (invalid.count == 0)
        return tarnwick::Answer::Yes;
    const QString plural = invalid.count < 2 ? u" that is for a tube that does"_s : u"s that are for tubes that do"_s;
    QString text =
        tarnwick::format(messages::kQueryTubesMissing.text,
                         tarnwick::SuitePath(parameters.query.name).relativeTo(u"queries"_s), invalid.count, plural);
    if (invalid.failed > 0)
        text += u"\n\n"_s + tarnwick::format(messages::kQueryAddressFailed.text, invalid.failed, invalid.record,
                                             invalid.field, invalid.error);
    return host.prompts().ask(tarnwick::Buttons::OkCancel, text, messages::kQueryTubesMissing.number);
}

QueryFill::Invalid QueryFill::takeTubes(MapHost &host, QueryRecords &records, const query::TubeColumns &columns)
{
    const BusyCursor busy(host);
    std::vector<bool> taken(size_t(host.steamGen().numTube()));
    QList<qint32> found;
    const int count = records.rowCount();
    Invalid invalid;
    for (int record = 0; record < count; ++record) {
        const auto cell = [&records, record](int column) { return records.value(record, column); };
        const int tube = columns.tube(cell);
        if (tube < 0) {
            ++invalid.count;
            const int failed = columns.failedColumn(cell);
            if (failed >= 0 && ++invalid.failed == 1) {
                invalid.record = record + 1;
                invalid.field = records.columnName(failed);
                invalid.error = query::cellTip(records.value(record, failed));
            }
            records.setColours(record, kInvalidForeground, kInvalidBackground);
        } else if (!taken[size_t(tube)]) {
            found.append(tube);
            taken[size_t(tube)] = true;
        }
    }
    found.squeeze();
    tubes = std::move(found);
    fillCount = count;
    return invalid;
}

QString QueryFill::entryLabel() const
{
    return tarnwick::SuitePath(parameters.query.name).fileName();
}

QString QueryFill::undoLabel() const
{
    return tarnwick::format(u"Query %S Fill", parameters.query.name);
}

} // namespace plans
