#pragma once
#include <dao/values/Value.h>
#include <db/ColumnFormat.h>

namespace query {

/// Formats a cell of a result by the format of its column: numbers and texts in printf style, dates by strftime's
/// rules, currency in the user's locale, a Boolean as one of the format's two words ("T F"), or as a number if the
/// format is numeric. Null gives an empty text.
QString cellText(const dao::Value &value, const QString &format);
inline QString cellText(const dao::Value &value, const db::ColumnFormat &column)
{
    return cellText(value, column.format);
}

/// Number and text of the error if the calculation of the cell failed; else empty.
QString cellTip(const dao::Value &value);

} // namespace query
