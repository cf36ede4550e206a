#pragma once
#include <QList>
#include <QStringList>

namespace cli {

/// Prints rows of text padded to columns under their titles. The widths are those of the first rows, which are held
/// back until they are known, so that a million rows need no memory.
class ColumnPrinter
{
public:
    /// Columns whose place in rightAligned is true stand to the right, as numbers do; missing places are false.
    explicit ColumnPrinter(const QStringList &titles, const QList<bool> &rightAligned = {});

    void row(const QStringList &cells);
    /// Prints what is still held back. Call once, after the last row.
    void end();
    qint64 rows() const { return m_rows; }

private:
    static constexpr int kRowsHeld = 1000;

    void release();
    void printCells(const QStringList &cells) const;

    QList<bool> m_rightAligned;
    QList<QStringList> m_held; ///< the titles first; empty once they are printed
    QList<qsizetype> m_widths;
    qint64 m_rows = 0;
};

} // namespace cli
