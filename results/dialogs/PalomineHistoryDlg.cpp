#include "PalomineHistoryDlg.h"

#include <results/history/Messages.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QSplitter>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace results {

namespace {

enum Command : int { Open, Save, SaveAs, PrintSetup, Print, Clear, Undo, Fetch };
enum Condition : int { AnyEntry = 1, CanUndo };

constexpr CommandRow kRows[] = {
    {Open, u"&Open ...\tCtrl+O", u"Load a history file in place of the entries"},
    {Save, u"&Save\tCtrl+S", u"Store the kept entries in the history file", AnyEntry},
    {SaveAs, u"Save &As ...", u"Store the kept entries in another history file", AnyEntry},
    {PrintSetup, u"Print Set&up ...", u"Choose paper and orientation"},
    {Print, u"&Print\tCtrl+P", u"Print the entries as they are shown", AnyEntry},
    {Clear, u"&Clear History ...", u"Remove all entries from the list; files and database stay as they are", AnyEntry},
    {Undo, u"&Undo\tCtrl+Z", u"Take the last change of an entry back", CanUndo},
    {Fetch, u"&Fetch History", u"Read all results of the database", kAlways, u"F5", u"fetch"},
};
constexpr MenuItem kBar[] = {
    openMenu(u"&File"),   menuItem(Open),  menuItem(Save), menuItem(SaveAs),       kSeparator,
    menuItem(PrintSetup), menuItem(Print), kCloseMenu,     openMenu(u"&Edit"),     menuItem(Clear),
    kSeparator,           menuItem(Undo),  kCloseMenu,     openMenu(u"&Database"), menuItem(Fetch),
    kCloseMenu,           kEndOfMenu,
};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

// The first time the dialog is used.
constexpr int kEntriesWidth = 900;
constexpr int kFiltersWidth = 420;

constexpr FileChooserInfo kHistoryChooser{u"history\\palomine", u"History Files (*.hst)", u".hst"};

} // namespace

