#include "JFileTable.h"

#include "CellText.h"
#include "TableScanner.h"

#include <tarnwick/base/Error.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;

namespace fenwright {

JFileTable JFileTable::read(const QString &path, const QStringList &requiredColumns, int minimumCells)
{
    return parse(tarnwick::readFile(path), path, requiredColumns, minimumCells);
}

JFileTable JFileTable::parse(const QByteArray &content, const QString &name, const QStringList &requiredColumns,
                             int minimumCells)
{
    TableScanner scanner(content, name, requiredColumns);
    JFileTable table(scanner.columns());
    table.m_name = name;
    while (scanner.next()) {
        scanner.requireCells(minimumCells);
        QStringList cells;
        cells.reserve(scanner.cellCount());
        for (int i = 0; i < scanner.cellCount(); ++i)
            cells.append(scanner.text(i));
        table.m_rows.append(cells);
        table.m_lines.append(scanner.line());
    }
    return table;
}

QByteArray JFileTable::toBytes() const
{
    TableWriter writer;
    writer.heading(m_columns);
    for (const QStringList &row : m_rows) {
        for (const QString &cell : row)
            writer.cell(cell);
        writer.endRow();
    }
    return writer.bytes();
}

void JFileTable::write(const QString &path) const
{
    tarnwick::writeFileAtomically(path, toBytes());
}

int JFileTable::column(QStringView name) const
{
    for (int i = 0; i < m_columns.size(); ++i) {
        if (name.compare(m_columns[i], Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QString JFileTable::text(int row, int column) const
{
    return column < 0 ? QString() : m_rows[row].value(column);
}

int JFileTable::integer(int row, int column, int minimum, int maximum, int whenEmpty) const
{
    const QString cell = text(row, column);
    if (cell.trimmed().isEmpty())
        return whenEmpty;
    const std::optional<qint64> value = cellInteger(cell.toUtf8());
    if (!value || *value < minimum || *value > maximum)
        fail(row, column, u"'%1' is not a whole number from %2 to %3"_s.arg(cell).arg(minimum).arg(maximum));
    return int(*value);
}

double JFileTable::number(int row, int column, double whenEmpty) const
{
    const QString cell = text(row, column);
    if (cell.trimmed().isEmpty())
        return whenEmpty;
    const std::optional<double> value = cellNumber(cell.toUtf8());
    if (!value)
        fail(row, column, u"'%1' is not a number"_s.arg(cell));
    return *value;
}

void JFileTable::fail(int row, int column, const QString &reason) const
{
    throw tarnwick::FileError(m_name, line(row), u"Column '%1': %2."_s.arg(m_columns.value(column), reason));
}

} // namespace fenwright
