#include "ReportEditor.h"

#include <brannock/Messages.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/JTableWin.h>

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace brannock {

namespace {

enum Command : int { Undo = kFirstUnnumbered, Redo, NextProblem, PreviousProblem };
enum Condition : int { CanUndo = 1, CanRedo, HasProblems };

constexpr CommandRow kRows[] = {
    {Undo, u"&Undo\tCtrl+Z", u"Undo the last change of the entries", CanUndo, nullptr, u"undo"},
    {Redo, u"&Redo\tCtrl+Y", u"Redo the change that was undone last", CanRedo, u"Ctrl+Shift+Z", u"redo"},
    {NextProblem, u"Next &Problem\tF8", u"Go to the next entry with a problem", HasProblems, nullptr, u"nextProblem"},
    {PreviousProblem, u"Pre&vious Problem\tShift+F8", u"Go to the previous entry with a problem", HasProblems, nullptr,
     u"previousProblem"},
};
constexpr MenuItem kBar[] = {
    menuItem(Undo), menuItem(Redo), kSeparator, menuItem(NextProblem), menuItem(PreviousProblem), kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::ToolBar, u"reportBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

constexpr int kAddressColumns = 4; ///< mark, section, row and column stay in view

} // namespace

ReportEditor::ReportEditor(UserPrompts &prompts, const EntryCheck *check, Options options, QWidget *parent)
    : QWidget(parent)
    , m_prompts(prompts)
    , m_grid(m_document, check, prompts)
    , m_handlers(kTable)
    , m_actions(new CommandActions(m_handlers, this))
    , m_table(new JTableWin(prompts, this))
    , m_summary(new QLabel)
{
    setObjectName(u"reportEditor"_s);
    m_grid.setReadOnly(options.isReadOnly);
    m_table->setObjectName(u"reportTable"_s);
    m_table->setAccessibleName(u"Report entries"_s);
    m_table->setEntryColumn(u"ENTRY"_s, 6);
    m_table->setSource(&m_grid);
    m_table->setFrozenColumns(kAddressColumns);
    m_summary->setObjectName(u"reportSummary"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (options.isImport)
        layout->addLayout(makeCalFields());
    auto *bar = new QToolBar;
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    makeCommands();
    m_actions->fillToolBar(bar, u"reportBar");
    bar->setVisible(!options.isReadOnly);
    auto *row = new QHBoxLayout;
    row->addWidget(bar);
    row->addWidget(m_summary, 1);
    layout->addLayout(row);
    layout->addWidget(m_table, 1);
    m_document.changed = [this](int entry) { noteChanged(entry); };
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { Q_EMIT currentEntryChanged(currentEntry()); });
    noteChanged(ReportDocument::kNewNumber);
}

ReportEditor::~ReportEditor()
{
    m_table->setSource(nullptr);
}

void ReportEditor::makeCommands()
{
    m_handlers.setRunner([this](const CommandRow &, const std::function<void()> &work) { guarded(m_prompts, work); });
    m_handlers.setConditions([this](int condition) {
        switch (condition) {
        case CanUndo:
            return m_document.canUndo() ? QString() : u"There is nothing to undo."_s;
        case CanRedo:
            return m_document.canRedo() ? QString() : u"There is nothing to redo."_s;
        default:
            return m_grid.problemCount() > 0 ? QString() : QString::fromUtf16(messages::kNoProblems.text);
        }
    });
    m_handlers.bind(Undo, [this] { m_document.undo(); });
    m_handlers.bind(Redo, [this] { m_document.redo(); });
    m_handlers.bind(NextProblem, [this] { showNextProblem(true); });
    m_handlers.bind(PreviousProblem, [this] { showNextProblem(false); });
}

QLayout *ReportEditor::makeCalFields()
{
    auto *layout = new QGridLayout;
    addCalField(*layout, u"S&ite"_s, u"site_code");
    addCalField(*layout, u"Co&mp"_s, u"comp");
    addCalField(*layout, u"Outa&ge"_s, u"outage");
    addCalField(*layout, u"Op&er Type"_s, u"oper_type");
    addCalField(*layout, u"Ca&l"_s, u"cal_num");
    addCalField(*layout, u"&Analyst"_s, u"analyst_id");
    addCalField(*layout, u"Ope&rator"_s, u"oper_id");
    addCalField(*layout, u"Pro&be"_s, u"probe_type");
    addCalField(*layout, u"S&N"_s, u"probe_sn");
    return layout;
}

void ReportEditor::addCalField(QGridLayout &layout, const QString &label, QStringView field)
{
    constexpr int kPerRow = 5;
    const int place = int(m_calFields.size());
    auto *edit = new QLineEdit;
    edit->setObjectName(u"cal_"_s + field.toString());
    edit->setToolTip(u"The value of all result entries of this file; a change is filled into all of them."_s);
    auto *caption = new QLabel(label);
    caption->setBuddy(edit);
    layout.addWidget(caption, place / kPerRow, place % kPerRow * 2);
    layout.addWidget(edit, place / kPerRow, place % kPerRow * 2 + 1);
    m_calFields.append({&reportColumn(field), edit});
    edit->installEventFilter(this);
    connect(edit, &QLineEdit::editingFinished, this, [this, place] { fillCal(m_calFields[place]); });
}

bool ReportEditor::eventFilter(QObject *watched, QEvent *event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event)->key() : 0;
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return QWidget::eventFilter(watched, event);
    // Return fills in the value; it must not press the button OK of the dialog.
    for (const CalField &field : std::as_const(m_calFields)) {
        if (field.edit == watched)
            fillCal(field);
    }
    return true;
}

void ReportEditor::fillCal(const CalField &field)
{
    if (!field.edit->isModified())
        return;
    field.edit->setModified(false);
    const QString text = field.edit->text();
    QList<int> results;
    for (int i = 0; i < m_document.count(); ++i) {
        if (m_document.entry(i).isResult())
            results.append(i);
    }
    ReportEntry tried;
    const QString reason = field.column->set(tried, text);
    if (!reason.isEmpty()) {
        m_prompts.error(messages::kValueRefused, reason);
        showCalFields();
        return;
    }
    m_document.change(u"Fill In %1"_s.arg(QString::fromUtf16(field.column->title)), results,
                      [&](ReportEntry &entry) { field.column->set(entry, text); });
}

bool ReportEditor::loadReport(const QString &machinePath)
{
    Report report;
    const auto load = [&] { report.loadReport(machinePath); };
    if (!attempt(m_prompts, load, messages::kReadReport))
        return false;
    setReport(std::move(report));
    return true;
}

void ReportEditor::setReport(Report report, Progress *progress)
{
    m_grid.checkAhead(report, progress);
    m_document.setReport(std::move(report));
    m_table->reload();
}

void ReportEditor::noteChanged(int entry)
{
    m_grid.noteChanged(entry);
    if (!m_grid.isChanging()) {
        if (entry >= 0) {
            m_table->grid().noteRowChanged(entry);
        } else if (entry == ReportDocument::kSeveral) {
            m_table->grid().noteAllChanged();
        } else {
            const int current = currentEntry();
            m_table->refreshRows();
            setCurrentEntry(std::min(std::max(current, 0), m_document.count() - 1));
        }
    }
    showCalFields();
    const int results = int(std::count_if(report().entries.begin(), report().entries.end(),
                                          [](const ReportEntry &each) { return each.isResult(); }));
    QString summary = format(u"%D results, %D further lines", results, m_document.count() - results);
    if (m_grid.problemCount() > 0)
        summary += format(u"; %D with problems", m_grid.problemCount());
    m_summary->setText(summary);
    m_actions->refresh();
    Q_EMIT changed();
}

void ReportEditor::showCalFields()
{
    for (const CalField &field : m_calFields) {
        std::optional<QString> common;
        bool isMixed = false;
        for (const ReportEntry &entry : report().entries) {
            if (!entry.isResult())
                continue;
            const QString text = field.column->text(entry);
            isMixed = isMixed || (common && *common != text);
            common = text;
            if (isMixed)
                break;
        }
        const QSignalBlocker blocker(field.edit);
        field.edit->setText(isMixed ? QString() : common.value_or(QString()));
        field.edit->setCursorPosition(0); // a narrow field shows the beginning of its text
        field.edit->setPlaceholderText(isMixed ? u"(several)"_s : QString());
        field.edit->setEnabled(common.has_value());
    }
}

void ReportEditor::showNextProblem(bool isForward)
{
    const int entry = m_grid.nextProblem(std::max(currentEntry(), 0), isForward);
    if (entry >= 0)
        setCurrentEntry(entry);
}

void ReportEditor::setCurrentEntry(int entry, QStringView field)
{
    const int row = entry >= 0 && entry < m_document.count() ? m_table->grid().shownRow(entry) : -1;
    if (row < 0)
        return;
    const int column = field.isEmpty() ? std::max(0, m_table->currentIndex().column()) : ReportGrid::columnOf(field);
    m_table->setCurrentIndex(m_table->grid().index(row, std::max(0, column)));
}

int ReportEditor::currentEntry() const
{
    return m_table->currentSourceRow();
}

} // namespace brannock
