#include <tarnwick/gui/TablePreviewDlg.h>
#include <tarnwick/paint/TablePrint.h>

#include <support/Printers.h>

#include <gtest/gtest.h>
#include <QBuffer>
#include <QDate>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSet>
#include <QSpinBox>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

class Rows : public GridSource
{
public:
    Rows(int rows, int columns, int width)
        : m_rows(rows)
        , m_columns(columns)
        , m_width(width)
    {
    }
    QString longText;
    mutable QList<int> read; ///< rows, each time one was read

    int rowCount() const override { return m_rows; }
    int columnCount() const override { return m_columns; }
    GridColumn column(int column) const override { return {.title = u"C%1"_s.arg(column), .width = m_width}; }
    QString text(int row, int column) const override
    {
        read.append(row);
        return longText.isEmpty() ? u"%1/%2"_s.arg(row).arg(column) : longText;
    }

private:
    int m_rows;
    int m_columns;
    int m_width;
};

constexpr QSizeF kLetter(8.5, 11);

JTablePrintArg layoutWith(const QString &pageText, const QString &reportFooter = {})
{
    JTablePrintArg layout;
    layout.sections[JTablePrintArg::ReportTitle].text = u"Title of [SITE]"_s;
    layout.sections[JTablePrintArg::PageFooter].text = pageText;
    layout.sections[JTablePrintArg::ReportFooter].text = reportFooter;
    return layout;
}

/// Paints every page; the rows that were read, in order.
QList<int> paintAll(const TablePrint &print, const Rows &rows, int *cut = nullptr)
{
    rows.read.clear();
    for (int page = 0; page < print.pageCount(); ++page) {
        QImage image(200, 260, QImage::Format_RGB32);
        QPainter painter(&image);
        painter.scale(200.0 / (8.5 * TablePrint::kDpi), 200.0 / (8.5 * TablePrint::kDpi));
        const int here = print.paint(painter, page);
        if (cut)
            *cut += here;
    }
    return rows.read;
}

} // namespace

TEST(TablePrintTest, EveryRowStandsOnceAndInOrder)
{
    for (const int count : {0, 1, 50, 51, 52, 53, 54, 55, 56, 57, 58, 500}) {
        const Rows rows(count, 1, 10);
        const TablePrint print(rows, {count, {}}, layoutWith(u"Page [CUR_PAGE] of [NUM_PAGE]"_s), {}, kLetter);
        QList<int> expected;
        for (int i = 0; i < count; ++i)
            expected.append(i);
        EXPECT_EQ(paintAll(print, rows), expected) << count << " rows on " << print.pageCount() << " pages";
    }
    // A footer that does not fit below the last row gets a page of its own.
    const Rows rows(40, 1, 10);
    const auto pages = [&](const QString &footer) {
        return TablePrint(rows, {40, {}}, layoutWith({}, footer), {}, kLetter).pageCount();
    };
    EXPECT_EQ(pages(u"xxx"_s), 1);
    EXPECT_EQ(pages(u"line\n"_s.repeated(30)), 2);
}

TEST(TablePrintTest, WideTablesGoOnToFurtherPagesAndSelectedRowsKeepTheirOrder)
{
    const Rows rows(10, 12, 20);
    TablePrint print(rows, {3, [](int place) { return 9 - 2 * place; }}, layoutWith({}), {}, kLetter);
    print.setEntryColumn(u"ENTRY#"_s, 6, u"%5d"_s);
    ASSERT_GT(print.pageCount(), 1);
    QList<int> read = paintAll(print, rows);
    EXPECT_EQ(read.size(), 3 * 12) << "each cell once";
    EXPECT_EQ(QSet<int>(read.begin(), read.end()), (QSet<int>{9, 7, 5}));
    EXPECT_EQ(read.first(), 9);
}

TEST(TablePrintTest, TextsThatAreTooLongAreCountedAndHugeSettingsComeToAnEnd)
{
    Rows rows(2, 2, 5);
    rows.longText = u"short"_s;
    int cut = 0;
    paintAll(TablePrint(rows, {2, {}}, layoutWith({}), {}, kLetter), rows, &cut);
    EXPECT_EQ(cut, 0);
    rows.longText = u"A comment far longer than its column"_s;
    paintAll(TablePrint(rows, {2, {}}, layoutWith({}), {}, kLetter), rows, &cut);
    EXPECT_EQ(cut, 4);
    JTablePrintArg layout = layoutWith(u"many\n"_s.repeated(500));
    layout.margins = {100, 100, 100, 100};
    const TablePrint print(rows, {2, {}}, layout, {}, kLetter);
    EXPECT_LE(print.pageCount(), 8);
    paintAll(print, rows);
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    QPdfWriter writer(&buffer);
    EXPECT_THROW(print.printOn(writer), Error);
    // Long lines are broken; a header that fills the first page leaves the rows to the next.
    const auto pages = [&rows](const QString &header) {
        JTablePrintArg tall;
        tall.sections[JTablePrintArg::ReportHeader].text = header;
        return TablePrint(rows, {2, {}}, tall, {}, kLetter).pageCount();
    };
    EXPECT_EQ(pages(u"SELECT many, more FROM report "_s), 1);
    EXPECT_EQ(pages(u"SELECT many, more FROM report "_s.repeated(250)), 2);
}

TEST(TablePrintTest, TextsNameTheDate)
{
    const auto painted = [](const QString &text) {
        const Rows rows(2, 1, 10);
        const TablePrint print(rows, {2, {}}, layoutWith(text), {}, kLetter);
        QImage image(850, 1100, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(100.0 / TablePrint::kDpi, 100.0 / TablePrint::kDpi);
        print.paint(painter, 0);
        return image;
    };
    EXPECT_EQ(painted(u"[DATE]"_s), painted(QDate::currentDate().toString(u"MM/dd/yyyy"_s)));
    EXPECT_NE(painted(u"[DATE]"_s), painted(u"[TIME]"_s));
}

TEST(TablePrintTest, PdfHasEveryPage)
{
    const Rows rows(200, 3, 10);
    const TablePrint print(rows, {200, {}}, layoutWith(u"Page [CUR_PAGE] of [NUM_PAGE]"_s), {}, kLetter);
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QPageSize::Letter));
        EXPECT_EQ(print.printOn(writer), 0);
    }
    EXPECT_EQ(buffer.data().count("/Type /Page\n"), print.pageCount());
}

TEST(TablePrintTest, PreviewIsTurnedByKeys)
{
    const Rows rows(500, 1, 10);
    const TablePrint print(rows, {500, {}}, layoutWith({}), {}, kLetter);
    TablePreviewDlg dialog(print, u"Report"_s, [] {});
    dialog.show();
    const auto pageAfter = [&dialog](Qt::Key key) {
        QTest::keyClick(dialog.focusWidget(), key);
        return dialog.findChild<QSpinBox *>()->value();
    };
    EXPECT_EQ(pageAfter(Qt::Key_PageDown), 2);
    EXPECT_EQ(pageAfter(Qt::Key_End), print.pageCount());
    EXPECT_EQ(pageAfter(Qt::Key_PageUp), print.pageCount() - 1);
}

} // namespace tarnwick
