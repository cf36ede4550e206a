#pragma once
#include <QString>

namespace jet::format {

/// A name in SQL text: bracketed if it is not a plain name or is a reserved word.
QString sqlName(const QString &name);
/// A field, optionally preceded by a table and a dot, stored in the file as one text. A bracketed text is used
/// unchanged; otherwise each part is converted like a name.
QString sqlPath(const QString &path);
/// A text literal.
QString sqlText(const QString &text);

} // namespace jet::format
