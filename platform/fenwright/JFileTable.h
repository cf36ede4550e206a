#pragma once
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace fenwright {

/// A table in a text file that a person can read, diff and make in a spreadsheet, held whole: UTF-8, lines of
/// tab-separated cells, the first line the column names, "#" lines and blank lines skipped. Tabs, line ends and
/// backslashes in a cell are written \t, \n, \\. TableScanner reads the same texts row by row.
class JFileTable
{
public:
    JFileTable() = default;
    explicit JFileTable(const QStringList &columns)
        : m_columns(columns)
    {
    }

    /// Throws tarnwick::FileError: no heading, a name twice, a required column that is missing, a row with more cells
    /// than columns, a row that ends before its last required column or has fewer cells than minimumCells. Other
    /// missing cells at a row's end are empty.
    static JFileTable read(const QString &path, const QStringList &requiredColumns, int minimumCells = 0);
    static JFileTable parse(const QByteArray &content, const QString &name, const QStringList &requiredColumns,
                            int minimumCells = 0);
    void write(const QString &path) const;
    QByteArray toBytes() const;

    const QString &fileName() const { return m_name; }
    const QStringList &columns() const { return m_columns; }
    int column(QStringView name) const; ///< -1 when it is not there; case does not count
    int rowCount() const { return int(m_rows.size()); }
    int line(int row) const { return m_lines.value(row); } ///< 1-based line in the file
    /// Empty for column -1.
    QString text(int row, int column) const;
    /// Throw tarnwick::FileError naming file, line and column for text that is not such a number or out of range; an
    /// empty cell gives the default.
    int integer(int row, int column, int minimum, int maximum, int whenEmpty) const;
    double number(int row, int column, double whenEmpty) const;
    void addRow(const QStringList &cells) { m_rows.append(cells); }
    [[noreturn]] void fail(int row, int column, const QString &reason) const;

private:
    QString m_name;
    QStringList m_columns;
    QList<QStringList> m_rows;
    QList<int> m_lines;
};

} // namespace fenwright
