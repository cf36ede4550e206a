#include "SQLDlg.h"

#include "JQueryWin.h"
#include "QueryPage.h"
#include "RunProgress.h"
#include "SectionEditor.h"
#include "SqlCommands.h"

#include <query/gui/SqlFindBar.h>
#include <query/Messages.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/ReturnKey.h>

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScopeGuard>
#include <QScrollArea>
#include <QTabWidget>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::JTablePrintArg;

namespace {

constexpr int kStoredCharacters = 35;
constexpr int kLongestName = 30;
/// Esc that arrives so many milliseconds after a run was meant for the run.
constexpr qint64 kLateEsc = 500;

} // namespace

SQLDlg::SQLDlg(const Setup &setup)
    : JDialog(setup.editor.session.prompts(), &sqlCommands(),
              setup.editor.optionsName == u"sql" ? u"sqlDlg"_s : u"queryFillSqlDlg"_s, setup.parent)
    , m_setup(setup)
    , m_editor(setup.editor, *this)
    , m_colours(std::make_unique<brannock::ColourChooser>(setup.editor.context.roots, prompts()))
{
    makeTitleBar();
    makeTabs();
    applyOptions();
    bindCommands();
    finish(&m_page->sql(), QSize(900, 780).expandedTo(sizeHint()));
    m_page->refreshNames();
    if (m_setup.document)
        m_editor.openDocument(*m_setup.document);
    else
        m_editor.open();
    keepDrafts(m_setup.editor.context.roots.projectDir, m_setup.mode == TableMode::Edit ? u"sql"_s : u"fillsql"_s);
    m_page->check();
    refresh();
}

SQLDlg::~SQLDlg()
{
    // The pages show the result, which is destroyed before the base class and its children.
    delete m_tabs;
}

void SQLDlg::openFile(const QString &machinePath)
{
    run([this, &machinePath] { m_editor.openFile(machinePath); });
}

void SQLDlg::makeTitleBar()
{
    QPushButton *executeButton =
        addButton(titleBar(), u"EXECUTE"_s, u"executeButton"_s, u"Execute the query (F5)"_s, [this] { execute(); });
    executeButton->setFocusPolicy(Qt::TabFocus); // a click leaves the cursor in the text
    auto *expansion = new QPushButton(u"EXPAND"_s);
    expansion->setObjectName(u"expandButton"_s);
    expansion->setToolTip(u"Show the query with its macros expanded, as long as the button is pressed"_s);
    expansion->setAutoDefault(false);
    tarnwick::pressWithReturn(expansion);
    connect(expansion, &QPushButton::pressed, this, [this] { tarnwick::guarded(prompts(), [this] { expand(); }); });
    connect(expansion, &QPushButton::released, this,
            [this] { tarnwick::guarded(prompts(), [this] { endExpansion(); }); });
    titleBar().addWidget(expansion);
    titleBar().addStretch(1);
    if (!m_setup.isFull)
        return;
    m_stored = new QComboBox;
    m_stored->setObjectName(u"storedQueries"_s);
    m_stored->setAccessibleName(u"Stored Queries"_s);
    m_stored->setMinimumContentsLength(kStoredCharacters);
    m_stored->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(m_stored, &QComboBox::activated, this, [this](int index) {
        run([this, index] { m_editor.fetch(m_stored->itemText(index)); });
        m_stored->setCurrentIndex(m_stored->findText(m_editor.storedName()));
    });
    auto *label = new QLabel(u"Stored &Queries"_s);
    label->setBuddy(m_stored);
    titleBar().addWidget(label);
    titleBar().addWidget(m_stored);
}

void SQLDlg::makeTabs()
{
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(u"tabs"_s);
    m_page = new QueryPage(m_setup.editor, m_editor.result(), m_setup.mode);
    m_tabs->addTab(m_page, u"Query"_s);
    m_tabs->addTab(
        makeSections({JTablePrintArg::ReportTitle, JTablePrintArg::ReportHeader, JTablePrintArg::PageHeader}),
        u"Headers"_s);
    m_tabs->addTab(makeSections({JTablePrintArg::ReportBody, JTablePrintArg::PageFooter, JTablePrintArg::ReportFooter,
                                 JTablePrintArg::ReportVersion}),
                   u"Footers"_s);
    body().addWidget(m_tabs, 1);
    connect(m_page, &QueryPage::launched, this, [this](const QString &file) {
        run([this, &file] {
            if (m_editor.loadButton(file))
                execute();
        });
    });
    connect(&m_page->sql(), &SqlEditor::textChanged, this, [this] { refresh(); });
    connect(&m_page->sql(), &SqlEditor::selectionChanged, this, [this] { actions().refresh({HasSelection}); });
    connect(&m_page->table().grid(), &QAbstractItemModel::dataChanged, this, &SQLDlg::showTransaction);
    connect(&m_page->table().grid(), &QAbstractItemModel::rowsRemoved, this, &SQLDlg::showTransaction);
    connect(&m_page->table().grid(), &QAbstractItemModel::modelReset, this, &SQLDlg::showTransaction); // several rows
    // The table has the same keys for its own search. In the whole window they would be ambiguous, and nothing happens.
    actions().setPart(kTextPart, m_page->sql().parentWidget());
    // Ctrl+F goes forward to the next text.
    m_page->table().action(u"find"_s)->setShortcut(QKeySequence(u"Ctrl+Shift+F"_s));
}

