#include "SavePlanDlg.h"

#include "MovingRows.h"
#include "PlanOptionDlg.h"

#include <plans/storage/Messages.h>
#include <plans/storage/PlanCheck.h>
#include <tarnwick/AskToSave.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace plans {

using brannock::InspPlan;

namespace {

enum Command : int {
    NewPlan,
    OpenPlan,
    SavePlan,
    SavePlanAs,
    PrintPlan,
    LoadSymbols,
    LoadSelected,
    ClearTubes,
    ClearAll,
    Options,
    PasteTubes,
    MoveUp,
    MoveDown,
    AddTubes,
    RemoveTubes,
    KeepTubes,
    AddToMap,
    FetchPlan,
    UploadPlan,
    UploadPlanAs,
    DeletePlan,
    IsAnalyzed,
    CompareOutages,
};
enum Condition : int { AnyEntry = 1, AnySymbol, AnySelected, Connected, ConnectedEntries, ByEntry, Named };
constexpr int kTablePart = 1;

constexpr CommandRow kRows[] = {
    {NewPlan, u"&New Plan", u"Start an empty plan"},
    {OpenPlan, u"&Open ...\tCtrl+O", u"Open a plan file"},
    {SavePlan, u"&Save\tCtrl+S", u"Store the plan in its file"},
    {SavePlanAs, u"Save &As ...", u"Store the plan in another file"},
    {PrintPlan, u"&Print ...\tCtrl+P", u"Print the plan as it is shown, with its length and what is done"},
    {LoadSymbols, u"Load Symbols", u"Add every tube that carries a symbol on the map", AnySymbol},
    {LoadSelected, u"Load Selected", u"Add every tube that is selected on the map", AnySelected},
    {ClearTubes, u"Clear Tubes ...", u"Remove all tubes from the plan", AnyEntry},
    {ClearAll, u"Clear All ...", u"Remove all tubes and empty the fields"},
    {Options, u"Options ...", u"What a plan must have, and which results do not count"},
    {PasteTubes, u"Paste &Tubes\tCtrl+V",
     u"Add the tubes of the clipboard: a line for each, as a spreadsheet copies them", kAlways, nullptr, u"pasteTubes",
     CommandRow::KeysNeedFocus, kTablePart},
    {MoveUp, u"Move &Up\tAlt+Up", u"Move the marked rows up", ByEntry, nullptr, u"moveUp", CommandRow::KeysNeedFocus,
     kTablePart},
    {MoveDown, u"Move &Down\tAlt+Down", u"Move the marked rows down", ByEntry, nullptr, u"moveDown",
     CommandRow::KeysNeedFocus, kTablePart},
    {AddTubes, u"&Add Tubes Of ...", u"Add tubes of a list, tube set, plan, legend entry or the selection"},
    {RemoveTubes, u"&Remove Tubes Of ...", u"Remove tubes of a list, tube set, plan, legend entry or the selection",
     AnyEntry},
    {KeepTubes, u"&Keep Only Tubes Of ...",
     u"Remove all tubes but those of a list, tube set, plan, legend entry or the "
     u"selection",
     AnyEntry},
    {AddToMap, u"&Add To Map", u"Show the plan on the map as three entries of the legend", AnyEntry},
    {FetchPlan, u"&Fetch Plan ...", u"Read a plan from the database", Connected},
    {UploadPlan, u"&Upload Plan", u"Store the plan in the database under its name", Connected},
    {UploadPlanAs, u"Upload Plan &As...", u"Store the plan in the database under another name", Connected},
    {DeletePlan, u"&Delete Plan ...", u"Delete the plan of this name from the database", Named},
    {IsAnalyzed, u"&Is Plan Analyzed", u"Look in the results of the present outage which tubes were analyzed",
     ConnectedEntries},
    {CompareOutages, u"&Compare With Outages", u"Count the tubes of the plan that have results, by outage",
     ConnectedEntries},
};
constexpr MenuItem kBar[] = {
    openMenu(u"&File"),
    menuItem(NewPlan),
    menuItem(OpenPlan),
    menuItem(SavePlan),
    menuItem(SavePlanAs),
    menuItem(PrintPlan),
    kCloseMenu,
    openMenu(u"&Edit"),
    menuItem(LoadSymbols),
    menuItem(LoadSelected),
    menuItem(ClearTubes),
    menuItem(ClearAll),
    menuItem(Options),
    kSeparator,
    menuItem(PasteTubes),
    menuItem(MoveUp),
    menuItem(MoveDown),
    kSeparator,
    menuItem(AddTubes),
    menuItem(RemoveTubes),
    menuItem(KeepTubes),
    kCloseMenu,
    openMenu(u"&View"),
    menuItem(AddToMap),
    kCloseMenu,
    openMenu(u"&Database"),
    menuItem(FetchPlan),
    menuItem(UploadPlan),
    menuItem(UploadPlanAs),
    menuItem(DeletePlan),
    kCloseMenu,
    openMenu(u"&Util"),
    menuItem(IsAnalyzed),
    menuItem(CompareOutages),
    kCloseMenu,
    kEndOfMenu,
};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

constexpr FileChooserInfo kPlanChooser{u"plans", u"Plans (*.pln)", u".pln"};
constexpr int kMostCharacters = 50; // of the fields in the database

} // namespace

