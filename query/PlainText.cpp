#include "PlainText.h"

#include "CellPrinter.h"

namespace query {

QString plainText(const dao::Value &value)
{
    return CellPrinter().plain(value).toString();
}

} // namespace query
