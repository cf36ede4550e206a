#pragma once
#include <QList>
#include <QString>

namespace cli {

/// One statement of a script and its first line, from 1.
struct ScriptStatement
{
    QString sql;
    int line = 1;
};

/// Splits a text into statements. Each ends with a semicolon at the end of a line, which the last may lack. Semicolons
/// inside quoted texts and bracketed names are ignored.
QList<ScriptStatement> splitScript(const QString &text);

} // namespace cli