SavePlanDlg::SavePlanDlg(const DialogSetup &setup, const std::function<void(const InspPlan &)> &addToMap)
    : JDialog(setup.session.prompts(), &kTable, u"savePlanDlg"_s, setup.parent)
    , m_setup(setup)
    , m_addToMap(addToMap)
    , m_editor(setup.session, setup.project)
    , m_grid(m_editor)
    , m_table(new JTableWin(prompts()))
    , m_order(new QComboBox)
    , m_description(new QPlainTextEdit)
    , m_summary(new QLabel)
    , m_printing(prompts(), this)
{
    loadOptions(m_editor.options, setup.project.roots(), prompts());
    bindFiles();
    bindEditing();
    bindDatabase();
    makeTitleBar();
    makeFields();
    makeTable();
    m_summary->setObjectName(u"summary"_s);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    body().addWidget(m_summary);
    showPlan();
    buttons().setStandardButtons(QDialogButtonBox::Close);
    finish(m_table, {760, 640});
    keepDrafts(setup.project.folder, u"plan"_s);
}

SavePlanDlg::~SavePlanDlg()
{
    m_table->setSource(nullptr);
}

void SavePlanDlg::bindFiles()
{
    commands().setConditions([this](int condition) -> QString {
        const bool needsDatabase = condition == Connected || condition == ConnectedEntries || condition == Named;
        if (needsDatabase && !m_setup.session.isOpen())
            return u"Connect to a database first."_s;
        if ((condition == AnyEntry || condition == ConnectedEntries) && m_editor.plan().entries.isEmpty())
            return u"The plan has no tubes."_s;
        if (condition == AnySymbol && m_setup.tubes.symbolCount() == 0)
            return u"No tube on the map carries a symbol."_s;
        if (condition == AnySelected && m_setup.tubes.selectedCount() == 0)
            return u"No tubes are selected on the map."_s;
        if (condition == ByEntry && m_editor.plan().order != InspPlan::Order::Entry)
            return u"Order the plan by entry first."_s;
        if (condition == Named && m_editor.plan().name.isEmpty())
            return u"The plan has no name."_s;
        return {};
    });
    commands().bind(NewPlan, [this] {
        if (mayReplace()) {
            m_editor.newPlan();
            showPlan();
        }
    });
    commands().bind(OpenPlan, [this] {
        if (!mayReplace())
            return;
        const QString path = m_setup.files.openFile(kPlanChooser, u"Open Plan"_s, m_setup.project.roots());
        if (!path.isEmpty() && m_editor.open(path))
            showPlan();
    });
    commands().bind(SavePlan, [this] { save(); });
    commands().bind(SavePlanAs, [this] { saveAs(); });
    commands().bind(PrintPlan, [this] { print(); });
}

