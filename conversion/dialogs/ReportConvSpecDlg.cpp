// Parts and behaviour of the format editor; its edits are in SpecDlgEdits.cpp, its files in SpecDlgFiles.cpp.
#include "ReportConvSpecDlg.h"

#include "TextReport.h"

#include <conversion/Messages.h>
#include <conversion/ReportConversion.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/MovingRows.h>
#include <tarnwick/gui/NumberField.h>

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace conversion {

namespace {

enum Command : int {
    OpenFormat,
    SaveFormat,
    SaveFormatAs,
    PrintFormat,
    Undo,
    Redo,
    MoveUp,
    MoveDown,
    DefaultColours,
    ResetFormat
};
enum Condition : int { CanUndo = 1, CanRedo, CanMoveUp, CanMoveDown };
constexpr int kTabsPart = 1;

constexpr CommandRow kRows[] = {
    {OpenFormat, u"&Open ...\tCtrl+O", u"Open another format file"},
    {SaveFormat, u"&Save\tCtrl+S", u"Save the format to its file"},
    {SaveFormatAs, u"Save &As ...", u"Save the format to another file and go on with that"},
    {PrintFormat, u"&Print ...\tCtrl+P", u"Print all settings of the format"},
    {Undo, u"&Undo\tCtrl+Z", u"Take the last change of the format back", CanUndo},
    {Redo, u"&Redo\tCtrl+Shift+Z", u"Make the change again that was taken back", CanRedo, u"Ctrl+Y"},
    {MoveUp, u"Move U&p\tAlt+Up", u"Move the marked rows up; of two fields of one type, the lower one counts",
     CanMoveUp, nullptr, u"moveUp", CommandRow::KeysNeedFocus, kTabsPart},
    {MoveDown, u"Move &Down\tAlt+Down", u"Move the marked rows down; of two fields of one type, the lower one counts",
     CanMoveDown, nullptr, u"moveDown", CommandRow::KeysNeedFocus, kTabsPart},
    {DefaultColours, u"Set Default Colors",
     u"Give each field a color; neighbors differ most, also for color-blind eyes"},
    {ResetFormat, u"Reset ...", u"Replace all settings by the built-in format"},
};
constexpr MenuItem kBar[] = {openMenu(u"&File"),
                             menuItem(OpenFormat),
                             menuItem(SaveFormat),
                             menuItem(SaveFormatAs),
                             menuItem(PrintFormat),
                             kCloseMenu,
                             openMenu(u"&Edit"),
                             menuItem(Undo),
                             menuItem(Redo),
                             kSeparator,
                             menuItem(MoveUp),
                             menuItem(MoveDown),
                             kSeparator,
                             menuItem(DefaultColours),
                             menuItem(ResetFormat),
                             kCloseMenu,
                             kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

constexpr int kMostHeaderLines = 9999;

// The parts of a path, one a line, in the order of FilenamePart.
TextSource pathLines(const QString &path)
{
    QStringList parts;
    for (int part = 0; part < filenamePartLabels().size(); ++part)
        parts.append(path.isEmpty() ? QString() : ReportConversion::pathPart(path, part));
    return {path, parts.join(u'\n').toUtf8()};
}

} // namespace

ReportConvSpecDlg::ReportConvSpecDlg(const Setup &setup)
    : JDialog(setup.prompts, &kTable, u"reportConvSpecDlg"_s, setup.parent)
    , m_setup(setup)
    , m_spec(setup.spec)
    , m_stored(setup.spec)
    , m_before(setup.spec)
    , m_path(setup.path)
    , m_pathBefore(setup.path)
    , m_history(setup.spec)
    , m_pathText(pathLines(setup.text.path()))
    , m_operTypes(m_spec.operTypes, {u"ENTRY"_s, u"FROM"_s}, true)
    , m_fileTypes(m_spec.fileTypes, {u"DESCRIPTION"_s, u"PATTERN"_s}, false)
    , m_colours(setup.project.roots(), setup.prompts)
    , m_printing(setup.prompts, this)
    , m_text(new TextReport)
    , m_tabs(new QTabWidget)
    , m_resultTable(new JTableWin(setup.prompts))
{
    bindCommands();
    m_text->setObjectName(u"sampleText"_s);
    constexpr int kSampleLines = 8;
    constexpr int kSampleColumns = 120;
    m_text->setVisiblePart(kSampleColumns, kSampleLines);
    m_resultTable->setObjectName(u"lineResult"_s);
    m_resultTable->setAccessibleName(u"Result of the current line"_s);
    m_resultTable->setSource(&m_result);
    makeTabs();
    auto *lower = new QSplitter(Qt::Horizontal);
    lower->setObjectName(u"formatSplitter"_s);
    lower->setChildrenCollapsible(false);
    lower->addWidget(m_tabs);
    lower->addWidget(m_resultTable);
    lower->setStretchFactor(0, 3);
    lower->setStretchFactor(1, 2);
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->setObjectName(u"sampleSplitter"_s);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_text);
    splitter->addWidget(lower);
    splitter->setStretchFactor(1, 1);
    body().addWidget(splitter, 1);
    body().addLayout(makeFieldBar());
    makeButtons();
    m_line = setup.line;
    showTab();
    showSpec();
    connect(m_text, &TextReport::currentLineChanged, this, &ReportConvSpecDlg::showLine);
    connect(m_text, &TextReport::columnsChanged, this, &ReportConvSpecDlg::showMarkedColumns);
    connect(m_tabs, &QTabWidget::currentChanged, this, &ReportConvSpecDlg::showTab);
    finish(m_text, {1000, 700});
}

ReportConvSpecDlg::~ReportConvSpecDlg()
{
    for (JTableWin *table : findChildren<JTableWin *>())
        table->setSource(nullptr);
    m_text->setText(nullptr);
}

QString ReportConvSpecDlg::whyNot(int condition) const
{
    switch (condition) {
    case CanUndo:
        return m_history.canUndo() ? QString() : u"There is nothing to undo."_s;
    case CanRedo:
        return m_history.canRedo() ? QString() : u"There is nothing to redo."_s;
    default:
        const JTableWin *table = currentTable();
        const bool canMove = table && !rowsToMove(*table, condition == CanMoveUp ? -1 : 1).first.isEmpty();
        return canMove ? QString() : u"There is no row to be moved."_s;
    }
}

void ReportConvSpecDlg::bindCommands()
{
    commands().setConditions([this](int condition) { return whyNot(condition); });
    commands().bind(Undo, [this] { takeState(m_history.undo()); });
    commands().bind(Redo, [this] { takeState(m_history.redo()); });
    commands().bind(MoveUp, [this] { moveRows(-1); });
    commands().bind(MoveDown, [this] { moveRows(1); });
    commands().bind(OpenFormat, [this] { openFormat(); });
    commands().bind(SaveFormat, [this] { save(); });
    commands().bind(SaveFormatAs, [this] { saveAs(); });
    commands().bind(PrintFormat, [this] { print(); });
    commands().bind(DefaultColours, [this] {
        setDefaultColours(m_spec);
        specChanged();
    });
    commands().bind(ResetFormat, [this] { reset(); });
}

void ReportConvSpecDlg::makeTabs()
{
    m_tabs->setObjectName(u"formatTabs"_s);
    m_tabs->addTab(makeOptionsPage(), u"Options"_s);
    addFieldPage(m_report, FieldTable::List::Report, u"Report Fields"_s, u"reportFields"_s);
    addFieldPage(m_filename, FieldTable::List::Filename, u"Filename Fields"_s, u"filenameFields"_s);
    addFieldPage(m_comment, FieldTable::List::Comment, u"Comment Fields"_s, u"commentFields"_s);
    m_operTypeTable = addPairPage(m_operTypes, u"Oper Types"_s, u"operTypes"_s);
    m_fileTypeTable = addPairPage(m_fileTypes, u"File Types"_s, u"fileTypes"_s);
    m_tabs->setCurrentIndex(ReportTab);
    actions().setPart(kTabsPart, m_tabs);
}

// Rows are moved by the commands or dragged.
void ReportConvSpecDlg::addTable(JTableWin &table, SpecTable &rows, const QString &title, const QString &name)
{
    table.setObjectName(name);
    table.setAccessibleName(title);
    table.setSource(&rows);
    rows.changed = [this] { specChanged(); };
    m_tabs->addTab(&table, title);
    connect(&table, &JTableWin::selectionChangeEnded, this, [this] { refresh(); });
    new RowDragging(table, [this](const QList<int> &moved, int before) { run([&] { moveRows(moved, before); }); });
}

QWidget *ReportConvSpecDlg::makeOptionsPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    m_headerLines = new NumberField;
    m_headerLines->setObjectName(u"headerLines"_s);
    m_headerLines->setFormat(u"%d"_s);
    m_headerLines->setLimits(0, kMostHeaderLines);
    m_headerLines->setToolTip(u"So many lines at the top are header lines, whatever they hold"_s);
    m_layout = new QComboBox;
    m_layout->setObjectName(u"fieldLayout"_s);
    m_layout->addItems(fieldLayoutLabels());
    m_layout->setToolTip(u"How a line is cut: by columns, or at commas; values in quotes may contain commas"_s);
    form->addRow(u"&Header Lines"_s, m_headerLines);
    form->addRow(u"F&ield Type"_s, m_layout);
    connect(m_headerLines, &NumberField::numberEdited, this, [this](double number) {
        m_spec.headerLines = qint32(number);
        specChanged();
    });
    connect(m_layout, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_spec.layout = index;
        m_report.table->reload();
        specChanged();
    });
    return page;
}

