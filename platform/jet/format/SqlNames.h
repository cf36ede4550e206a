#pragma once
#include <QString>

namespace jet::format {

/// A name as it stands in SQL text: in brackets when it is no plain name or a word of the language.
QString sqlName(const QString &name);
/// A field, perhaps behind a table and a dot, as the file holds it in one text: taken as it is when it is bracketed
/// already, else each part as a name.
QString sqlPath(const QString &path);
/// A text literal.
QString sqlText(const QString &text);

} // namespace jet::format
