#pragma once
#include <QList>
#include <QStringList>

namespace cli {

/// Prints rows of text in aligned columns with titles. The widths are those of the first rows, which are held back
/// until then; so memory does not depend on the number of rows.
class ColumnPrinter
{
public:
    /// rightAligned: true for columns aligned to the right, such as numbers; missing elements are false.
    explicit ColumnPrinter(const QStringList &titles, const QList<bool> &rightAligned = {});

    void row(const QStringList &cells);
    /// Prints the rows that are still held back. Call once, after the last row.
    void end();
    qint64 rows() const { return m_rows; }

private:
    static constexpr int kRowsHeld = 1000;

    void release();
    void printCells(const QStringList &cells) const;

    QList<bool> m_rightAligned;
    QList<QStringList> m_held; ///< title row first; empty after printing
    QList<qsizetype> m_widths;
    qint64 m_rows = 0;
};

} // namespace cli
