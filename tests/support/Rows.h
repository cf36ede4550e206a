#pragma once
#include <dao/Recordset.h>
#include <QStringList>

namespace support {

/// The rows of a query, the cells of each joined by "|", Null as "-", empty text as empty.
inline QStringList rowsOf(dao::Database &database, const QString &sql, const QString &empty = {})
{
    using Type = dao::Value::Type;
    const auto cell = [&empty](const dao::Value &value) {
        switch (value.type()) {
        case Type::Null:
            return QStringLiteral("-");
        case Type::Text:
            return value.text().isEmpty() ? empty : value.text();
        case Type::Float:
        case Type::Double:
        case Type::Date:
            return QString::number(value.real());
        default:
            return QString::number(value.integer());
        }
    };
    QStringList lines;
    dao::Recordset recordset(database);
    for (recordset.open(dao::Recordset::Type::Snapshot, sql); !recordset.isEof(); recordset.moveNext()) {
        QStringList cells;
        for (int i = 0; i < recordset.fieldCount(); ++i)
            cells.append(cell(recordset.value(i)));
        lines.append(cells.join(QLatin1Char('|')));
    }
    return lines;
}

} // namespace support
