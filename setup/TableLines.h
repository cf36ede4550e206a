#pragma once
#include <QList>
#include <QString>
#include <QStringList>

namespace setup {

/// Splits a text that a spreadsheet program has written into lines of cells. Cells are apart by tabs, semicolons or
/// commas: the first of these that occurs in the first line. A cell in double quotes may contain separators and line
/// ends. Blank lines and lines that begin with "#" are skipped.
///
/// The component's own tables are understood, too: "!name" lines are left out, and the number of rows that they state
/// is compared.
class TableLines
{
public:
    explicit TableLines(const QString &text);

    /// Moves to the next line; false at the end.
    bool next();
    /// 1-based number in the file; of a line with quoted line ends, that of its beginning.
    int line() const { return m_line; }
    QChar separator() const { return m_separator; }
    const QStringList &cells() const { return m_cells; }
    /// Empty beyond the end of the line.
    QString cell(int column) const { return m_cells.value(column); }
    /// What is wrong with the text as a whole, with its line. Call at the end.
    const QList<std::pair<int, QString>> &faults() const { return m_faults; }

private:
    void split();
    void property();

    QString m_text;
    qsizetype m_at = 0;
    int m_line = 0;
    int m_nextLine = 1;
    QChar m_separator;
    QStringList m_cells;
    qint64 m_rows = -1; ///< without the heading
    QList<std::pair<int, QString>> m_faults;
};

} // namespace setup
