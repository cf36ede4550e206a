// Compares the program's table with QTableView on the same model: opening, jumping and paging through many rows. With
// --picture FILE it writes a picture of a table instead; --dark and QT_SCALE_FACTOR change its appearance.
#include <benchmark/benchmark.h>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTableView>
#include <tarnwick/gui/JTableWin.h>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Fifteen columns of inspection results, computed from the row number as if read from a database.
class Results : public GridSource
{
public:
    explicit Results(int rows)
        : m_rows(rows)
    {
    }
    int rowCount() const override { return m_rows; }
    int columnCount() const override { return int(std::size(kColumns)); }
    GridColumn column(int column) const override
    {
        GridColumn result{.title = QString::fromUtf16(kColumns[column].title), .width = kColumns[column].width};
        result.align = kColumns[column].align;
        if (column == 14)
            result.editor = GridColumn::Editor::Check;
        return result;
    }
    QString text(int row, int column) const override
    {
        switch (column) {
        case 0:
            return u"1"_s;
        case 1:
        case 2:
            return QString::number((row * 7 + column * 31) % 120 + 1);
        case 3:
            return QStringList{u"NDD"_s, u"VOL"_s, u"MAI"_s, u"DNT"_s, u"PLG"_s}[row % 5];
        case 4:
            return QString::number(0.1 + row % 200 * 0.05, 'f', 2);
        case 5:
            return QString::number(row % 360);
        case 6:
            return row % 5 == 0 ? QString() : QString::number(row % 90);
        case 7:
            return u"07H"_s;
        case 8:
            return QString::number((row % 400 - 200) * 0.01, 'f', 2);
        case 13:
            return row % 9 == 0 ? u"A comment that is longer than its column is wide"_s : QString();
        case 14:
            return row % 3 == 0 ? u"x"_s : QString();
        default:
            return u"T%1"_s.arg(row % 1000, 3, 10, QChar(u'0'));
        }
    }
    QVariant value(int row, int column) const override
    {
        return column == 6 ? QVariant(text(row, column).toDouble()) : QVariant(text(row, column));
    }
    RowColours colours(int row) const override
    {
        if (row % 11 == 3)
            return {ColourRef(0x000000), ColourRef(0x80ffff)};
        return row % 11 == 7 ? RowColours{ColourRef(0x0000c0), ColourRef(0xffffff)} : RowColours{};
    }
    QString whyNotEditable(int, int column) const override
    {
        return column < 3 ? u"The address of a tube cannot be edited."_s : QString();
    }

private:
    struct Column
    {
        const char16_t *title;
        int width;
        ColumnAlign align;
    };
    static constexpr Column kColumns[] = {
        {u"SEC", 4, ColumnAlign::Right},     {u"ROW", 4, ColumnAlign::Right},     {u"COL", 4, ColumnAlign::Right},
        {u"DEFECT", 7, ColumnAlign::Center}, {u"VOLTS", 7, ColumnAlign::Right},   {u"PHASE", 6, ColumnAlign::Right},
        {u"PCNT", 5, ColumnAlign::Right},    {u"LOC LAND", 8, ColumnAlign::Left}, {u"LOC OFF", 8, ColumnAlign::Right},
        {u"CHAN", 5, ColumnAlign::Left},     {u"PROBE", 8, ColumnAlign::Left},    {u"ANALYST", 8, ColumnAlign::Left},
        {u"FILE", 9, ColumnAlign::Left},     {u"COMMENT", 20, ColumnAlign::Left}, {u"KEEP", 5, ColumnAlign::Center},
    };
    int m_rows;
};

constexpr QSize kSize(1500, 900);

std::unique_ptr<QAbstractItemView> makeView(bool own, Results &results, UserPrompts &prompts, GridModel &model)
{
    std::unique_ptr<QAbstractItemView> view;
    if (own) {
        auto table = std::make_unique<JTableWin>(prompts);
        table->setEntryColumn(u"ENTRY#"_s, 9);
        table->setFrozenColumns(3);
        table->setSource(&results);
        view = std::move(table);
    } else {
        view = std::make_unique<QTableView>();
        model.setSource(&results);
        view->setModel(&model);
    }
    view->resize(kSize);
    view->setAttribute(Qt::WA_DontShowOnScreen);
    view->show();
    return view;
}

void open(benchmark::State &state)
{
    Results results(int(state.range(1)));
    for (auto _ : state) {
        RecordingPrompts prompts;
        GridModel model;
        benchmark::DoNotOptimize(makeView(state.range(0), results, prompts, model)->grab());
    }
}

void jump(benchmark::State &state)
{
    Results results(int(state.range(1)));
    RecordingPrompts prompts;
    GridModel model;
    const auto view = makeView(state.range(0), results, prompts, model);
    quint32 random = 1;
    for (auto _ : state) {
        random = random * 1664525U + 1013904223U;
        const int row = int(random % quint32(results.rowCount()));
        view->scrollTo(view->model()->index(row, 5), QAbstractItemView::PositionAtCenter);
        benchmark::DoNotOptimize(view->grab());
    }
}

void pageDown(benchmark::State &state)
{
    Results results(int(state.range(1)));
    RecordingPrompts prompts;
    GridModel model;
    const auto view = makeView(state.range(0), results, prompts, model);
    for (auto _ : state) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &key);
        benchmark::DoNotOptimize(view->grab());
    }
}

void sizes(benchmark::internal::Benchmark *each)
{
    each->ArgNames({"own", "rows"})->ArgsProduct({{0, 1}, {1'000'000, 5'000'000}})->Unit(benchmark::kMillisecond);
}

int writePicture(const QString &path, bool dark)
{
    if (dark) {
        QPalette palette(QColor(0x2b, 0x2b, 0x2b));
        palette.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
        palette.setColor(QPalette::Text, Qt::white);
        QApplication::setPalette(palette);
    }
    Results results(1'000'000);
    RecordingPrompts prompts;
    JTableWin table(prompts);
    table.setEntryColumn(u"ENTRY#"_s, 9);
    table.setSource(&results);
    table.setFrozenColumns(3);
    table.resize(900, 420);
    table.show();
    table.grid().sortBy({});
    table.action(u"filter"_s)->trigger();
    table.action(u"find"_s)->trigger();
    table.horizontalScrollBar()->setValue(60);
    table.setCurrentIndex(table.grid().index(5, 4));
    table.selectionModel()->select(QItemSelection(table.grid().index(5, 4), table.grid().index(8, 6)),
                                   QItemSelectionModel::Select);
    QApplication::processEvents();
    return table.grab().save(path) ? 0 : 1;
}

} // namespace

BENCHMARK(open)->Apply(sizes);
BENCHMARK(jump)->Apply(sizes);
BENCHMARK(pageDown)->Apply(sizes);

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    const QStringList arguments = application.arguments();
    if (const qsizetype at = arguments.indexOf(u"--picture"_s); at > 0 && at + 1 < arguments.size())
        return writePicture(arguments[at + 1], arguments.contains(u"--dark"_s));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
