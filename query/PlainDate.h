#pragma once
#include <QString>

namespace query {

/// A stored date as "mm/dd/yyyy hh:mm:ss", or in a form of QDateTime::toString().
QString plainDate(double days);
QString plainDate(double days, QStringView form);

} // namespace query
