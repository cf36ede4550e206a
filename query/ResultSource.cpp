#include "ResultSource.h"

#include <dao/values/CellFailure.h>
#include <dao/values/OleDate.h>
#include <QDateTime>

namespace query {

using Type = dao::Value::Type;

static QVariant variantOf(const dao::Value &value)
{
    switch (value.type()) {
    case Type::Short:
    case Type::Long:
    case Type::Byte:
        return value.integer();
    case Type::Float:
    case Type::Double:
    case Type::Currency:
        return value.real();
    case Type::Date: {
        const dao::DateParts parts = dao::datePartsOf(value.real());
        return QDateTime(QDate(parts.year, parts.month, parts.day), QTime(parts.hour, parts.minute, parts.second),
                         Qt::UTC);
    }
    case Type::Boolean:
        return value.boolean();
    case Type::Text:
        return value.text();
    case Type::Error:
        return dao::failureWord(int(value.integer()));
    default:
        return {};
    }
}

tarnwick::GridColumn ResultSource::column(int column) const
{
    const db::ColumnFormat &format = m_result->column(column);
    tarnwick::GridColumn grid;
    grid.title = format.title;
    grid.width = format.width;
    grid.align = tarnwick::ColumnAlign(format.alignment);
    return grid;
}

QVariant ResultSource::value(int row, int column) const
{
    return variantOf(m_result->value(row, column));
}

} // namespace query