void SavePlanDlg::bindEditing()
{
    commands().bind(LoadSymbols, [this] { showPlan(m_editor.loadSymbols(m_setup.tubes)); });
    commands().bind(LoadSelected, [this] { showPlan(m_editor.loadSelected(m_setup.tubes)); });
    commands().bind(ClearTubes, [this] {
        if (m_editor.clearTubes())
            showPlan();
    });
    commands().bind(ClearAll, [this] {
        if (m_editor.clearAll())
            showPlan();
    });
    commands().bind(Options, [this] {
        if (PlanOptionDlg::edit(m_editor.options, prompts(), this))
            storeOptions(m_editor.options, m_setup.project.roots(), prompts());
    });
    commands().bind(PasteTubes, [this] { paste(); });
    commands().bind(MoveUp, [this] { move(-1); });
    commands().bind(MoveDown, [this] { move(1); });
    commands().bind(AddTubes, [this] { combine(Combine::Add, u"Add Tubes"_s); });
    commands().bind(RemoveTubes, [this] { combine(Combine::Remove, u"Remove Tubes"_s); });
    commands().bind(KeepTubes, [this] { combine(Combine::Intersect, u"Keep Only Tubes"_s); });
    commands().bind(AddToMap, [this] { m_addToMap(m_editor.plan()); });
}

void SavePlanDlg::bindDatabase()
{
    commands().bind(FetchPlan, [this] { fetch(); });
    commands().bind(UploadPlan, [this] { m_editor.plan().name.isEmpty() ? uploadAs() : upload(m_editor.plan().name); });
    commands().bind(UploadPlanAs, [this] { uploadAs(); });
    commands().bind(DeletePlan, [this] { m_editor.remove(); });
    commands().bind(IsAnalyzed, [this] { checkAnalyzed(); });
    commands().bind(CompareOutages, [this] { compareOutages(); });
    actions().setPart(kTablePart, m_table);
}

void SavePlanDlg::makeTitleBar()
{
    const ellery::SteamGen &component = m_editor.component();
    m_order->setObjectName(u"order"_s);
    m_order->addItems(
        {component.axisNames[int(ellery::Axis::Row)], component.axisNames[int(ellery::Axis::Col)], u"ENTRY"_s});
    auto *prompt = new QLabel(u"Order B&y"_s);
    prompt->setBuddy(m_order);
    titleBar().addWidget(prompt);
    titleBar().addWidget(m_order);
    titleBar().addStretch(1);
    connect(m_order, &QComboBox::activated, this, [this](int order) {
        run([this, order] {
            m_editor.setOrder(InspPlan::Order(order));
            showPlan();
        });
    });
}

QLineEdit *SavePlanDlg::addField(QBoxLayout &layout, const QString &prompt, const QString &name,
                                 const QStringList &offered)
{
    auto *line = new QLineEdit;
    line->setObjectName(name);
    line->setMaxLength(kMostCharacters);
    auto *completer = new QCompleter(offered, line);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    line->setCompleter(completer);
    auto *label = new QLabel(prompt);
    label->setBuddy(line);
    layout.addWidget(label);
    layout.addWidget(line, 1);
    connect(line, &QLineEdit::textChanged, this, [this] { takeFields(); });
    return line;
}

