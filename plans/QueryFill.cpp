#include "QueryFill.h"

#include "Messages.h"
#include "QuerySource.h"

#include <query/CellText.h>
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
    // The records of the query follow, each with row, col and sec of a tube.
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

FillResult QueryFill::pick(const FillInput &input) const
{
    FillResult result;
    result.tubes = tubes;
    result.fillCount = fillCount;
    if (!input.records)
        return result;
    const query::TubeColumns columns = addressColumns(*input.records, input.component);
    if (const QString missing = missingFields(columns); !missing.isEmpty()) {
        result.tubes.clear();
        result.remarks.append(remark(FillRemark::Kind::Error, messages::kQueryFieldsMissing, missing));
        return result;
    }
    Invalid invalid;
    pickTubes(input, columns, result, invalid);
    if (invalid.count > 0)
        result.remarks.append({FillRemark::Kind::Question, messages::kQueryTubesMissing.number, questionOf(invalid)});
    return result;
}

QString QueryFill::questionOf(const Invalid &invalid) const
{
    const QString plural = invalid.count < 2 ? u" that is for a tube that does"_s : u"s that are for tubes that do"_s;
    QString text =
        tarnwick::format(messages::kQueryTubesMissing.text,
                         tarnwick::SuitePath(parameters.query.name).relativeTo(u"queries"_s), invalid.count, plural);
    if (invalid.failed > 0)
        text += u"\n\n"_s + tarnwick::format(messages::kQueryAddressFailed.text, invalid.failed, invalid.record,
                                             invalid.field, invalid.error);
    return text;
}

void QueryFill::pickTubes(const FillInput &input, const query::TubeColumns &columns, FillResult &result,
                          Invalid &invalid)
{
    const QueryRecords &records = *input.records;
    std::vector<bool> taken(size_t(input.component.numTube()));
    result.tubes.clear();
    result.fillCount = records.rowCount();
    for (int record = 0; record < result.fillCount; ++record) {
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
            result.recordsWithoutTube.append(record);
        } else if (!taken[size_t(tube)]) {
            result.tubes.append(tube);
            taken[size_t(tube)] = true;
        }
    }
    result.tubes.squeeze();
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
