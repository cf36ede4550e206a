#pragma once
#include <QString>

namespace dao::functions {

/// Where a part first stands in a text at or behind a place; -1 when it does not. However the two are made, it takes
/// time in proportion to their lengths once they are long.
qsizetype findText(const QString &text, const QString &part, qsizetype from, Qt::CaseSensitivity sensitivity);

/// Where it last stands at or before a place.
qsizetype findLastText(const QString &text, const QString &part, qsizetype from, Qt::CaseSensitivity sensitivity);

} // namespace dao::functions