PalomineHistoryDlg::PalomineHistoryDlg(const Setup &setup)
    : JDialog(setup.session.prompts(), &kTable, u"historyDlg"_s, setup.parent)
    , m_setup(setup)
    , m_list(setup.session, setup.project, m_options)
    , m_entryGrid(m_list, setup.project.steamGen, prompts())
    , m_outageGrid(m_list)
    , m_defectGrid(m_list, prompts())
    , m_entries(new JTableWin(prompts()))
    , m_outages(new JTableWin(prompts()))
    , m_defects(new JTableWin(prompts()))
    , m_mode(new QComboBox)
    , m_sort(new QComboBox)
    , m_keptOnly(new QCheckBox(u"&Kept only"_s))
    , m_counter(new QLabel)
    , m_printing(prompts(), this)
{
    loadOptions(m_options, setup.project.roots(), prompts());
    // Without a database the dialog still edits history files.
    if (setup.session.isOpen())
        runLong(u"History"_s, [this] { m_list.fetchFilters(); });
    bindCommands();
    makeTitleBar();
    auto *splitter = new QSplitter(Qt::Horizontal);
    splitter->setObjectName(u"splitter"_s);
    splitter->addWidget(makeEntries());
    splitter->addWidget(makeFilters());
    splitter->setStretchFactor(0, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({kEntriesWidth, kFiltersWidth});
    body().addWidget(splitter, 1);
    showCounter();
    finish(m_entries, {kEntriesWidth + kFiltersWidth, 700});
    keepDrafts(setup.project.folder, u"history"_s);
}

PalomineHistoryDlg::~PalomineHistoryDlg()
{
    for (JTableWin *table : {m_entries, m_outages, m_defects})
        table->setSource(nullptr);
}

void PalomineHistoryDlg::restoreDraft(const QByteArray &content)
{
    runLong(u"History"_s, [&] { m_list.restoreDraft(content); });
    m_mode->setCurrentIndex(int(m_list.choices().mode));
    showEntries();
}

void PalomineHistoryDlg::bindCommands()
{
    commands().setConditions([this](int condition) {
        if (condition == CanUndo)
            return m_list.canUndo() ? QString() : u"There is nothing to undo."_s;
        return m_list.count() > 0 ? QString() : u"There are no entries."_s;
    });
    commands().bind(Open, [this] { openFile(); });
    commands().bind(Save, [this] { save(); });
    commands().bind(SaveAs, [this] { saveAs(); });
    commands().bind(PrintSetup, [this] { m_printing.setUpPage(); });
    commands().bind(Print, [this] { print(); });
    commands().bind(Clear, [this] { clear(); });
    commands().bind(Undo, [this] { undo(); });
    commands().bind(Fetch, [this] { fetch(); });
}

void PalomineHistoryDlg::makeTitleBar()
{
    struct Sort
    {
        HistorySort sort;
        const char16_t *text;
    };
    static constexpr Sort kSorts[] = {
        {HistorySort::Fetched, u"Sec, Row, Col, Latest Outage"},
        {HistorySort::Tube, u"Row, Col, Indication"},
        {HistorySort::Column, u"Col, Row, Indication"},
        {HistorySort::Indication, u"Indication"},
        {HistorySort::Volts, u"Volts"},
        {HistorySort::Phase, u"Phase"},
        {HistorySort::Percent, u"Pcnt"},
    };
    for (const Sort &sort : kSorts)
        m_sort->addItem(QString::fromUtf16(sort.text), int(sort.sort));
    m_sort->setObjectName(u"sort"_s);
    connect(m_sort, &QComboBox::activated, this, [this] {
        run([this] {
            const WaitCursor wait;
            m_list.sortBy(HistorySort(m_sort->currentData().toInt()));
            showChanges(0);
        });
    });
    auto *prompt = new QLabel(u"So&rt by"_s);
    prompt->setBuddy(m_sort);
    m_keptOnly->setObjectName(u"keptOnly"_s);
    m_keptOnly->setToolTip(u"Hide the entries that are not kept"_s);
    connect(m_keptOnly, &QCheckBox::toggled, this, [this](bool isOn) {
        const int place = currentPlace();
        m_entryGrid.setKeptOnly(isOn);
        showChanges(std::max(place, 0));
    });
    m_counter->setObjectName(u"counter"_s);
    m_counter->setToolTip(u"Kept entries of all"_s);
    titleBar().addWidget(prompt);
    titleBar().addWidget(m_sort);
    titleBar().addWidget(m_keptOnly);
    titleBar().addStretch(1);
    titleBar().addWidget(m_counter);
}

QWidget *PalomineHistoryDlg::makeEntries()
{
    constexpr int kEntryWidth = 8;
    constexpr int kLeastCharacters = 40;
    m_entries->setObjectName(u"entries"_s);
    m_entries->setAccessibleName(u"Entries of the history"_s);
    m_entries->setEntryColumn(u"ENTRY"_s, kEntryWidth);
    m_entries->setSource(&m_entryGrid);
    m_entries->setMinimumWidth(fontMetrics().averageCharWidth() * kLeastCharacters);
    m_entries->setFrozenColumns(m_entryGrid.addressColumns());
    m_entryGrid.changed = [this] {
        showCounter();
        refresh();
    };
    return m_entries;
}

QGroupBox *PalomineHistoryDlg::makeFilter(const QString &title, JTableWin &table,
                                          const std::function<void(bool)> &keepAll)
{
    auto *group = new QGroupBox(title);
    table.setAccessibleName(title);
    table.setEntryColumn(u"ENTRY"_s, 6);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(&table, 1);
    auto *row = new QHBoxLayout;
    const auto add = [&](const QString &text, bool keep) {
        addButton(*row, text, table.objectName() + (keep ? u"All"_s : u"None"_s),
                  keep ? u"Keep all of the list"_s : u"Keep none of the list"_s, [this, &table, keepAll, keep] {
                      keepAll(keep);
                      table.grid().noteAllChanged();
                      applyFilter();
                  });
    };
    add(u"All"_s, true);
    add(u"None"_s, false);
    row->addStretch(1);
    layout->addLayout(row);
    return group;
}

QWidget *PalomineHistoryDlg::makeFilters()
{
    m_outages->setObjectName(u"outages"_s);
    m_outages->setSource(&m_outageGrid);
    m_outageGrid.changed = [this] { applyFilter(); };
    QGroupBox *outages = makeFilter(u"Outage Filter"_s, *m_outages, [this](bool keep) {
        for (OutageChoice &choice : m_list.choices().outages)
            choice.keep = keep;
    });
    m_mode->setObjectName(u"mode"_s);
    m_mode->setAccessibleName(u"Outages that are kept"_s);
    m_mode->addItems({u"Keep Latest Selected Outage"_s, u"Keep All Selected Outages"_s, u"Keep All Outages"_s});
    m_mode->setCurrentIndex(int(m_list.choices().mode));
    connect(m_mode, &QComboBox::activated, this, [this](int mode) {
        m_list.choices().mode = OutageMode(mode);
        run([this] { applyFilter(); });
    });
    static_cast<QVBoxLayout *>(outages->layout())->insertWidget(0, m_mode);
    m_defects->setObjectName(u"defects"_s);
    m_defects->setSource(&m_defectGrid);
    m_defectGrid.changed = [this] { applyFilter(); };
    QGroupBox *defects = makeFilter(u"Defect Filter"_s, *m_defects, [this](bool keep) {
        for (DefectChoice &choice : m_list.choices().defects)
            choice.keep = keep;
    });
    auto *filters = new QSplitter(Qt::Vertical);
    filters->setObjectName(u"filters"_s);
    filters->setChildrenCollapsible(false);
    filters->addWidget(outages);
    filters->addWidget(defects);
    return filters;
}

void PalomineHistoryDlg::runLong(const QString &title, const std::function<void()> &work)
{
    ProgressDialog progress(isVisible() ? this : parentWidget(), title);
    m_list.setProgress(&progress);
    setCursor(Qt::WaitCursor);
    const auto end = qScopeGuard([this] {
        m_list.setProgress(nullptr);
        unsetCursor();
    });
    work();
}

void PalomineHistoryDlg::showEntries()
{
    m_entryGrid.refresh();
    m_entries->reload();
    m_shownRows = m_entryGrid.rowCount();
    if (m_shownRows > 0)
        m_entries->setCurrentSourceRow(0);
    showCounter();
    showFilters();
}

void PalomineHistoryDlg::showFilters()
{
    m_outages->reload();
    m_defects->reload();
}

void PalomineHistoryDlg::applyFilter()
{
    const WaitCursor wait;
    const int place = currentPlace();
    m_list.applyFilter();
    showChanges(place);
    refresh();
}

void PalomineHistoryDlg::showChanges(int place)
{
    m_entryGrid.refresh();
    if (!m_entryGrid.isKeptOnly() && m_entryGrid.rowCount() == m_shownRows)
        m_entries->grid().noteAllChanged();
    else
        m_entries->reload();
    m_shownRows = m_entryGrid.rowCount();
    if (m_shownRows > 0)
        m_entries->setCurrentSourceRow(m_entryGrid.rowOf(std::max(place, 0)));
    showCounter();
}

void PalomineHistoryDlg::showCounter()
{
    m_counter->setText(m_list.counterText());
}

int PalomineHistoryDlg::currentPlace() const
{
    const int row = m_entries->currentSourceRow();
    return row >= 0 && row < m_entryGrid.rowCount() ? m_entryGrid.placeOf(row) : -1;
}

void PalomineHistoryDlg::openFile()
{
    const QString path = m_setup.files.openFile(kHistoryChooser, u"Open History"_s, m_setup.project.roots());
    if (path.isEmpty() || !m_list.mayReplace())
        return;
    runLong(u"Open History"_s, [&] {
        if (m_list.open(path))
            showEntries();
    });
}

void PalomineHistoryDlg::save()
{
    runLong(u"Save History"_s, [this] { m_list.save(); });
}

void PalomineHistoryDlg::saveAs()
{
    const QString name = SuitePath(m_options.historyFile).fileName();
    const QString path = m_setup.files.saveFile(kHistoryChooser, u"Save History"_s, m_setup.project.roots(), name);
    if (!path.isEmpty())
        runLong(u"Save History"_s, [&] { m_list.saveAs(path); });
}

void PalomineHistoryDlg::fetch()
{
    // A filter that was chosen is no work that would be lost, but edits are.
    if (m_list.canUndo() && !m_list.mayReplace())
        return;
    runLong(u"Fetch History"_s, [this] {
        if (m_list.fetchFilters() && m_list.fetch() == Outcome::Done)
            showEntries();
    });
}

void PalomineHistoryDlg::clear()
{
    m_list.clear();
    showEntries();
}

void PalomineHistoryDlg::undo()
{
    const int place = m_list.undo();
    showChanges(place);
    prompts().status(messages::kChangeUndone, place + 1);
}

void PalomineHistoryDlg::print()
{
    JTablePrintArg layout;
    layout.title = u"History"_s;
    layout.sections[JTablePrintArg::PageHeader].text = m_list.printHeader();
    layout.sections[JTablePrintArg::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    m_printing.print({*m_entries, layout, m_setup.printMacros(), u"History"_s}, TablePrinting::Rows::All);
}

bool PalomineHistoryDlg::store()
{
    bool isStored = false;
    runLong(u"Save History"_s, [&] { isStored = m_list.closeWithOk(); });
    return isStored;
}

bool PalomineHistoryDlg::discard()
{
    bool mayClose = false;
    runLong(u"Save History"_s, [&] { mayClose = m_list.closeWithCancel(); });
    return mayClose;
}

} // namespace results
