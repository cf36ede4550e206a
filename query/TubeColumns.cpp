#include "TubeColumns.h"

namespace query {

using ellery::Axis;

TubeColumns::TubeColumns(const QueryResult &result, const ellery::SteamGen &steamGen)
    : m_result(&result)
    , m_steamGen(&steamGen)
    , m_row(result.findColumn(u"row"))
    , m_col(result.findColumn(u"col"))
    , m_sec(result.findColumn(u"sec"))
{
}

int TubeColumns::number(qint64 row, int column, Axis axis) const
{
    const dao::Value value = m_result->value(row, column);
    switch (value.type()) {
    case dao::Value::Type::Short:
    case dao::Value::Type::Long:
    case dao::Value::Type::Byte:
        return int(value.integer());
    case dao::Value::Type::Text:
        return m_steamGen->stringToNumber(axis, value.text());
    case dao::Value::Type::Float:
    case dao::Value::Type::Double: {
        // Aggregates and arithmetic give whole numbers as reals.
        const double number = value.real();
        return number >= 0 && number <= INT16_MAX && number == std::floor(number) ? int(number) : -1;
    }
    default:
        return -1;
    }
}

TubeColumns::Address TubeColumns::address(qint64 row) const
{
    Address address;
    address.row = number(row, m_row, Axis::Row);
    address.col = number(row, m_col, Axis::Col);
    if (m_sec >= 0)
        address.sec = number(row, m_sec, Axis::Sec);
    return address;
}

int TubeColumns::tube(qint64 row) const
{
    const Address at = address(row);
    return m_steamGen->findTube(at.row, at.col, at.sec);
}

int totalTubes(const QueryResult &result, ellery::SteamGen &steamGen)
{
    const TubeColumns columns(result, steamGen);
    if (!columns.isComplete())
        return -1;
    steamGen.clearMarks();
    int count = 0;
    for (qint64 row = 0; row < result.rowCount(); ++row) {
        const int tube = columns.tube(row);
        if (tube < 0 || steamGen.isMarked(tube))
            continue;
        steamGen.setMarked(tube, true);
        ++count;
    }
    return count;
}

} // namespace query
