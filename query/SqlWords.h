#pragma once
#include "Statements.h"

#include <dao/values/Schema.h>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <tarnwick/JMacro.h>

namespace dao {
class Database;
}

namespace query {

/// The names that a query can use: tables with their fields, stored queries with their columns, macros.
struct SqlNames
{
    struct Source
    {
        QString name;
        QList<dao::FieldInfo> fields; ///< of a stored query: names only
        bool isQuery = false;
    };
    QList<Source> sources;
    tarnwick::JMacro macros;

    /// The tables and stored queries that users see. Does not read any rows.
    static SqlNames of(const dao::Database &database);
    const Source *source(QStringView name) const;
};

/// Kinds of words in a statement, for their colours.
enum class WordKind { Other, Keyword, Function, Field, Table, Parameter, Macro, Text, Number, Date, Fault };

struct StyledWord
{
    TextPart part;
    WordKind kind = WordKind::Other;
    bool operator==(const StyledWord &) const = default;
};

/// Finds the kind of each word by the engine's own tokens and the names of the database.
class SqlWords
{
public:
    explicit SqlWords(const SqlNames &names = {});
    /// The words of a text in order; blanks and symbols are left out.
    QList<StyledWord> words(const QString &text) const;

private:
    QSet<QString> m_fields; ///< in lower case
    QSet<QString> m_tables;
    QSet<QString> m_macros; ///< without brackets
};

} // namespace query
