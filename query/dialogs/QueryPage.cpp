#include "QueryPage.h"

#include "JQueryWin.h"

#include <db/FieldDefinition.h>
#include <query/ButtonGrid.h>
#include <query/gui/SqlFindBar.h>
#include <query/Messages.h>
#include <tarnwick/gui/ElidedLabel.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/ReturnKey.h>
#include <tarnwick/gui/StateKeeper.h>
#include <tarnwick/gui/TableText.h>

#include <QApplication>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QTreeWidget>

namespace query {

using namespace Qt::StringLiterals;

namespace {

constexpr int kParameterWidth = 230;
constexpr int kStatementsCharacters = 24;
const QString kZoom = u"sqlEditor/zoom"_s;
constexpr int kLeastZoom = -8;
constexpr int kMostZoom = 20;

} // namespace

QueryPage::QueryPage(const QueryEditor::Setup &setup, QueryResult &result, TableMode mode, QWidget *parent)
    : QWidget(parent)
    , m_setup(setup)
    , m_buttons(new QGridLayout)
    , m_sql(new SqlEditor)
    , m_find(new SqlFindBar(*m_sql))
    , m_parameters(new QTreeWidget)
    , m_problem(new tarnwick::ElidedLabel)
    , m_table(new JQueryWin(setup.session, setup.context, mode, nullptr, &result))
    , m_statements(new QProgressBar)
    , m_run(new tarnwick::ElidedLabel)
    , m_waiting(new QLabel(u"Others wait"_s))
    , m_figures(new QLabel)
    , m_entries(new QLabel)
    , m_shownRows(new QLabel)
    , m_stop(new QPushButton(u"Stop"_s))
{
    tarnwick::TableText::follow(m_parameters);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(m_buttons);
    m_splitter = new QSplitter(Qt::Vertical);
    m_splitter->setObjectName(u"querySplitter"_s);
    m_splitter->setChildrenCollapsible(false);
    makeEditor();
    m_table->setObjectName(u"result"_s);
    m_splitter->addWidget(m_table);
    m_splitter->setStretchFactor(1, 1);
    layout->addWidget(m_splitter, 1);
    makeStatusRow();
    connect(m_sql, &SqlEditor::typingPaused, this, &QueryPage::check);
    connect(m_table, &JQueryWin::figuresChanged, m_figures, &QLabel::setText);
    m_sql->zoomTo(qBound(kLeastZoom, tarnwick::StateKeeper::sessionFile().values()[kZoom].toInt(), kMostZoom));
}

QueryPage::~QueryPage()
{
    tarnwick::guarded(m_setup.session.prompts(), [this] {
        const tarnwick::SessionFile session = tarnwick::StateKeeper::sessionFile();
        if (session.values()[kZoom].toInt() != m_sql->zoom())
            session.store({{kZoom, m_sql->zoom()}});
    });
    delete m_table; // before the result that it shows
}

void QueryPage::makeEditor()
{
    auto *top = new QWidget;
    auto *layout = new QVBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *row = new QHBoxLayout;
    row->addWidget(m_sql, 1);
    m_parameters->setObjectName(u"parameters"_s);
    m_parameters->setAccessibleName(u"Parameters"_s);
    m_parameters->setHeaderLabels({u"Parameter"_s, u"Type"_s, u"Value"_s});
    m_parameters->setRootIsDecorated(false);
    m_parameters->setFixedWidth(kParameterWidth);
    m_parameters->setFocusPolicy(Qt::ClickFocus);
    m_parameters->hide();
    connect(m_parameters, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) {
        m_sql->moveCursor(item->data(0, Qt::UserRole).toInt());
        m_sql->setFocus();
    });
    row->addWidget(m_parameters);
    layout->addLayout(row, 1);
    layout->addWidget(m_find);
    m_problem->setObjectName(u"problem"_s);
    layout->addWidget(m_problem);
    m_splitter->addWidget(top);
}

void QueryPage::makeStatusRow()
{
    auto *row = new QHBoxLayout;
    m_run->setObjectName(u"run"_s);
    m_figures->setObjectName(u"figures"_s);
    m_entries->setObjectName(u"entries"_s);
    m_shownRows->setObjectName(u"shownRows"_s);
    m_shownRows->setToolTip(u"Rows that the filter of the table shows"_s);
    connect(m_table, &JQueryWin::rowsChanged, this, [this] {
        const int shown = m_table->grid().rowCount();
        const bool isFiltered = shown < m_table->result().rowCount() && !m_table->result().isPaused();
        m_shownRows->setText(isFiltered ? tarnwick::format(u"%D shown,", shown) : QString());
        // Rows were inserted or deleted after the run; while it runs, nothing is shown.
        if (!m_entries->text().isEmpty() && m_table->grid().columnCount() > 0 && !m_table->result().isPaused())
            showEntries(tarnwick::format(messages::kEntries.text, m_table->result().rowCount()));
    });
    m_waiting->setObjectName(u"waiting"_s);
    m_waiting->setToolTip(u"The database holds changes of this editor. Until OK or Cancel, other users and programs "
                          "cannot change it."_s);
    m_waiting->hide();
    m_stop->setObjectName(u"stopButton"_s);
    m_stop->setToolTip(u"Stop the statement that runs (Esc)"_s);
    m_stop->setAutoDefault(false);
    m_stop->setFocusPolicy(Qt::NoFocus);
    QSizePolicy keepsRoom = m_stop->sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    m_stop->setSizePolicy(keepsRoom);
    m_stop->hide();
    m_statements->setObjectName(u"statements"_s);
    m_statements->setAccessibleName(u"Statements"_s);
    m_statements->setFixedWidth(fontMetrics().averageCharWidth() * kStatementsCharacters);
    m_statements->hide();
    row->addWidget(m_stop);
    row->addWidget(m_statements);
    row->addWidget(m_run, 1);
    row->addWidget(m_waiting);
    row->addSpacing(fontMetrics().averageCharWidth() * 2);
    row->addWidget(m_figures);
    row->addSpacing(fontMetrics().averageCharWidth() * 2);
    row->addWidget(m_shownRows);
    row->addWidget(m_entries);
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
}

