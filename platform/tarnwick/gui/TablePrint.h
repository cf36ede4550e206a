#pragma once
#include <tarnwick/GridSource.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/Progress.h>

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QSizeF>

#include <functional>
#include <vector>

class QPagedPaintDevice;
class QPainter;

namespace tarnwick {

/// Which rows of a source are printed, in order: all, those in sight, or those selected.
struct PrintRows
{
    int count = 0;
    std::function<int(int)> row; ///< the source's row at a place; empty: the place itself
};

/// A table on paper: the seven sections of its print layout around rows of one height. Printer, PDF and preview paint
/// the same pages, laid out at one fixed resolution. A row is never divided between pages; columns that do not fit
/// beside each other go on to further pages, across before down, and the entry numbers stand on each of them.
///
/// Report title and report header stand on the first page, page header, page footer and report version on every page,
/// the report footer below the last row. Texts may hold macros, "[CUR_PAGE]" and "[NUM_PAGE]" among them.
class TablePrint
{
public:
    /// Units of paint() in an inch.
    static constexpr int kDpi = 600;

    /// paper: in inches, as it lies. The source must outlive the object.
    TablePrint(const GridSource &source, PrintRows rows, const JTablePrintArg &layout, const JMacro &macros,
               const QSizeF &paper);
    /// A first column that counts the printed rows; width in characters, format printf style.
    void setEntryColumn(const QString &title, int width, const QString &format);

    int pageCount() const { return m_rowPages * int(m_bands.size()); }
    QSizeF paper() const { return m_paper; }
    /// Paints page 0, 1, ... The painter's unit is 1/kDpi inch and its origin the corner of the paper. Returns how many
    /// cells were cut since their texts are far longer than their columns are wide.
    int paint(QPainter &painter, int page) const;
    /// Prints all pages. Throws Error when the device fails, and Cancelled when the progress stops it. Returns the
    /// number of cells that were cut.
    qint64 printOn(QPagedPaintDevice &device, Progress *progress = nullptr) const;

private:
    /// A section's text as it stands on a page.
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
        int index; ///< in the source; -1 for the entry numbers
        QString title;
        double width;
        Qt::Alignment align;
    };
    /// Columns that stand beside each other on a page: from begin up to end.
    struct Band
    {
        size_t begin;
        size_t end;
    };

    void arrange();
    void arrangeColumns();
    Block block(JTablePrintArg::Section section, int page) const;
    double paintBlock(QPainter &painter, const Block &block, double y) const;
    /// The first printed row of a page of rows, and how many stand on it.
    std::pair<int, int> rowsOn(int rowPage) const;
    void paintTitles(QPainter &painter, const Band &band, double y) const;
    int paintRow(QPainter &painter, const Band &band, int place, double y) const;
    int paintCell(QPainter &painter, const QRectF &cell, const QString &text, Qt::Alignment align) const;
    void paintLines(QPainter &painter, const Band &band, double top, int rows) const;
    template <typename Each>
    void forEachColumn(const Band &band, Each each) const;

    const GridSource &m_source;
    PrintRows m_rows;
    JTablePrintArg m_layout;
    JMacro m_macros;
    QSizeF m_paper;
    QRectF m_area; ///< within the margins
    QFont m_font;  ///< of the rows
    double m_rowHeight = 0;
    std::vector<Column> m_columns;
    bool m_hasEntry = false;
    QString m_entryFormat;
    std::vector<Band> m_bands;
    int m_firstRows = 1; ///< that fit on the first page
    int m_otherRows = 1;
    int m_rowPages = 1;
};

} // namespace tarnwick
