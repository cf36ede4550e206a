#pragma once
#include <QString>

namespace dao::functions {

/// The index of the first occurrence of part at or after from; -1 if there is none. Long texts are searched in linear
/// time, whatever their content.
qsizetype findText(const QString &text, const QString &part, qsizetype from, Qt::CaseSensitivity sensitivity);

/// The index of the last occurrence that starts at or before from; -1 if there is none.
qsizetype findLastText(const QString &text, const QString &part, qsizetype from, Qt::CaseSensitivity sensitivity);

} // namespace dao::functions
