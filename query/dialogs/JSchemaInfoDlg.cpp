#include "JSchemaInfoDlg.h"

#include <query/Messages.h>
#include <tarnwick/gui/JTableWin.h>

#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace query {

namespace {

enum Command : int { Print, PrintAll };

constexpr CommandRow kRows[] = {
    {Print, u"&Print ...\tCtrl+P", u"Print this tab for the chosen table"},
    {PrintAll, u"Print &All ...\tCtrl+A", u"Print this tab for all tables"},
};
constexpr MenuItem kBar[] = {openMenu(u"&File"), menuItem(Print), menuItem(PrintAll), kCloseMenu, kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

const QString kFirstTable = u"report"_s;

int visibleRows()
{
    constexpr int kHighResolution = 1000;
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen && screen->geometry().height() >= kHighResolution ? 30 : 20;
}

/// A name as a query needs it.
QString bracketed(const QString &name)
{
    const bool isWord =
        std::all_of(name.begin(), name.end(), [](QChar c) { return c.isLetterOrNumber() || c == u'_'; });
    return isWord && !name.isEmpty() && !name.front().isDigit() ? name : QString(u'[' + name + u']');
}

} // namespace

void JSchemaInfoDlg::show(db::DatabaseSession &session, const Setup &setup)
{
    SchemaInfo info(session);
    if (info.open())
        JSchemaInfoDlg(info, session.prompts(), setup).exec();
}

JSchemaInfoDlg::JSchemaInfoDlg(SchemaInfo &info, UserPrompts &prompts, const Setup &setup)
    : JDialog(prompts, &kTable, u"schemaInfoDlg"_s, setup.parent)
    , m_info(info)
    , m_setup(setup)
    , m_tables(new QComboBox)
    , m_tabs(new QTabWidget)
    , m_printing(prompts, this)
{
    commands().bind(Print, [this] { print(false); });
    commands().bind(PrintAll, [this] { print(true); });
    m_tables->setObjectName(u"tables"_s);
    m_tables->addItems(m_info.tableNames());
    auto *label = new QLabel(u"&Table"_s);
    label->setBuddy(m_tables);
    titleBar().addWidget(label);
    titleBar().addWidget(m_tables);
    titleBar().addStretch(1);
    makeTab(SchemaInfo::Fields, u"Fields"_s);
    makeTab(SchemaInfo::Indexes, u"Indexes"_s);
    makeTab(SchemaInfo::Relations, u"Relations"_s);
    makeTab(SchemaInfo::Queries, u"Queries"_s);
    m_parts[SchemaInfo::Fields]->setFrozenColumns(SchemaInfo::Attributes + 1);
    connect(&m_parts[SchemaInfo::Fields]->grid(), &GridModel::orderChanged, this, &JSchemaInfoDlg::noteOrder);
    connect(m_tables, &QComboBox::activated, this, [this] { showTable(m_tables->currentText()); });
    body().addWidget(m_tabs, 1);
    const int first = m_tables->findText(kFirstTable, Qt::MatchFixedString);
    m_tables->setCurrentIndex(first);
    showTable(m_tables->currentText());
    finish(m_parts[SchemaInfo::Fields], {1100, m_parts[SchemaInfo::Fields]->sizeHint().height() + 150});
}

JSchemaInfoDlg::~JSchemaInfoDlg()
{
    for (JTableWin *part : m_parts) {
        part->grid().disconnect(this);
        part->setSource(nullptr);
    }
}

void JSchemaInfoDlg::makeTab(int part, const QString &title)
{
    auto *table = new JTableWin(prompts());
    table->setObjectName(title.toLower());
    table->setAccessibleName(title);
    table->setEntryColumn(u"ENTRY"_s, 5, u"%d"_s);
    table->setVisibleRows(visibleRows());
    table->setSource(&m_info.rows(part));
    connect(table, &JTableWin::rowActivated, this, [this, part](int row) { run([&] { insert(part, row); }); });
    m_parts[size_t(part)] = table;
    m_tabs->addTab(table, title);
}

void JSchemaInfoDlg::showTable(const QString &name)
{
    run([&] {
        m_info.setTable(name);
        for (const int part : {SchemaInfo::Fields, SchemaInfo::Indexes, SchemaInfo::Relations})
            m_parts[size_t(part)]->reload();
        m_parts[SchemaInfo::Fields]->setFrozenColumns(SchemaInfo::Attributes + 1);
    });
}

void JSchemaInfoDlg::noteOrder()
{
    const QList<GridModel::SortKey> &keys = m_parts[SchemaInfo::Fields]->grid().sortKeys();
    const int column = keys.isEmpty() ? -1 : keys.constFirst().column;
    if (column == SchemaInfo::Ordinal)
        prompts().status(messages::kSortedByOrdinal);
    else if (column == SchemaInfo::FieldName)
        prompts().status(messages::kSortedByName);
}

void JSchemaInfoDlg::insert(int part, int row)
{
    constexpr int kIndexField = 3;
    if (!m_setup.insertName || row < 0)
        return;
    QString name = m_info.rows(part).text(row, part == SchemaInfo::Indexes ? kIndexField : 0);
    if (part == SchemaInfo::Indexes && name.endsWith(SchemaInfo::kDescending))
        name.chop(SchemaInfo::kDescending.size());
    m_setup.insertName(bracketed(name));
}

void JSchemaInfoDlg::print(bool isAll)
{
    const int part = m_tabs->currentIndex();
    JTableWin *table = m_parts[size_t(part)];
    const QString name = isAll ? QString() : m_info.table();
    const JTablePrintArg layout = m_info.printLayout(part, name);
    if (!isAll) {
        m_printing.print({*table, layout, m_setup.printMacros, layout.title}, TablePrinting::Rows::All);
        return;
    }
    TextRows all = m_info.allTables(part);
    JTableWin printed(prompts());
    printed.setSource(&all);
    m_printing.print({printed, layout, m_setup.printMacros, layout.title}, TablePrinting::Rows::All);
    printed.setSource(nullptr);
}

} // namespace query