QWidget *SQLDlg::makeSections(std::initializer_list<int> sections)
{
    auto *area = new QScrollArea;
    area->setWidgetResizable(true);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    for (const int section : sections) {
        m_sections[size_t(section)] = new SectionEditor(section, *m_colours);
        layout->addWidget(m_sections[size_t(section)]);
        connect(m_sections[size_t(section)], &SectionEditor::changed, this, [this] {
            m_isTouched = true;
            refresh();
        });
    }
    layout->addStretch(1);
    area->setWidget(page);
    return area;
}

void SQLDlg::applyOptions()
{
    const SQLOptions &options = m_editor.options();
    m_page->setOptions(options, m_setup.isFull);
    const SQLOptions::SectionLines &lines = options.sectionLines;
    m_sections[JTablePrintArg::ReportTitle]->setLines(lines.reportTitle);
    m_sections[JTablePrintArg::ReportHeader]->setLines(lines.reportHeader);
    m_sections[JTablePrintArg::PageHeader]->setLines(lines.pageHeader);
    m_sections[JTablePrintArg::PageFooter]->setLines(lines.pageFooter);
    m_sections[JTablePrintArg::ReportFooter]->setLines(lines.reportFooter);
    m_sections[JTablePrintArg::ReportVersion]->setLines(lines.reportVersion);
}

// ---- the query in the window -------------------------------------------------------------------------------------

QString SQLDlg::sql() const
{
    return m_page->sql().sql();
}

void SQLDlg::setSql(const QString &sql)
{
    m_page->sql().setSql(sql);
    m_page->check();
}

void SQLDlg::collect(QueryDocument &document) const
{
    document.sql = sql();
    for (size_t i = 0; i < m_sections.size(); ++i)
        document.layout.sections[i] = m_sections[i]->section();
}

void SQLDlg::showDocument(const QueryDocument &document)
{
    setSql(document.sql);
    for (size_t i = 0; i < m_sections.size(); ++i)
        m_sections[i]->setSection(document.layout.sections[i]);
}

bool SQLDlg::isModified() const
{
    return m_isTouched || (m_page && m_page->sql().isTextModified());
}

void SQLDlg::setModified(bool isModified)
{
    m_isTouched = isModified;
    if (!isModified)
        m_page->sql().setModified(false);
}

