#pragma once
#include <QList>
#include <QString>

namespace cli {

/// One statement of a script and the line it begins on, from 1.
struct ScriptStatement
{
    QString sql;
    int line = 1;
};

/// A text taken apart into statements, each ended by a semicolon at the end of a line; the last may lack it. A
/// semicolon inside a quoted text or a bracketed name ends nothing.
QList<ScriptStatement> splitScript(const QString &text);

} // namespace cli
