// The report editor with 20,000 entries (and a million) beside a plain QTableWidget of the same cells, and a printed
// list of 100,000 rows as PDF, with the peak of memory, and its first page in the preview.
#include <benchmark/benchmark.h>
#include <brannock/gui/ReportEditor.h>
#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QStyleFactory>
#include <QTableWidget>
#include <QTemporaryDir>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/paint/TablePdf.h>

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace brannock;

namespace {

constexpr int kEntries = 20'000;
constexpr int kLong = 1'000'000;
constexpr int kPrinted = 100'000;
constexpr int kPrintedColumns = 15;

const ellery::SteamGen &component()
{
    static const ellery::SteamGen steamGen = [] {
        ellery::SteamGen made;
        QList<ellery::Tube> tubes;
        for (qint16 row = 1; row <= 100; ++row)
            for (qint16 col = 1; col <= 100; ++col)
                tubes.append({{0, row, col}, float(col), float(row), false});
        made.setTubes(tubes);
        return made;
    }();
    return steamGen;
}

const DefectList &defects()
{
    static const DefectList list = DefectList::standard();
    return list;
}

Report sample(int entries)
{
    Report report;
    report.entries.reserve(entries);
    for (int i = 0; i < entries; ++i) {
        ReportEntry &entry = report.entries.emplaceBack();
        entry.row = (i * 37) % 100 + 1;
        entry.col = (i * 59) % 102 + 1; // some tubes do not exist
        entry.site.siteCode = entry.site.compCode = entry.outage = entry.operType = u"A"_s;
        entry.calNumber = i / 200 + 1;
        entry.analystId = u"AB1"_s;
        entry.defect = i % 10 == 0 ? u"DNT"_s : u"NDD"_s;
        entry.meas = {u"Vpp"_s, i % 100 * 0.05, 0, double(i % 180), 0};
        entry.location = {u"07H"_s, float(i % 100) * 0.01F, 0, 0};
    }
    return report;
}

class Editor
{
public:
    explicit Editor(bool isOnScreen = false)
        : check(component(), defects())
        , editor(prompts, &check, {.isImport = true})
    {
        editor.resize(1500, 900);
        editor.setAttribute(Qt::WA_DontShowOnScreen, !isOnScreen);
        editor.show();
    }
    tarnwick::RecordingPrompts prompts;
    EntryCheck check;
    ReportEditor editor;
};

void openEditor(benchmark::State &state)
{
    const Report report = sample(int(state.range(0)));
    Editor shown;
    for (auto _ : state) {
        shown.editor.setReport(report);
        benchmark::DoNotOptimize(shown.editor.grab());
    }
}

void openWidgetTable(benchmark::State &state)
{
    const Report report = sample(kEntries);
    const QList<ReportColumn> &columns = reportColumns();
    for (auto _ : state) {
        QTableWidget table(kEntries, int(columns.size()));
        for (int row = 0; row < kEntries; ++row)
            for (int column = 0; column < columns.size(); ++column)
                table.setItem(row, column, new QTableWidgetItem(columns[column].text(report.entries[row])));
        table.resize(1500, 900);
        benchmark::DoNotOptimize(table.grab());
    }
}

void sortEditor(benchmark::State &state)
{
    Editor shown;
    shown.editor.setReport(sample(kEntries));
    auto order = Qt::AscendingOrder;
    for (auto _ : state) {
        shown.editor.table().grid().sortBy({{ReportGrid::columnOf(u"volts"), order}});
        order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
        benchmark::DoNotOptimize(shown.editor.grab());
    }
}

void editCell(benchmark::State &state)
{
    Editor shown(true);
    shown.editor.setReport(sample(kEntries));
    QApplication::processEvents();
    tarnwick::GridModel &grid = shown.editor.table().grid();
    int row = 0;
    for (auto _ : state) {
        row = (row + 7919) % kEntries;
        grid.setData(grid.index(row, ReportGrid::columnOf(u"volts")), QString::number(row % 50 + 1));
        QApplication::processEvents(); // paints what changed
    }
}

/// 15 columns computed from the row number.
class Printed : public tarnwick::GridSource
{
public:
    int rowCount() const override { return kPrinted; }
    int columnCount() const override { return kPrintedColumns; }
    tarnwick::GridColumn column(int column) const override { return {.title = u"COL %1"_s.arg(column), .width = 6}; }
    QString text(int row, int column) const override { return QString::number((row * 31 + column * 7) % 10'000); }
};

tarnwick::TablePrint pages(const Printed &rows)
{
    const tarnwick::PrintRows all{kPrinted, {}};
    return {rows, all, tarnwick::JTablePrintArg::forResults(), tarnwick::JMacro(), QSizeF(11.7, 8.3)};
}

void printPdf(benchmark::State &state)
{
    QTemporaryDir folder;
    const Printed rows;
    const QString path = folder.filePath(u"rows.pdf"_s);
    const size_t before = mallinfo2().uordblks;
    size_t after = before;
    for (auto _ : state) {
        tarnwick::storeTablePdf(pages(rows), path, u"rows"_s);
        after = mallinfo2().uordblks;
    }
    state.counters["MB_file"] = double(QFile(path).size()) / 1e6;
    state.counters["MB_left"] = (double(after) - double(before)) / 1e6;
}

void previewFirstPage(benchmark::State &state)
{
    const Printed rows;
    for (auto _ : state) {
        const tarnwick::TablePrint print = pages(rows);
        QImage page(1170, 830, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&page);
        painter.scale(100.0 / tarnwick::TablePrint::kDpi, 100.0 / tarnwick::TablePrint::kDpi);
        print.paint(painter, 0);
    }
}

} // namespace

BENCHMARK(openEditor)->Arg(kEntries)->Arg(kLong)->Unit(benchmark::kMillisecond);
BENCHMARK(openWidgetTable)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(sortEditor)->Unit(benchmark::kMillisecond);
BENCHMARK(editCell)->Unit(benchmark::kMillisecond);
BENCHMARK(printPdf)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(previewFirstPage)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
