#pragma once
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace fenwright {

/// A table from a text file that people can read, compare and edit in a spreadsheet, held completely in memory: UTF-8,
/// lines of tab-separated cells, the first line with the column names; "#" lines and blank lines are skipped. Tabs,
/// line ends and backslashes in a cell are written \t, \n, \\. TableScanner reads such texts row by row.
class JFileTable
{
public:
    JFileTable() = default;
    explicit JFileTable(const QStringList &columns)
        : m_columns(columns)
    {
    }

    /// Throws tarnwick::FileError: no heading, a repeated column name, a missing required column, a row with more cells
    /// than columns, a row that ends before its last required column or has fewer cells than minimumCells. Other
    /// missing cells at the end of a row are empty.
    static JFileTable read(const QString &path, const QStringList &requiredColumns, int minimumCells = 0);
    static JFileTable parse(const QByteArray &content, const QString &name, const QStringList &requiredColumns,
                            int minimumCells = 0);
    void write(const QString &path) const;
    QByteArray toBytes() const;

    const QString &fileName() const { return m_name; }
    const QStringList &columns() const { return m_columns; }
    int column(QStringView name) const; ///< -1 if there is none; case is ignored
    int rowCount() const { return int(m_rows.size()); }
    int line(int row) const { return m_lines.value(row); } ///< 1-based line in the file
    /// Empty if column is -1.
    QString text(int row, int column) const;
    /// Throw tarnwick::FileError with file, line and column if the text is not such a number or out of range. An empty
    /// cell gives the default.
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