void SavePlanDlg::makeFields()
{
    QStringList probes;
    for (const fenwright::ProbeInfo &probe : m_setup.project.probes) {
        for (const QString &text : {probe.type, probe.model})
            if (!text.isEmpty() && !probes.contains(text))
                probes.append(text);
    }
    QStringList landmarks;
    for (const ellery::LandmarkSet &set : m_editor.component().landmarkSets) {
        for (const ellery::Landmark &landmark : set.landmarks)
            if (!landmarks.contains(landmark.name))
                landmarks.append(landmark.name);
    }
    auto *row = new QHBoxLayout;
    m_probe = addField(*row, u"P&robe"_s, u"probe"_s, probes);
    m_begin = addField(*row, u"&Beg Test"_s, u"beginTest"_s, landmarks);
    m_end = addField(*row, u"E&nd Test"_s, u"endTest"_s, landmarks);
    body().addLayout(row);
    constexpr int kLines = 2;
    m_description->setObjectName(u"description"_s);
    m_description->setTabChangesFocus(true);
    m_description->setFixedHeight(m_description->fontMetrics().lineSpacing() * (kLines + 1));
    auto *description = new QHBoxLayout;
    auto *label = new QLabel(u"Descript&ion:"_s);
    label->setBuddy(m_description);
    description->addWidget(label, 0, Qt::AlignTop);
    description->addWidget(m_description, 1);
    body().addLayout(description);
    connect(m_description, &QPlainTextEdit::textChanged, this, [this] { takeFields(); });
}

void SavePlanDlg::makeTable()
{
    constexpr int kVisibleRows = 16;
    m_table->setObjectName(u"planEntries"_s);
    m_table->setAccessibleName(u"Entries of the plan"_s);
    m_table->setVisibleRows(kVisibleRows);
    m_table->setFrozenColumns(1);
    m_table->setSource(&m_grid);
    m_grid.changed = [this] {
        m_table->grid().noteAllChanged();
        showSummary();
        refresh();
    };
    body().addWidget(m_table, 1);
    new RowDragging(*m_table, [this](const QList<int> &rows, int before) { run([&] { moveRows(rows, before); }); });
}

void SavePlanDlg::showPlan(int firstRow)
{
    {
        m_isShowing = true;
        const auto end = qScopeGuard([this] { m_isShowing = false; });
        const PlanEditor::Fields fields = m_editor.fields();
        for (const auto &[line, text] :
             {std::pair(m_probe, fields.probe), {m_begin, fields.beginTest}, {m_end, fields.endTest}}) {
            // A text of a file that is too long stays whole, so that the upload can name it.
            line->setMaxLength(std::max(kMostCharacters, int(text.size())));
            line->setText(text);
        }
        m_description->setPlainText(fields.description);
        m_order->setCurrentIndex(int(m_editor.plan().order));
    }
    m_table->reload();
    if (firstRow > 0)
        m_table->setCurrentSourceRow(m_grid.rowCount() - 1); // so that the row below comes first in sight
    if (m_grid.rowCount() > 0)
        m_table->setCurrentSourceRow(std::clamp(firstRow, 0, m_grid.rowCount() - 1));
    showSummary();
}

void SavePlanDlg::showSummary()
{
    m_summary->setText(m_editor.summary());
}

void SavePlanDlg::takeFields()
{
    if (m_isShowing)
        return;
    m_editor.setFields({m_probe->text(), m_begin->text(), m_end->text(), m_description->toPlainText()});
    showSummary();
    refresh();
}

bool SavePlanDlg::mayReplace()
{
    if (!m_editor.isModified())
        return true;
    const auto saving = [this] { return m_editor.isFromFile() ? save() : upload(m_editor.plan().name); };
    return saveOrDiscard(prompts(), messages::kPlanChanged, saving, m_editor.shownName());
}

bool SavePlanDlg::save()
{
    return m_editor.file().isEmpty() ? saveAs() : m_editor.store(m_editor.file());
}

bool SavePlanDlg::saveAs()
{
    if (!m_editor.isValid())
        return false;
    const QString path =
        m_setup.files.saveFile(kPlanChooser, u"Save Plan"_s, m_setup.project.roots(), m_editor.fileName());
    return !path.isEmpty() && m_editor.store(path);
}