void ReportConvSpecDlg::addFieldPage(FieldPage &page, FieldTable::List list, const QString &title, const QString &name)
{
    page.fields = std::make_unique<FieldTable>(m_spec, list, prompts());
    page.table = new JTableWin(prompts());
    page.table->setEntryColumn(u"FLD#"_s, 5, u"%3d"_s);
    addTable(*page.table, *page.fields, title, name);
    connect(page.table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this, &page] {
        const int row = page.table->currentSourceRow();
        if (&page == currentPage() && row >= 0 && row < page.fields->fields().size() && !m_spec.isCommaDelimited()) {
            const ConvField &field = page.fields->fields()[row];
            m_text->setColumns(field.firstColumn, field.lastColumn);
            showMarkedColumns();
        }
    });
}

JTableWin *ReportConvSpecDlg::addPairPage(PairTable &pairs, const QString &title, const QString &name)
{
    auto *table = new JTableWin(prompts());
    addTable(*table, pairs, title, name);
    return table;
}

QLayout *ReportConvSpecDlg::makeFieldBar()
{
    auto *row = new QHBoxLayout;
    m_type = new QComboBox;
    m_type->setObjectName(u"newType"_s);
    auto *label = new QLabel(u"&Type"_s);
    label->setBuddy(m_type);
    row->addWidget(label);
    row->addWidget(m_type);
    m_add = addButton(*row, u"ADD FIEL&D"_s, u"addButton"_s,
                      u"Add a field of this type with the marked columns of the text"_s, [this] { addField(); });
    m_setColumns = addButton(*row, u"SET COL&UMNS"_s, u"columnsButton"_s,
                             u"Give the current field the marked columns of the text"_s, [this] { setFieldColumns(); });
    m_colour = addButton(*row, u"COLO&R"_s, u"colourButton"_s, u"Choose the color of the current field"_s,
                         [this] { chooseColour(); });
    m_marked = new QLabel;
    m_marked->setObjectName(u"markedColumns"_s);
    row->addWidget(m_marked, 1);
    return row;
}

