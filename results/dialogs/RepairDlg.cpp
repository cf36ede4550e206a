#include "RepairDlg.h"

#include "CompleteRepairsDlg.h"
#include "RepairInfoDlg.h"

#include <results/repairs/Messages.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace results {

namespace {

enum Command : int {
    Print,
    SelectAll,
    SelectDuplicates,
    SelectScheduled,
    SelectDate,
    SelectTubes,
    ClearSelections,
    DeleteRepairs,
    EditRepairs,
    ToggleRows,
    PasteHeats,
    ShowSelected,
    ShowScheduled,
    ScheduleSelected,
    ScheduleSymbols,
    Complete,
};
enum Condition : int { Changeable = 1, AnyRepair, AnySelected, AnySelectedChangeable, CurrentDate };

constexpr int kTablePart = 1;

constexpr CommandRow kRows[] = {
    {Print, u"&Print ...\tCtrl+P", u"Print the list as it is shown"},
    {SelectAll, u"Select All", u"Select all repairs that are shown", AnyRepair, u"Ctrl+A", u"selectAll",
     CommandRow::KeysNeedFocus, kTablePart},
    {SelectDuplicates, u"Select Duplicates", u"Select repairs of the same tube, type and location as the one before",
     AnyRepair},
    {SelectScheduled, u"Select All Sched", u"Select all repairs that are still to be done", AnyRepair},
    {SelectDate, u"Select Selected Date", u"Select all repairs that were scheduled on the day of the current one",
     CurrentDate},
    {SelectTubes, u"Select Selected Tubes", u"Select the repairs of the tubes that are selected on the map", AnyRepair},
    {ClearSelections, u"Clear Selections", u"Deselect all repairs", AnySelected},
    {DeleteRepairs, u"Delete Selected Repairs", u"Remove the selected repairs from the database",
     AnySelectedChangeable},
    {EditRepairs, u"&Edit Repairs", u"Edit the attributes of the selected repairs, or of the current one (Return)"},
    {ToggleRows, u"Select or Deselect &Rows\tSpace", u"Select the repairs of the marked rows, or deselect them",
     AnyRepair, nullptr, u"toggleRows", CommandRow::KeysNeedFocus, kTablePart},
    {PasteHeats, u"Paste &Heat Numbers\tCtrl+V",
     u"Give the selected repairs the heat numbers of the clipboard: a line for each, or one for all; inlet and outlet "
     u"side with a tab between them",
     AnySelectedChangeable, nullptr, u"pasteHeats", CommandRow::KeysNeedFocus, kTablePart},
    {ShowSelected, u"&Selected Repairs", u"Add the tubes of the selected repairs to the legend of the map",
     AnySelected},
    {ShowScheduled, u"&All Scheduled Repairs", u"Add the tubes with scheduled repairs to the legend of the map",
     AnyRepair},
    {ScheduleSelected, u"&Selected Tubes", u"Schedule a repair for each tube that is selected on the map", Changeable},
    {ScheduleSymbols, u"&Tubes With Symbols", u"Schedule a repair for each tube that has a symbol on the map",
     Changeable},
    {Complete, u"&Complete", u"Set the date of completion of the selected repairs that are scheduled",
     AnySelectedChangeable},
};
constexpr MenuItem kBar[] = {
    openMenu(u"&File"),
    menuItem(Print),
    kCloseMenu,
    openMenu(u"&Edit"),
    menuItem(SelectAll),
    menuItem(SelectDuplicates),
    menuItem(SelectScheduled),
    menuItem(SelectDate),
    menuItem(SelectTubes),
    menuItem(ClearSelections),
    menuItem(DeleteRepairs),
    menuItem(EditRepairs),
    kSeparator,
    menuItem(ToggleRows),
    menuItem(PasteHeats),
    kCloseMenu,
    openMenu(u"&View"),
    openMenu(u"Show In Map"),
    menuItem(ShowSelected),
    menuItem(ShowScheduled),
    kCloseMenu,
    kCloseMenu,
    openMenu(u"&Schedule"),
    menuItem(ScheduleSelected),
    menuItem(ScheduleSymbols),
    kSeparator,
    menuItem(Complete),
    kCloseMenu,
    kEndOfMenu,
};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

JTablePrintArg printLayout()
{
    JTablePrintArg layout;
    layout.title = QString::fromUtf16(messages::kRepairListTitle.text);
    layout.sections[JTablePrintArg::PageHeader].text = format(messages::kRepairPrintHeader.text, JDateTime::now());
    layout.sections[JTablePrintArg::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    return layout;
}

/// Makes the choice that equals the text current, or the first one. Returns its text.
QString setChoices(QComboBox &combo, const QStringList &choices, const QString &text)
{
    combo.clear();
    combo.addItems(choices);
    combo.setCurrentIndex(std::max(0, combo.findText(text, Qt::MatchFixedString)));
    return combo.currentText();
}

} // namespace

void RepairDlg::showRepairs(const Setup &setup)
{
    RepairDlg dialog(setup);
    if (dialog.isOpen())
        dialog.exec();
}

RepairDlg::RepairDlg(const Setup &setup)
    : JDialog(setup.session.prompts(), &kTable, u"repairDlg"_s, setup.parent)
    , m_setup(setup)
    , m_list(setup.session, setup.project, m_options)
    , m_grid(m_list, setup.project.steamGen)
    , m_table(new JTableWin(prompts()))
    , m_counts(new QLabel)
    , m_printing(prompts(), this)
{
    loadOptions(m_options, setup.project.roots(), prompts());
    bindCommands();
    makeTitleBar();
    makeTable();
    auto *row = new QHBoxLayout;
    m_counts->setObjectName(u"counts"_s);
    m_counts->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    row->addWidget(m_table, 1);
    row->addWidget(m_counts, 0, Qt::AlignTop);
    body().addLayout(row, 1);
    ProgressDialog progress(parentWidget(), u"Repairs"_s);
    m_list.setProgress(&progress);
    m_isOpen = m_list.open();
    m_list.setProgress(nullptr);
    fillFilters();
    if (setup.tubes.selectedCount() > 0) {
        m_list.selectTubes(setup.tubes);
        showMessage(tarnwick::format(messages::kSelectedOfTubes.text, m_list.selection().size()));
    }
    const QList<int> selected = m_list.selection();
    showRows(selected.isEmpty() ? 0 : selected.first());
    finish(m_table, {1040, 620});
    if (m_isOpen && !m_list.isReadOnly())
        keepDrafts(setup.project.folder, u"repairs"_s);
}

RepairDlg::~RepairDlg()
{
    m_table->setSource(nullptr);
}

void RepairDlg::restoreDraft(const QByteArray &content)
{
    m_list.restoreDraft(content);
    fillFilters();
    showRows(0);
}

void RepairDlg::bindCommands()
{
    commands().setConditions([this](int condition) { return whyNot(condition); });
    const auto bind = [this](Command command, auto action) { commands().bind(command, std::move(action)); };
    const auto bindSelection = [this](Command command, void (RepairList::*select)()) {
        commands().bind(command, [this, select] { changeSelection([this, select] { (m_list.*select)(); }); });
    };
    bind(Print, [this] { print(); });
    bind(SelectAll, [this] { selectAll(); });
    bind(SelectDuplicates, [this] { selectDuplicates(); });
    bindSelection(SelectScheduled, &RepairList::selectAllScheduled);
    bind(SelectDate, [this] { changeSelection([this] { m_list.selectSameDate(currentPlace()); }); });
    bind(SelectTubes, [this] { changeSelection([this] { m_list.selectTubes(m_setup.tubes); }); });
    bindSelection(ClearSelections, &RepairList::clearSelections);
    bind(DeleteRepairs, [this] { deleteRepairs(); });
    bind(EditRepairs, [this] {
        const QList<int> selected = m_list.selection();
        editRepairs(!selected.isEmpty() || currentPlace() < 0 ? selected : QList<int>{currentPlace()});
    });
    bind(ToggleRows, [this] { toggleRows(); });
    bind(PasteHeats, [this] { pasteHeats(); });
    bind(ShowSelected, [this] { showInMap(u"Repairs"_s, m_list.selection()); });
    bind(ShowScheduled, [this] { showInMap(u"Scheduled Repairs"_s, m_list.scheduledPlaces()); });
    bind(ScheduleSelected, [this] { schedule(m_setup.tubes.selection()); });
    bind(ScheduleSymbols, [this] {
        QList<qint32> tubes;
        for (int tube = 0; tube < m_setup.tubes.count(); ++tube)
            if (!m_setup.tubes.isOpen(tube))
                tubes.append(tube);
        schedule(tubes);
    });
    bind(Complete, [this] { complete(); });
    actions().setPart(kTablePart, m_table);
}

QString RepairDlg::whyNot(int condition) const
{
    const bool isChange = condition == Changeable || condition == AnySelectedChangeable;
    if (isChange && m_list.isReadOnly())
        return u"The database is read-only."_s;
    switch (condition) {
    case AnyRepair:
        return m_list.count() > 0 ? QString() : u"There are no repairs."_s;
    case AnySelected:
    case AnySelectedChangeable:
        return m_list.counts().selected > 0 ? QString() : u"Select repairs first."_s;
    case CurrentDate:
        return currentPlace() >= 0 && !m_list.repair(currentPlace()).dateScheduled.isNull()
                   ? QString()
                   : u"The current repair has no scheduled date."_s;
    default:
        return {};
    }
}

QComboBox *RepairDlg::addFilter(const QString &prompt, const QString &name, int width)
{
    auto *combo = new QComboBox;
    combo->setObjectName(name);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(width);
    auto *label = new QLabel(prompt);
    label->setBuddy(combo);
    titleBar().addWidget(label);
    titleBar().addWidget(combo);
    connect(combo, &QComboBox::activated, this, [this, combo] { run([this, combo] { takeFilters(combo); }); });
    return combo;
}

void RepairDlg::makeTitleBar()
{
    constexpr int kOutageWidth = 12;
    constexpr int kWidth = 18;
    m_outage = addFilter(u"Filter O&utage"_s, u"outageFilter"_s, kOutageWidth);
    m_type = addFilter(u"Repair &Type"_s, u"typeFilter"_s, kWidth);
    m_view = addFilter(u"Vie&w"_s, u"viewFilter"_s, kWidth);
    for (const RepairViewChoice &choice : repairViews())
        m_view->addItem(QString::fromUtf16(choice.text), int(choice.view));
    titleBar().addStretch(1);
}

void RepairDlg::makeTable()
{
    m_table->setObjectName(u"repairs"_s);
    m_table->setAccessibleName(u"Repairs"_s);
    m_table->setEntryColumn(u"ENTRY"_s, 6);
    m_table->setVisibleRows(20);
    m_table->setSource(&m_grid);
    m_grid.selectionChanged = [this] {
        showCounts();
        refresh();
    };
    connect(m_table, &JTableWin::rowActivated, this, [this](int row) {
        if (const int place = m_grid.placeOf(row); place >= 0)
            run([this, place] { editRepairs({place}); });
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { actions().refresh({CurrentDate}); });
}

void RepairDlg::fillFilters()
{
    m_options.outage = setChoices(*m_outage, m_list.outageChoices(), m_options.outage);
    m_options.repairType = setChoices(*m_type, m_list.typeChoices(), m_options.repairType);
    m_view->setCurrentIndex(m_view->findData(int(m_options.view)));
    m_list.applyFilter();
}

void RepairDlg::takeFilters(const QComboBox *changed)
{
    m_options.outage = m_outage->currentText();
    m_options.repairType = m_type->currentText();
    m_options.view = RepairView(m_view->currentData().toInt());
    m_list.applyFilter();
    showRows(currentPlace());
    prompts().status(messages::kLimitTo, changed->currentText());
}

int RepairDlg::currentPlace() const
{
    const int row = m_table->currentSourceRow();
    return row >= 0 && row < m_shown.size() ? m_shown[row] : -1;
}

void RepairDlg::showRows(int place)
{
    if (m_list.visible() == m_shown) {
        m_table->grid().noteAllChanged();
    } else {
        m_shown = m_list.visible();
        m_table->refreshRows();
    }
    const auto row = int(std::lower_bound(m_shown.begin(), m_shown.end(), place) - m_shown.begin());
    if (!m_shown.isEmpty())
        m_table->setCurrentSourceRow(std::min(row, int(m_shown.size()) - 1));
    showCounts();
}

void RepairDlg::showCounts()
{
    m_counts->setText(m_list.countsText());
}

void RepairDlg::changeSelection(const std::function<void()> &change)
{
    const int place = currentPlace();
    change();
    m_list.applyFilter();
    showRows(place);
}

void RepairDlg::selectAll()
{
    changeSelection([this] {
        const GridModel &grid = m_table->grid();
        for (int row = 0; row < grid.rowCount(); ++row) // without those that the table's own filter hides
            m_list.setSelected(m_grid.placeOf(grid.sourceRow(row)), true);
    });
}

void RepairDlg::selectDuplicates()
{
    const int first = m_list.selectDuplicates();
    fillFilters();
    showRows(first >= 0 ? first : currentPlace());
}

void RepairDlg::toggleRows()
{
    changeSelection([this] {
        const QList<int> rows = m_table->selectedSourceRows();
        const auto isSelected = [this](int row) { return m_list.isSelected(m_grid.placeOf(row)); };
        const bool select = !std::all_of(rows.begin(), rows.end(), isSelected);
        for (const int row : rows)
            m_list.setSelected(m_grid.placeOf(row), select);
    });
}

void RepairDlg::editRepairs(const QList<int> &places)
{
    QList<Repair> repairs;
    for (const int place : places)
        repairs.append(m_list.repair(place));
    const auto edited =
        RepairInfoDlg::edit({.prompts = prompts(),
                             .steamGen = m_setup.project.steamGen,
                             .repairs = repairs,
                             .outages = m_list.outageChoices().mid(1),
                             .isAcceptable = [this](const Repair &r) { return m_list.isAcceptableEdit(r); },
                             .name = {},
                             .isReadOnly = m_list.isReadOnly(),
                             .parent = this});
    if (!edited)
        return;
    for (qsizetype i = 0; i < places.size(); ++i)
        m_list.change(places[i], edited->at(i));
    fillFilters();
    showRows(places.first());
}

void RepairDlg::schedule(const QList<qint32> &tubes)
{
    if (!db::checkConnected(m_setup.session))
        return;
    const Repair offered = m_list.scheduleTemplate();
    QStringList outages = m_list.outageChoices().mid(1);
    if (!outages.contains(offered.outage, Qt::CaseInsensitive))
        outages.append(offered.outage);
    const auto edited =
        RepairInfoDlg::edit({.prompts = prompts(),
                             .steamGen = m_setup.project.steamGen,
                             .repairs = {offered},
                             .outages = outages,
                             .isAcceptable = [this](const Repair &r) { return m_list.isAcceptable(r); },
                             .name = tubes.size() == 1 ? u"of 1 tube"_s : format(u"of %D tubes", tubes.size()),
                             .isReadOnly = false,
                             .parent = this});
    if (!edited)
        return;
    Repair pattern = edited->first();
    if (pattern.dateScheduled == offered.dateScheduled)
        pattern.dateScheduled = {}; // the time at which they are scheduled
    const int firstNew = m_list.count();
    m_list.schedule(tubes, pattern);
    fillFilters();
    showRows(firstNew);
}

void RepairDlg::complete()
{
    QList<int> scheduled;
    for (const int place : m_list.selection())
        if (m_list.repair(place).isScheduled())
            scheduled.append(place);
    if (scheduled.isEmpty()) {
        m_list.complete({}, {}); // tells that there is none
        return;
    }
    const auto when = CompleteRepairsDlg::ask(prompts(), int(scheduled.size()), this);
    if (!when)
        return;
    const int current = currentPlace();
    m_list.complete(scheduled, *when);
    showRows(current);
}

void RepairDlg::deleteRepairs()
{
    const int current = currentPlace();
    m_list.deleteSelected();
    fillFilters();
    showRows(current);
}

void RepairDlg::pasteHeats()
{
    const int current = currentPlace();
    m_list.pasteHeats(QGuiApplication::clipboard()->text());
    showRows(current);
}

void RepairDlg::showInMap(const QString &label, const QList<int> &places)
{
    const QList<qint32> tubes = m_list.tubesOf(places);
    if (!tubes.isEmpty())
        m_setup.showInMap(label, tubes);
    prompts().status(messages::kShownInMap, tubes.size());
}

void RepairDlg::print()
{
    m_printing.print({*m_table, printLayout(), m_setup.printMacros(), u"Repair List"_s}, TablePrinting::Rows::All);
}

void RepairDlg::storeFilters()
{
    storeOptions(m_options, m_setup.project.roots(), prompts());
}

bool RepairDlg::store()
{
    ProgressDialog progress(this, u"Writing repairs"_s);
    m_list.setProgress(&progress);
    const auto end = qScopeGuard([this] { m_list.setProgress(nullptr); });
    if (!m_list.closeWithOk())
        return false;
    storeFilters();
    return true;
}

bool RepairDlg::discard()
{
    ProgressDialog progress(this, u"Writing repairs"_s);
    m_list.setProgress(&progress);
    const auto end = qScopeGuard([this] { m_list.setProgress(nullptr); });
    if (!m_list.closeWithCancel())
        return false;
    storeFilters();
    return true;
}

} // namespace results
