#pragma once
#include <QStringView>

namespace dao {

/// True if the text is a valid name of a table, field, index, relation or query: not too long, no leading blank, no
/// control characters and none of . ! ` [ ].
bool isValidName(QStringView name);

} // namespace dao