void ReportConvSpecDlg::makeButtons()
{
    auto *row = new QHBoxLayout;
    addButton(*row, u"A&PPLY"_s, u"applyButton"_s, u"Convert the text by these settings, without saving them"_s,
              [this] {
                  m_isApplied = true;
                  m_setup.apply(m_spec, m_path);
              });
    row->addStretch(1);
    body().addLayout(row);
}

QString ReportConvSpecDlg::caption() const
{
    return format(messages::kFormatCaption.text, SuitePath(m_path).fileName());
}

ReportConvSpecDlg::FieldPage *ReportConvSpecDlg::currentPage()
{
    switch (m_tabs->currentIndex()) {
    case ReportTab:
        return &m_report;
    case FilenameTab:
        return &m_filename;
    case CommentTab:
        return &m_comment;
    default:
        return nullptr;
    }
}

JTableWin *ReportConvSpecDlg::currentTable() const
{
    return qobject_cast<JTableWin *>(m_tabs->currentWidget());
}

void ReportConvSpecDlg::showTab()
{
    const FieldPage *page = currentPage();
    const bool isPath = page == &m_filename;
    if (isPath != m_isPathShown)
        std::swap(m_line, m_otherLine);
    m_isPathShown = isPath;
    const int line = m_line;
    m_text->setText(isPath ? &m_pathText : &m_setup.text);
    m_text->setMarks(isPath ? FieldMarks() : FieldMarks(m_spec, m_setup.project.steamGen));
    m_text->setCurrentLine(line);
    m_text->setAccessibleName(isPath ? u"Folder, name and extension of the text"_s : u"Text report"_s);
    m_type->clear();
    if (page)
        m_type->addItems(page->fields->typeLabels());
    for (QWidget *part :
         {static_cast<QWidget *>(m_type), static_cast<QWidget *>(m_add), static_cast<QWidget *>(m_setColumns)})
        part->setEnabled(page);
    m_colour->setEnabled(page && !isPath);
    showMarkedColumns();
    showLine();
    refresh();
}

void ReportConvSpecDlg::specChanged()
{
    m_history.note(m_spec);
    if (currentPage() != &m_filename)
        m_text->setMarks(FieldMarks(m_spec, m_setup.project.steamGen));
    for (const FieldPage *page : {&m_report, &m_comment})
        page->table->grid().noteAllChanged();
    showLine();
    refresh();
}

void ReportConvSpecDlg::showSpec()
{
    const QSignalBlocker noLayout(m_layout);
    m_headerLines->setNumber(m_spec.headerLines);
    m_layout->setCurrentIndex(m_spec.isCommaDelimited() ? 1 : 0);
    for (const FieldPage *page : {&m_report, &m_filename, &m_comment}) {
        page->fields->setExtraRows(m_setup.extraFields);
        page->table->refreshRows();
    }
    m_operTypeTable->refreshRows();
    m_fileTypeTable->refreshRows();
    specChanged();
}

void ReportConvSpecDlg::showLine()
{
    const int line = m_line = m_text->currentLine();
    if (currentPage() == &m_filename)
        m_result.convertPath(m_spec, m_setup.text.path());
    else if (line == 0)
        m_result.clear();
    else
        m_result.convert(m_setup.project, m_spec, line, m_setup.text.line(line - 1));
    m_resultTable->reload();
}

void ReportConvSpecDlg::showMarkedColumns()
{
    const auto [first, last] = m_text->columns();
    m_marked->setText(m_text->currentLine() == 0 ? QString() : u"Columns %1 to %2"_s.arg(first).arg(last));
}

} // namespace conversion