QString SavePlanDlg::chooseName(const QString &title, const QString &initial)
{
    return m_setup.chooseName(
        m_setup.session,
        {.title = title, .label = u"Plan Name"_s, .column = u"name"_s, .table = u"plans"_s, .initialName = initial},
        this);
}

bool SavePlanDlg::upload(const QString &name)
{
    ProgressDialog progress(this, u"Upload Plan"_s);
    return m_editor.upload(name, &progress);
}

bool SavePlanDlg::uploadAs()
{
    const QString name = chooseName(u"Upload Plan As"_s, m_editor.plan().name);
    return !name.isEmpty() && upload(name);
}

void SavePlanDlg::fetch()
{
    const QString name = chooseName(u"Fetch Plan"_s, {});
    if (name.isEmpty() || !mayReplace())
        return;
    ProgressDialog progress(this, u"Fetch Plan"_s);
    if (m_editor.fetch(name, &progress))
        showPlan();
}

void SavePlanDlg::combine(Combine how, const QString &title)
{
    const auto tubes = chooseTubes(m_setup, title, this);
    if (!tubes)
        return;
    const int before = m_grid.rowCount();
    m_editor.combine(*tubes, how);
    showPlan(how == Combine::Add ? before : 0);
}

void SavePlanDlg::paste()
{
    showPlan(m_editor.paste(QGuiApplication::clipboard()->text()));
}

void SavePlanDlg::move(int by)
{
    if (const auto [rows, before] = rowsToMove(*m_table, by); !rows.isEmpty())
        moveRows(rows, before);
}

void SavePlanDlg::moveRows(const QList<int> &rows, int before)
{
    if (const int first = m_editor.moveEntries(rows, before); first >= 0)
        showMoved(*m_table, first, int(rows.size()));
}

void SavePlanDlg::checkAnalyzed()
{
    ProgressDialog progress(this, u"Is Plan Analyzed"_s);
    m_editor.checkAnalyzed(&progress);
    m_table->grid().noteAllChanged();
    showSummary();
}

void SavePlanDlg::compareOutages()
{
    ProgressDialog progress(this, u"Compare With Outages"_s);
    QList<OutageCount> counts;
    const auto count = [&] { counts = countByOutage(m_setup.session, m_editor.plan(), &progress); };
    const Outcome outcome = attemptCancellable(prompts(), count, messages::kCompareOutages);
    if (outcome == Outcome::Cancelled)
        prompts().status(messages::kCheckPlanCancelled);
    if (outcome != Outcome::Done)
        return;
    const auto total = TubeGroup(addressesOf(m_editor.plan().entries)).count();
    QString lines;
    for (const OutageCount &one : counts)
        lines += format(messages::kOutageLine.text, one.outage, one.tubes, total);
    if (lines.isEmpty())
        prompts().information(messages::kNoResults);
    else
        prompts().information(messages::kOutageCounts, lines);
}

void SavePlanDlg::print()
{
    JTablePrintArg layout;
    layout.title = u"Plan - "_s + m_editor.shownName();
    layout.sections[JTablePrintArg::ReportTitle].text = layout.title + u'\n';
    layout.sections[JTablePrintArg::ReportHeader].text =
        m_editor.summary() + u'\n' + m_editor.plan().description.trimmed() + u'\n';
    layout.sections[JTablePrintArg::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    m_printing.print({*m_table, layout, m_setup.printMacros(), m_editor.shownName()}, TablePrinting::Rows::All);
}

void SavePlanDlg::restoreDraft(const QByteArray &content)
{
    m_editor.restoreDraft(content);
    showPlan();
}

QString SavePlanDlg::draftName(const QByteArray &content) const
{
    const QString name = InspPlan::fromBytes(content, u"the copy"_s).name;
    return u"plan \"%1\""_s.arg(name.isEmpty() ? u"Untitled"_s : name);
}

} // namespace plans
