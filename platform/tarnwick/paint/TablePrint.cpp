#include "TablePrint.h"

#include "Colours.h"

#include <tarnwick/base/Error.h>
#include <tarnwick/Format.h>
#include <tarnwick/JDateTime.h>

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr double kRowSpacing = 1.25; ///< height of a row in font heights
/// On both sides of a cell's text.
constexpr double kCellMargin = 0.04 * TablePrint::kDpi;
constexpr int kDefaultCharacters = 8;
constexpr double kLeastWidth = TablePrint::kDpi;
constexpr double kLineWidth = TablePrint::kDpi / 200.0;

QFont printFont(const PrintSection &section)
{
    QFont font(section.font);
    font.setPixelSize(std::max(1, section.size * TablePrint::kDpi / 72));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// The line in parts that are not wider than width, broken between words where possible.
QStringList wrapped(const QString &line, const QFont &font, double width)
{
    if (width < kLeastWidth || QFontMetricsF(font).horizontalAdvance(line) <= width)
        return {line};
    QTextLayout layout(line, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList parts;
    for (QTextLine part = layout.createLine(); part.isValid(); part = layout.createLine()) {
        part.setLineWidth(width);
        parts.append(line.mid(part.textStart(), part.textLength()));
    }
    return parts;
}

QFont boldFont(QFont font)
{
    font.setBold(true);
    return font;
}

Qt::Alignment toQt(PrintSection::Align align)
{
    switch (align) {
    case PrintSection::Align::Right:
        return Qt::AlignRight;
    case PrintSection::Align::Center:
        return Qt::AlignHCenter;
    case PrintSection::Align::Left:
        break;
    }
    return Qt::AlignLeft;
}

Qt::Alignment toQt(ColumnAlign align)
{
    static constexpr Qt::AlignmentFlag kFlags[] = {Qt::AlignHCenter, Qt::AlignLeft, Qt::AlignRight};
    return kFlags[size_t(align)];
}

} // namespace

/// The macros with the time of printing; macros of the same names are kept.
static JMacro withTime(JMacro macros)
{
    const JDateTime now = JDateTime::now();
    JMacro time;
    time.set(u"DATE"_s, format(u"%{%m/%d/%Y}t", now));
    time.set(u"CUR DATETIME"_s, format(u"%t", now));
    macros.merge(time);
    return macros;
}

TablePrint::TablePrint(const GridSource &source, PrintRows rows, const JTablePrintArg &layout, const JMacro &macros,
                       const QSizeF &paper)
    : m_source(source)
    , m_rows(std::move(rows))
    , m_layout(layout)
    , m_macros(withTime(macros))
    , m_paper(paper)
    , m_cells(printFont(layout.sections[JTablePrintArg::ReportBody]))
    , m_titles(boldFont(m_cells.font()))
{
    for (int i = 0; i < source.columnCount(); ++i) {
        const GridColumn column = source.column(i);
        m_columns.push_back({i, column.title, double(column.width), toQt(column.align)});
    }
    arrange();
}

void TablePrint::setEntryColumn(const QString &title, int width, const QString &format)
{
    m_entryFormat = format;
    m_columns.insert(m_columns.begin(), {-1, title, double(width), Qt::AlignRight});
    m_hasEntry = true;
    arrange();
}

void TablePrint::arrange()
{
    const PrintMargins &margins = m_layout.margins;
    m_area = QRectF(QPointF(0, 0), m_paper * kDpi)
                 .adjusted(margins.left * kDpi, margins.top * kDpi, -margins.right * kDpi, -margins.bottom * kDpi);
    m_rowHeight = m_cells.lineHeight() * kRowSpacing;
    arrangeColumns();
    const auto height = [this](JTablePrintArg::Section section) { return block(section, 0).height(); };
    const double everywhere = height(JTablePrintArg::PageHeader) + height(JTablePrintArg::PageFooter) +
                              height(JTablePrintArg::ReportVersion) + m_rowHeight;
    const double onFirst = height(JTablePrintArg::ReportTitle) + height(JTablePrintArg::ReportHeader);
    const auto rows = [this](double room) { return std::max(0, int(room / m_rowHeight)); };
    m_otherRows = rows(m_area.height() - everywhere);
    m_firstRows = rows(m_area.height() - everywhere - onFirst);
    const bool fitsOnFirst = everywhere - m_rowHeight + onFirst <= m_area.height();
    m_hasRoom = m_otherRows > 0 && fitsOnFirst && m_area.width() >= kLeastWidth;
    if (!m_hasRoom) // each page gets one row, so that paging terminates
        m_otherRows = m_firstRows = 1;
    const int further = std::max(0, m_rows.count - m_firstRows);
    m_rowPages = 1 + (further + m_otherRows - 1) / m_otherRows;
    const int lastRows = rowsOn(m_rowPages - 1).second;
    const int room = m_rowPages == 1 ? m_firstRows : m_otherRows;
    if (height(JTablePrintArg::ReportFooter) > (room - lastRows) * m_rowHeight)
        ++m_rowPages;
}

void TablePrint::arrangeColumns()
{
    const double digit = m_cells.width(u"0"_s);
    for (Column &column : m_columns) {
        const double wanted = column.index < 0 ? column.width : m_source.column(column.index).width;
        const double characters = wanted > 0 ? wanted : kDefaultCharacters;
        const double text = std::max(characters * digit, m_titles.width(column.title));
        column.width = std::min(text + 2 * kCellMargin, m_area.width());
    }
    m_bands.clear();
    const size_t first = m_hasEntry ? 1 : 0;
    const double entry = m_hasEntry ? m_columns[0].width : 0;
    size_t begin = first;
    double used = entry;
    for (size_t i = first; i < m_columns.size(); ++i) {
        if (i > begin && used + m_columns[i].width > m_area.width()) {
            m_bands.push_back({begin, i});
            begin = i;
            used = entry;
        }
        used += m_columns[i].width;
    }
    m_bands.push_back({begin, m_columns.size()});
}

std::pair<int, int> TablePrint::rowsOn(int rowPage) const
{
    if (rowPage == 0)
        return {0, std::min(m_firstRows, m_rows.count)};
    const int first = m_firstRows + (rowPage - 1) * m_otherRows;
    return {first, std::clamp(m_rows.count - first, 0, m_otherRows)};
}

TablePrint::Block TablePrint::block(JTablePrintArg::Section which, int page) const
{
    const PrintSection &section = m_layout.sections[which];
    if (section.text.isEmpty())
        return {};
    JMacro macros;
    macros.set(u"CUR_PAGE"_s, QString::number(page + 1));
    macros.set(u"NUM_PAGE"_s, QString::number(pageCount()));
    macros.merge(m_macros);
    Block block;
    QString text = macros.expand(section.text);
    if (text.endsWith(u'\n'))
        text.chop(1);
    block.font = printFont(section);
    for (const QString &line : text.split(u'\n'))
        block.lines += wrapped(line, block.font, m_area.width());
    block.colour = fromColourRef(section.colour);
    block.align = toQt(section.align);
    block.lineHeight = QFontMetricsF(block.font).height() + section.spacing * kDpi;
    return block;
}

double TablePrint::paintBlock(QPainter &painter, const Block &block, double y) const
{
    painter.setFont(block.font);
    painter.setPen(block.colour);
    for (const QString &line : block.lines) {
        painter.drawText(QRectF(m_area.left(), y, m_area.width(), block.lineHeight),
                         int(block.align | Qt::AlignTop) | Qt::TextExpandTabs, line);
        y += block.lineHeight;
    }
    return y;
}

template <typename Each>
void TablePrint::forEachColumn(const Band &band, Each each) const
{
    double x = m_area.left();
    const auto add = [&](const Column &column) {
        each(column, x);
        x += column.width;
    };
    if (m_hasEntry)
        add(m_columns[0]);
    for (size_t i = band.begin; i < band.end; ++i)
        add(m_columns[i]);
}

int TablePrint::paint(QPainter &painter, int page) const
{
    const int bands = int(m_bands.size());
    const int rowPage = page / bands;
    const Band &band = m_bands[size_t(page % bands)];
    double y = m_area.top();
    if (rowPage == 0) {
        // On the following pages of the first rows the space stays empty, so that the rows are aligned across pages.
        for (const auto section : {JTablePrintArg::ReportTitle, JTablePrintArg::ReportHeader}) {
            const Block text = block(section, page);
            y = page == 0 ? paintBlock(painter, text, y) : y + text.height();
        }
    }
    y = paintBlock(painter, block(JTablePrintArg::PageHeader, page), y);
    const double top = y;
    const auto [first, count] = rowsOn(rowPage);
    const bool hasTitles = rowPage > 0 || m_firstRows > 0;
    if (hasTitles) {
        paintTitles(painter, band, y);
        y += m_rowHeight;
    }
    int cut = 0;
    painter.setFont(m_cells.font());
    painter.setPen(fromColourRef(m_layout.sections[JTablePrintArg::ReportBody].colour));
    for (int i = 0; i < count; ++i, y += m_rowHeight)
        cut += paintRow(painter, band, first + i, y);
    if (hasTitles)
        paintLines(painter, band, top, count);
    if (page == pageCount() - 1)
        paintBlock(painter, block(JTablePrintArg::ReportFooter, page), y);
    const Block footer = block(JTablePrintArg::PageFooter, page);
    const Block version = block(JTablePrintArg::ReportVersion, page);
    y = paintBlock(painter, footer, m_area.bottom() - version.height() - footer.height());
    paintBlock(painter, version, y);
    return cut;
}

void TablePrint::paintTitles(QPainter &painter, const Band &band, double y) const
{
    painter.setFont(m_titles.font());
    painter.setPen(Qt::black);
    forEachColumn(band, [&](const Column &column, double x) {
        m_titles.paint(painter, QRectF(x, y, column.width, m_rowHeight), column.title, Qt::AlignHCenter, kCellMargin);
    });
}

int TablePrint::paintRow(QPainter &painter, const Band &band, int place, double y) const
{
    const int row = m_rows.row ? m_rows.row(place) : place;
    const QString line = m_source.lineText(row);
    if (!line.isEmpty())
        return m_cells.paint(painter, QRectF(m_area.left(), y, m_area.width(), m_rowHeight), line, Qt::AlignLeft,
                             kCellMargin);
    int cut = 0;
    forEachColumn(band, [&](const Column &column, double x) {
        const QString text =
            column.index < 0 ? format(m_entryFormat, place + 1).trimmed() : m_source.text(row, column.index);
        cut += m_cells.paint(painter, QRectF(x, y, column.width, m_rowHeight), text, column.align, kCellMargin);
    });
    return cut;
}

void TablePrint::paintLines(QPainter &painter, const Band &band, double top, int rows) const
{
    painter.setPen(QPen(Qt::black, kLineWidth));
    double right = m_area.left();
    forEachColumn(band, [&](const Column &column, double x) { right = x + column.width; });
    const double bottom = top + m_rowHeight * (rows + 1);
    const auto across = [&](double y) { painter.drawLine(QPointF(m_area.left(), y), QPointF(right, y)); };
    across(top + m_rowHeight);
    if (!m_layout.separators)
        return;
    for (int i = 0; i <= rows + 1; ++i)
        across(top + i * m_rowHeight);
    painter.drawLine(QPointF(m_area.left(), top), QPointF(m_area.left(), bottom));
    forEachColumn(band, [&](const Column &column, double x) {
        painter.drawLine(QPointF(x + column.width, top), QPointF(x + column.width, bottom));
    });
}

qint64 TablePrint::printOn(QPagedPaintDevice &device, Progress *progress) const
{
    if (!m_hasRoom)
        throw Error(u"The margins and texts of the pages leave no room for rows on this paper."_s);
    QPageLayout page = device.pageLayout();
    page.setMode(QPageLayout::FullPageMode);
    device.setPageLayout(page);
    QPainter painter;
    if (!painter.begin(&device))
        throw Error(u"The printer cannot be opened."_s);
    painter.scale(double(device.logicalDpiX()) / kDpi, double(device.logicalDpiY()) / kDpi);
    ProgressLoop loop(progress, pageCount(), u"Printing ..."_s);
    qint64 cut = 0;
    for (int i = 0; i < pageCount(); ++i) {
        loop.tick(i);
        if (i > 0 && !device.newPage())
            throw Error(u"The printer does not accept another page."_s);
        cut += paint(painter, i);
    }
    if (!painter.end())
        throw Error(u"The printer failed at the end of the print."_s);
    return cut;
}

} // namespace tarnwick
