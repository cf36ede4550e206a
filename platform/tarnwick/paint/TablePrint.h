#pragma once
#include "CellPainter.h"

#include <tarnwick/base/Progress.h>
#include <tarnwick/GridSource.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/JTablePrintArg.h>

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QSizeF>

#include <functional>
#include <vector>

class QPagedPaintDevice;
class QPainter;

namespace tarnwick {

/// The rows of a source that are printed, in order: all, the visible or the selected ones.
struct PrintRows
{
    int count = 0;
    std::function<int(int)> row; ///< source row at a position; if empty, the position itself
};

/// Prints a table: the seven sections of its print layout around rows of equal height. Printer, PDF and preview paint
/// the same pages, laid out in one fixed resolution. A row is never split between pages. If the columns do not fit side
/// by side, they continue on further pages, across before down; the entry numbers are repeated on each of them.
///
/// Report title and report header are on the first page; page header, page footer and report version on every page; the
/// report footer follows the last row. Lines of text wider than the page are broken. Texts may contain macros,
/// including "[CUR_PAGE]", "[NUM_PAGE]", "[DATE]" and "[CUR DATETIME]".
class TablePrint
{
public:
    /// Units of paint() per inch.
    static constexpr int kDpi = 600;

    /// paper: size in inches, in its orientation. The source must outlive the object.
    TablePrint(const GridSource &source, PrintRows rows, const JTablePrintArg &layout, const JMacro &macros,
               const QSizeF &paper);
    /// Adds a first column with the number of the printed row; width in characters, format in printf style.
    void setEntryColumn(const QString &title, int width, const QString &format);

    int pageCount() const { return m_rowPages * int(m_bands.size()); }
    QSizeF paper() const { return m_paper; }
    /// Paints page 0, 1, ... The painter's unit is 1/kDpi inch, its origin the corner of the paper. Returns the number
    /// of cells that were cut because their text is much longer than the column is wide.
    int paint(QPainter &painter, int page) const;
    /// Prints all pages. Throws Error if no row fits on a page or the device fails, and Cancelled if the progress stops
    /// it. Returns the number of cells that were cut.
    qint64 printOn(QPagedPaintDevice &device, Progress *progress = nullptr) const;

private:
    /// Text of a section as laid out on a page.
    struct Block
    {
        QStringList lines;
        QFont font;
        QColor colour;
        Qt::Alignment align;
        double lineHeight = 0;
        double height() const { return lineHeight * double(lines.size()); }
    };
    struct Column
    {
        int index; ///< column of the source; -1 for the entry numbers
        QString title;
        double width;
        Qt::Alignment align;
    };
    /// Columns side by side on one page: from begin to before end.
    struct Band
    {
        size_t begin;
        size_t end;
    };

    void arrange();
    void arrangeColumns();
    Block block(JTablePrintArg::Section section, int page) const;
    double paintBlock(QPainter &painter, const Block &block, double y) const;
    /// First printed row of a page of rows, and their number.
    std::pair<int, int> rowsOn(int rowPage) const;
    void paintTitles(QPainter &painter, const Band &band, double y) const;
    int paintRow(QPainter &painter, const Band &band, int place, double y) const;
    void paintLines(QPainter &painter, const Band &band, double top, int rows) const;
    template <typename Each>
    void forEachColumn(const Band &band, Each each) const;

    const GridSource &m_source;
    PrintRows m_rows;
    JTablePrintArg m_layout;
    JMacro m_macros;
    QSizeF m_paper;
    QRectF m_area; ///< page area within the margins
    CellPainter m_cells;
    CellPainter m_titles;
    double m_rowHeight = 0;
    std::vector<Column> m_columns;
    bool m_hasEntry = false;
    QString m_entryFormat;
    std::vector<Band> m_bands;
    bool m_hasRoom = true; ///< rows fit on the pages
    int m_firstRows = 1;   ///< number of rows that fit on the first page; 0 if its texts fill it
    int m_otherRows = 1;
    int m_rowPages = 1;
};

} // namespace tarnwick
