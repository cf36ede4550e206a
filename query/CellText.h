#pragma once
#include <dao/values/Value.h>
#include <db/ColumnFormat.h>

namespace query {

/// A cell of a result as text, by its column's format: numbers and texts printf style, dates by strftime's rules,
/// currency as the locale writes it, a Boolean as one of the format's two words ("T F"), or as a number when the format
/// is one. Null is empty.
QString cellText(const dao::Value &value, const QString &format);
inline QString cellText(const dao::Value &value, const db::ColumnFormat &column)
{
    return cellText(value, column.format);
}

/// More about a cell: number and text of the error with which its calculation failed; empty for a cell with a value.
QString cellTip(const dao::Value &value);

} // namespace query
