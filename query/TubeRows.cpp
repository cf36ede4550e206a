#include "TubeRows.h"

#include "TubeColumns.h"

namespace query {

using namespace Qt::StringLiterals;

namespace {

int tubeOf(const TubeColumns &columns, const QueryResult &result, qint64 row)
{
    return columns.tube([&result, row](int column) { return result.value(row, column); });
}

QList<qint32> tubesIn(const std::vector<bool> &marked)
{
    QList<qint32> tubes;
    for (size_t i = 0; i < marked.size(); ++i)
        if (marked[i])
            tubes.append(qint32(i));
    return tubes;
}

} // namespace

bool identifiesTubes(const QueryResult &result, const ellery::SteamGen &steamGen)
{
    return tubeColumnsOf(result, steamGen).isComplete();
}

QList<qint32> tubesOfRows(const QueryResult &result, const ellery::SteamGen &steamGen, const QList<int> &rows,
                          tarnwick::Progress *progress)
{
    const TubeColumns columns = tubeColumnsOf(result, steamGen);
    std::vector<bool> marked(size_t(steamGen.numTube()));
    tarnwick::ProgressLoop loop(progress, rows.size(), u"Finding tubes ..."_s);
    qint64 done = 0;
    for (const int row : rows) {
        loop.tick(++done);
        if (const int tube = tubeOf(columns, result, row); tube >= 0)
            marked[size_t(tube)] = true;
    }
    return tubesIn(marked);
}

std::vector<bool> rowsOfTubes(const QueryResult &result, const ellery::SteamGen &steamGen, const QList<qint32> &tubes,
                              tarnwick::Progress *progress)
{
    const TubeColumns columns = tubeColumnsOf(result, steamGen);
    std::vector<bool> wanted(size_t(steamGen.numTube()));
    for (const qint32 tube : tubes)
        wanted[size_t(tube)] = true;
    std::vector<bool> rows(size_t(result.rowCount()));
    tarnwick::ProgressLoop loop(progress, result.rowCount(), u"Finding rows ..."_s);
    for (qint64 row = 0; row < result.rowCount(); ++row) {
        loop.tick(row);
        const int tube = tubeOf(columns, result, row);
        rows[size_t(row)] = tube >= 0 && wanted[size_t(tube)];
    }
    return rows;
}

} // namespace query