std::optional<QString> SQLDlg::askName(const QString &suggestion)
{
    QInputDialog dialog(this);
    dialog.setObjectName(u"queryName"_s);
    dialog.setWindowTitle(u"Query Name"_s);
    dialog.setLabelText(u"Enter new query name"_s);
    dialog.setTextValue(suggestion.left(kLongestName));
    if (auto *field = dialog.findChild<QLineEdit *>())
        field->setMaxLength(kLongestName);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

void SQLDlg::beep()
{
    QApplication::beep();
}

void SQLDlg::queriesChanged()
{
    if (m_stored) {
        const QSignalBlocker blocker(m_stored);
        m_stored->clear();
        m_stored->addItems(m_editor.storedQueries());
        m_stored->setCurrentIndex(m_stored->findText(m_editor.storedName()));
    }
    m_page->setQueryName(m_editor.document().name);
    m_page->refreshNames();
    m_page->showTransaction(m_editor.transaction().isOpen());
}

// ---- running -----------------------------------------------------------------------------------------------------

void SQLDlg::execute(const TextPart &part)
{
    runShown(
        [&](tarnwick::Progress &progress, const Begins &begins) { return m_editor.execute(&progress, part, begins); });
}

void SQLDlg::executeOther(const QString &statement)
{
    runShown([&](tarnwick::Progress &progress, const Begins &) {
        Execution execution = m_editor.executeOther(statement, &progress);
        execution.where = {}; // is no place in the text
        return execution;
    });
}

void SQLDlg::runShown(const Work &work)
{
    m_tabs->setCurrentIndex(0);
    m_page->beginRun();
    m_page->showEntries({});
    m_page->setRunning(true);
    m_page->showStatement(0, 0, 0);
    Execution execution;
    qint64 droppedRows = -1;
    {
        const auto end = qScopeGuard([this] {
            m_editor.result().setFoundListener({});
            m_isRunning = false;
            m_sinceRun.start();
            m_page->setRunning(false);
            m_page->showRows();
        });
        m_isRunning = true;
        // Until the table shows the rows of the run, it has others than the result.
        const QueryResult::ReadPause pause(m_editor.result());
        RunProgress progress(m_page->stopButton(), m_page->table(), [this](qint64 rows, double seconds) {
            const QString found = rows > 0 ? tarnwick::format(u"%D rows, ", rows) : QString();
            m_page->showRun(found + tarnwick::format(u"%.1f s", seconds));
        });
        const auto stopping =
            connect(&m_page->stopButton(), &QPushButton::clicked, &progress, [&progress] { progress.stop(); });
        m_editor.result().setFoundListener([this, &progress] {
            m_page->showRows();
            progress.pump();
        });
        m_page->showRun({});
        m_page->repaint();
        execution = runStatements(progress, work);
        if (progress.isStopped() && execution.outcome == Execution::Outcome::Cancelled)
            droppedRows = progress.rows();
        disconnect(stopping);
    }
    showEnd(execution);
    if (droppedRows >= 0)
        showStopped(execution, droppedRows);
}

Execution SQLDlg::runStatements(RunProgress &progress, const Work &work)
{
    int statements = 0;
    const Execution execution = work(progress, [&](int number, int count) {
        statements = count;
        m_page->showStatement(number, number - 1, count);
        progress.report(0, 0, {});
    });
    if (execution.outcome == Execution::Outcome::Rows || execution.outcome == Execution::Outcome::Changed)
        m_page->showStatement(statements, statements, statements);
    return execution;
}

/// What remains after Stop: the rows found by then are dropped, so it says which rows the table shows.
void SQLDlg::showStopped(const Execution &execution, qint64 droppedRows)
{
    QStringList texts;
    if (execution.affected > 0)
        texts.append(tarnwick::format(messages::kRowsChanged.text, execution.affected));
    texts.append(droppedRows > 0 ? tarnwick::format(messages::kStoppedAfter.text, droppedRows)
                                 : QString::fromUtf16(messages::kStopped.text));
    if (m_editor.result().columnCount() > 0)
        texts.append(QString::fromUtf16(messages::kRowsFromBefore.text));
    m_page->showRun(texts.join(u' '));
}

void SQLDlg::showEnd(const Execution &execution)
{
    // What statements before the last one have changed; of the last one, it stands beside the time.
    m_page->showRun(execution.outcome != Execution::Outcome::Changed && execution.affected > 0
                        ? tarnwick::format(messages::kRowsChanged.text, execution.affected)
                        : QString());
    if (execution.outcome == Execution::Outcome::Failed) {
        m_page->showError(execution.where);
        showMessage({});
    } else {
        const ExecutionStatus status = executionStatus(execution, m_editor.result());
        prompts().showStatus(status.line);
        m_page->showEntries(status.entries);
    }
    m_page->refreshNames(); // a statement may have defined a table
    showTransaction();
}

void SQLDlg::showTransaction()
{
    m_page->showTransaction(m_editor.transaction().isOpen());
    refresh();
}

void SQLDlg::expand()
{
    const QueryDocument expanded = m_editor.expanded();
    prompts().status(messages::kExpandedMacros);
    m_page->sql().showPreview(expanded.sql);
    for (size_t i = 0; i < m_sections.size(); ++i)
        m_sections[i]->showPreview(expanded.layout.sections[i].text);
}

void SQLDlg::endExpansion()
{
    prompts().status(messages::kTemplate);
    m_page->sql().endPreview();
    for (SectionEditor *section : m_sections)
        section->endPreview();
}

bool SQLDlg::store()
{
    return !m_isRunning && m_editor.commit();
}

bool SQLDlg::discard()
{
    return !m_isRunning && m_editor.cancel();
}

void SQLDlg::keyPressEvent(QKeyEvent *event)
{
    const bool isLate = m_sinceRun.isValid() && m_sinceRun.elapsed() < kLateEsc;
    if (event->key() == Qt::Key_Escape && (m_isRunning || isLate))
        return;
    JDialog::keyPressEvent(event);
}

} // namespace query
