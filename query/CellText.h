#pragma once
#include <dao/values/Value.h>
#include <db/ColumnFormat.h>

namespace query {

/// A cell of a result in the format of its column, see CellPrinter::formatted().
QString cellText(const dao::Value &value, const QString &format);
inline QString cellText(const dao::Value &value, const db::ColumnFormat &column)
{
    return cellText(value, column.format);
}

/// Number and text of the error if the calculation of the cell failed; else empty.
QString cellTip(const dao::Value &value);

} // namespace query
