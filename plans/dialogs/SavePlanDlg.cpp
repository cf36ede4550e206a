#include "SavePlanDlg.h"

#include "PlanOptionDlg.h"

#include <plans/storage/Messages.h>
#include <plans/storage/PlanCheck.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QCompleter>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace plans {

using brannock::InspPlan;

namespace {

enum Command : int {
    NewPlan = FirstOwnCommand,
    LoadSymbols,
    LoadSelected,
    ClearTubes,
    ClearAll,
    Options,
    AddToMap,
    AddOutageToMap,
    IsAnalyzed,
    CompareOutages,
};
enum Condition : int { ConnectedEntries = FirstOwnCondition, ByEntry, Named };

constexpr CommandRow kRows[] = {
    {NewPlan, u"&New Plan", u"Start an empty plan"},
    {OpenEntries, u"&Open ...\tCtrl+O", u"Open a plan file"},
    {SaveEntries, u"&Save\tCtrl+S", u"Store the plan in its file"},
    {SaveEntriesAs, u"Save &As ...", u"Store the plan in another file"},
    {PrintEntries, u"&Print ...\tCtrl+P", u"Print the plan as it is shown, with its length and what is done"},
    {LoadSymbols, u"Load Symbols", u"Add every tube that carries a symbol on the map", AnySymbol},
    {LoadSelected, u"Load Selected", u"Add every tube that is selected on the map", AnySelected},
    {ClearTubes, u"Clear Tubes ...", u"Remove all tubes from the plan", AnyEntry},
    {ClearAll, u"Clear All ...", u"Remove all tubes and empty the fields"},
    {Options, u"Options ...", u"What a plan must have, and which results do not count"},
    {TypeTube, u"T&ype Tube ...\tIns", u"Add a tube by its labels, as a pasted line has them", kAlways, nullptr,
     u"typeTube", CommandRow::KeysNeedFocus, kTablePart},
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
    {AddOutageToMap, u"Add &Outage To Map ...",
     u"Show on the map which tubes of the plan have results in an outage, and which have none", ConnectedEntries},
    {FetchEntries, u"&Fetch Plan ...", u"Read a plan from the database", Connected},
    {UploadEntries, u"&Upload Plan", u"Store the plan in the database under its name", Connected},
    {UploadEntriesAs, u"Upload Plan &As...", u"Store the plan in the database under another name", Connected},
    {DeleteEntries, u"&Delete Plan ...", u"Delete the plan of this name from the database", Named},
    {IsAnalyzed, u"&Is Plan Analyzed", u"Look in the results of the present outage which tubes were analyzed",
     ConnectedEntries},
    {CompareOutages, u"&Compare With Outages", u"Count the tubes of the plan that have results, by outage",
     ConnectedEntries},
};
constexpr MenuItem kBar[] = {
    openMenu(u"&File"),
    menuItem(NewPlan),
    menuItem(OpenEntries),
    menuItem(SaveEntries),
    menuItem(SaveEntriesAs),
    menuItem(PrintEntries),
    kCloseMenu,
    openMenu(u"&Edit"),
    menuItem(LoadSymbols),
    menuItem(LoadSelected),
    menuItem(ClearTubes),
    menuItem(ClearAll),
    menuItem(Options),
    kSeparator,
    menuItem(TypeTube),
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
    menuItem(AddOutageToMap),
    kCloseMenu,
    openMenu(u"&Database"),
    menuItem(FetchEntries),
    menuItem(UploadEntries),
    menuItem(UploadEntriesAs),
    menuItem(DeleteEntries),
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

constexpr EntriesKind kKind{
    kTable,  u"Plan",  u"plan",      u"savePlanDlg",        u"planEntries", u"Entries of the plan",
    u"Plan", u"plans", kPlanChooser, messages::kPlanChanged};

} // namespace

SavePlanDlg::SavePlanDlg(const DialogSetup &setup, const AddToMapFunction &addToMap)
    : TubeEntriesDlg(setup, kKind, m_editor, m_grid)
    , m_addToMap(addToMap)
    , m_editor(setup.session, setup.project)
    , m_grid(m_editor)
    , m_description(new QPlainTextEdit)
{
    loadOptions(m_editor.options, setup.project.roots(), prompts());
    bindOwn();
    makeTitleBar();
    makeFields();
    makeTable(1);
    buttons().setStandardButtons(QDialogButtonBox::Close);
    finishEntries({760, 640});
}

void SavePlanDlg::bindOwn()
{
    commands().bind(NewPlan, [this] {
        if (mayReplace()) {
            m_editor.newPlan();
            showEntries();
        }
    });
    commands().bind(LoadSymbols, [this] { showEntries(m_editor.loadSymbols(setup().tubes)); });
    commands().bind(LoadSelected, [this] { showEntries(m_editor.loadSelected(setup().tubes)); });
    commands().bind(ClearTubes, [this] {
        if (m_editor.clearTubes())
            showEntries();
    });
    commands().bind(ClearAll, [this] {
        if (m_editor.clearAll())
            showEntries();
    });
    commands().bind(Options, [this] {
        if (PlanOptionDlg::edit(m_editor.options, prompts(), this))
            storeOptions(m_editor.options, setup().project.roots(), prompts());
    });
    commands().bind(AddToMap, [this] { m_addToMap(m_editor.plan(), {}); });
    commands().bind(AddOutageToMap, [this] { addOutageToMap(); });
    commands().bind(IsAnalyzed, [this] { checkAnalyzed(); });
    commands().bind(CompareOutages, [this] { compareOutages(); });
}

QString SavePlanDlg::whyNot(int condition) const
{
    switch (condition) {
    case ConnectedEntries: {
        const QString reason = TubeEntriesDlg::whyNot(Connected);
        return reason.isEmpty() ? TubeEntriesDlg::whyNot(AnyEntry) : reason;
    }
    case ByEntry:
        return m_editor.plan().order == InspPlan::Order::Entry ? QString() : u"Order the plan by entry first."_s;
    case Named: {
        const QString reason = TubeEntriesDlg::whyNot(Connected);
        return reason.isEmpty() && m_editor.plan().name.isEmpty() ? u"The plan has no name."_s : reason;
    }
    default:
        return TubeEntriesDlg::whyNot(condition);
    }
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
    for (const fenwright::ProbeInfo &probe : setup().project.probes) {
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

void SavePlanDlg::showFields()
{
    const PlanEditor::Fields fields = m_editor.fields();
    for (const auto &[line, text] :
         {std::pair(m_probe, fields.probe), {m_begin, fields.beginTest}, {m_end, fields.endTest}}) {
        // A text of a file that is too long stays whole, so that the upload can name it.
        line->setMaxLength(std::max(kMostCharacters, int(text.size())));
        line->setText(text);
    }
    m_description->setPlainText(fields.description);
}

void SavePlanDlg::takeFields()
{
    if (isShowing())
        return;
    m_editor.setFields({m_probe->text(), m_begin->text(), m_end->text(), m_description->toPlainText()});
    showSummary();
    refresh();
}

void SavePlanDlg::checkAnalyzed()
{
    ProgressDialog progress(this, u"Is Plan Analyzed"_s);
    m_editor.checkAnalyzed(&progress);
    table().grid().noteAllChanged();
    showSummary();
}

std::optional<QList<OutageCount>> SavePlanDlg::countOutages(const QString &title)
{
    ProgressDialog progress(this, title);
    QList<OutageCount> counts;
    const auto count = [&] { counts = countByOutage(setup().session, m_editor.plan(), &progress); };
    const Outcome outcome = attemptCancellable(prompts(), count, messages::kCompareOutages);
    if (outcome == Outcome::Cancelled)
        prompts().status(messages::kCheckPlanCancelled);
    if (outcome != Outcome::Done)
        return std::nullopt;
    if (counts.isEmpty()) {
        prompts().information(messages::kNoResults);
        return std::nullopt;
    }
    return counts;
}

void SavePlanDlg::compareOutages()
{
    const auto counts = countOutages(u"Compare With Outages"_s);
    if (!counts)
        return;
    const auto total = TubeGroup(addressesOf(m_editor.plan().entries)).count();
    QString lines;
    for (const OutageCount &one : *counts)
        lines += format(messages::kOutageLine.text, one.outage, one.tubes, total);
    prompts().information(messages::kOutageCounts, lines);
}

void SavePlanDlg::addOutageToMap()
{
    const QString title = u"Add Outage To Map"_s;
    const auto counts = countOutages(title);
    if (!counts)
        return;
    QStringList outages;
    for (const OutageCount &one : *counts)
        outages.append(one.outage);
    const QString outage = setup().chooseSource(
        {.title = title, .label = u"Outage"_s, .column = {}, .table = {}, .initialName = {}}, outages, this);
    if (outage.isEmpty())
        return;
    if (!outages.contains(outage, Qt::CaseInsensitive)) {
        prompts().information(messages::kNoResultsOf, outage);
        return;
    }
    ProgressDialog progress(this, title);
    InspPlan plan = m_editor.plan(); // its own flags stay those of the present outage
    if (checkPlan(setup().session, plan, outage, m_editor.options.incompleteCodes, &progress))
        m_addToMap(plan, outage);
}

} // namespace plans
