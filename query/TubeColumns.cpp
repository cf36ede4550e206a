#include "TubeColumns.h"

#include <cmath>
#include <dao/values/Errors.h>
#include <vector>

namespace query {

using ellery::Axis;

namespace {

int find(const QStringList &columns, QLatin1StringView name)
{
    for (qsizetype i = 0; i < columns.size(); ++i)
        if (columns[i].compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

} // namespace

TubeColumns::TubeColumns(const QStringList &columns, const ellery::SteamGen &steamGen)
    : m_steamGen(&steamGen)
    , m_row(find(columns, QLatin1StringView("row")))
    , m_col(find(columns, QLatin1StringView("col")))
    , m_sec(find(columns, QLatin1StringView("sec")))
{
}

int TubeColumns::number(const dao::Value &value, Axis axis) const
{
    switch (value.type()) {
    case dao::Value::Type::Short:
    case dao::Value::Type::Long:
    case dao::Value::Type::Byte:
        return int(value.integer());
    case dao::Value::Type::Text:
        return m_steamGen->stringToNumber(axis, value.text());
    case dao::Value::Type::Float:
    case dao::Value::Type::Double:
    case dao::Value::Type::Currency: {
        // Aggregates and arithmetic return whole numbers as reals.
        const double number = value.real();
        return number >= 0 && number <= INT16_MAX && number == std::floor(number) ? int(number) : -1;
    }
    default:
        return -1;
    }
}

int TubeColumns::tube(const Cell &cell) const
{
    try {
        const int sec = m_sec < 0 ? 0 : number(cell(m_sec), Axis::Sec);
        const int row = number(cell(m_row), Axis::Row);
        const int col = number(cell(m_col), Axis::Col);
        return m_steamGen->findTube(ellery::TubeAddress::of(sec, row, col));
    } catch (const dao::DaoException &exception) {
        if (exception.number() == dao::error::RecordDeleted)
            return -1;
        throw;
    }
}

int TubeColumns::failedColumn(const Cell &cell) const
{
    try {
        for (const int column : {m_sec, m_row, m_col})
            if (column >= 0 && cell(column).isError())
                return column;
    } catch (const dao::DaoException &exception) {
        if (exception.number() != dao::error::RecordDeleted)
            throw;
    }
    return -1;
}

TubeColumns tubeColumnsOf(const QueryResult &result, const ellery::SteamGen &steamGen)
{
    QStringList names;
    for (int i = 0; i < result.columnCount(); ++i)
        names.append(result.column(i).name);
    return {names, steamGen};
}

int totalTubes(const QueryResult &result, const ellery::SteamGen &steamGen)
{
    const TubeColumns columns = tubeColumnsOf(result, steamGen);
    if (!columns.isComplete())
        return -1;
    std::vector<bool> counted(size_t(steamGen.numTube()));
    int count = 0;
    for (qint64 row = 0; row < result.rowCount(); ++row) {
        const int tube = columns.tube([&result, row](int column) { return result.value(row, column); });
        if (tube < 0 || counted[size_t(tube)])
            continue;
        counted[size_t(tube)] = true;
        ++count;
    }
    return count;
}

} // namespace query
