#include "CellText.h"

#include "CellPrinter.h"

#include <dao/values/CellFailure.h>

namespace query {

QString cellText(const dao::Value &value, const QString &format)
{
    return CellPrinter().formatted(value, format).toString();
}

QString cellTip(const dao::Value &value)
{
    return value.isError() ? dao::failureTip(int(value.integer())) : QString();
}

} // namespace query