void QueryPage::setOptions(const SQLOptions &options, bool hasButtons)
{
    m_sql->setPreferredSize(options.editorLines, options.editorCharacters);
    m_table->setVisibleRows(options.resultLines);
    const QList<int> heights{m_sql->sizeHint().height() + m_problem->sizeHint().height(), m_table->sizeHint().height()};
    // Before it has its place in the window, the splitter is too low for these heights.
    if (!m_splitter->isVisible())
        m_splitter->resize(m_splitter->width(), heights[0] + heights[1] + m_splitter->handleWidth());
    m_splitter->setSizes(heights);
    while (QLayoutItem *item = m_buttons->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    QStringList files;
    if (hasButtons)
        files = options.queryButtons;
    files.removeAll(QString());
    const QFontMetrics metrics(font());
    const ButtonGrid grid = ButtonGrid::of(files, options.editorCharacters * m_sql->characterWidth(),
                                           style()->pixelMetric(QStyle::PM_ScrollBarExtent),
                                           [&metrics](const QString &text) { return metrics.horizontalAdvance(text); });
    for (int i = 0; i < files.size(); ++i) {
        auto *button = new QPushButton(QString(grid.labels[i]).replace(u'&', u"&&"_s));
        button->setObjectName(u"launch%1"_s.arg(i));
        button->setToolTip(u"Open and execute \"%1\""_s.arg(tarnwick::SuitePath(files[i]).shown(u"queries"_s)));
        button->setAutoDefault(false);
        tarnwick::pressWithReturn(button);
        connect(button, &QPushButton::clicked, this, [this, file = files[i]] { Q_EMIT launched(file); });
        m_buttons->addWidget(button, i / grid.columns, i % grid.columns);
    }
}

void QueryPage::refreshNames()
{
    SqlNames names;
    if (m_setup.session.isOpen())
        names = SqlNames::of(m_setup.session.database());
    names.macros = m_setup.context.userMacros;
    names.macros.merge(m_setup.context.currentSystemMacros());
    m_sql->setNames(names);
}

void QueryPage::check()
{
    if (!m_setup.session.isOpen() || m_sql->hasPreview() || m_table->result().isPaused())
        return;
    m_hasError = false;
    if (m_sql->isLong()) {
        showProblem({});
        return;
    }
    const SqlCheck check = SqlCheck::of(m_setup.session.database(), m_sql->sql());
    showProblem(check.error.value_or(check.remark.value_or(SqlCheck::Error())));
    m_hasError = check.error.has_value();
    if (!check.error)
        showParameters(check.parameters);
}

void QueryPage::beginRun()
{
    m_sql->endPause();
    check();
    if (m_hasError)
        showProblem({});
}

void QueryPage::showProblem(const SqlCheck::Error &problem)
{
    m_sql->markError(problem.part, problem.text);
    m_problem->setLine(problem.text);
}

void QueryPage::showError(const dao::SourceRange &where)
{
    m_hasError = false;
    check(); // with the message, if the statement cannot be compiled
    const TextPart part = partOf(where, m_sql->sql());
    if (part.length == 0)
        return;
    if (!m_hasError)
        m_sql->markError(part, u"Line %1, column %2"_s.arg(where.line).arg(where.column));
    m_sql->moveCursor(part.start);
    m_sql->setFocus();
}

void QueryPage::showParameters(const QList<dao::sql::Parameter> &parameters)
{
    m_parameters->clear();
    for (const dao::sql::Parameter &parameter : parameters) {
        auto *item = new QTreeWidgetItem(
            {u'[' + parameter.name + u']', db::daoTypeName(parameter.type), valueOf(parameter.name)});
        item->setData(0, Qt::UserRole, parameter.where.start);
        if (!parameter.suggestion.isEmpty())
            item->setToolTip(0, u"No field has this name. Did you mean \"%1\"?"_s.arg(parameter.suggestion));
        m_parameters->addTopLevelItem(item);
    }
    for (int column = 0; column < 2; ++column)
        m_parameters->resizeColumnToContents(column);
    m_parameters->setVisible(!parameters.isEmpty());
}

QString QueryPage::valueOf(const QString &parameter) const
{
    const QString macro = u'[' + parameter + u']';
    for (const tarnwick::JMacro &macros : {m_setup.context.userMacros, m_setup.context.currentSystemMacros()}) {
        if (const auto value = macros.value(macro))
            return *value;
    }
    return m_setup.context.history.value(m_name, parameter).value_or(QString());
}

void QueryPage::showRun(const QString &text)
{
    m_run->setLine(text);
}

void QueryPage::showStatement(int number, int done, int count)
{
    m_statements->setVisible(count > 1);
    m_statements->setRange(0, qMax(1, count));
    m_statements->setValue(done);
    m_statements->setFormat(tarnwick::format(messages::kStatementOf.text, number, count));
}

void QueryPage::showEntries(const QString &text)
{
    m_entries->setText(text);
}

void QueryPage::showTransaction(bool isOpen)
{
    m_waiting->setVisible(isOpen);
}

void QueryPage::setRunning(bool isRunning)
{
    m_stop->setVisible(isRunning);
    m_table->setUpdatesEnabled(!isRunning);
    m_sql->setReadOnly(isRunning);
}

void QueryPage::showRows()
{
    m_table->refresh();
    m_table->setUpdatesEnabled(true);
}

} // namespace query
