#pragma once
#include <QStringView>

namespace dao {

/// True for what can be the name of a table, a field, an index, a relation or a query: not too long, no leading blank,
/// no control characters and none of . ! ` [ ].
bool isValidName(QStringView name);

} // namespace dao
