#include "FormatInfoDlg.h"

#include <query/Messages.h>
#include <tarnwick/gui/JTableWin.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace query {

namespace {

enum Command : int { Save, Import, Export };

constexpr CommandRow kRows[] = {
    {Save, u"&Save\tCtrl+S", u"Store the formats now"},
    {Import, u"&Import ...", u"Take the formats of a file"},
    {Export, u"&Export ...", u"Store the formats in a file of their own"},
};
constexpr MenuItem kBar[] = {openMenu(u"&File"), menuItem(Save), kSeparator, menuItem(Import),
                             menuItem(Export),   kCloseMenu,     kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

constexpr FileChooserInfo kChooser{u"[PALOMINE_DIR]\\user\\display_formats", u"Display Formats (*.opt)", u".opt"};
const QString kFileName = u"display_format.opt"_s;

} // namespace

void FormatInfoDlg::show(db::DatabaseSession &session, QueryContext &context, FileChoice &files, QWidget *parent)
{
    FormatEdit edit(session, context);
    if (!edit.open())
        return;
    session.prompts().status(messages::kEditFormats);
    FormatInfoDlg(edit, context, session.prompts(), files, parent).exec();
}

FormatInfoDlg::FormatInfoDlg(FormatEdit &edit, QueryContext &context, UserPrompts &prompts, FileChoice &files,
                             QWidget *parent)
    : JDialog(prompts, &kTable, u"formatInfoDlg"_s, parent)
    , m_edit(edit)
    , m_context(context)
    , m_files(files)
    , m_tables(new QComboBox)
    , m_table(new JTableWin(prompts))
{
    constexpr int kVisibleRows = 30;
    constexpr int kTableCharacters = 30;
    commands().bind(Save, [this] { m_edit.store(); });
    commands().bind(Import, [this] { importFile(); });
    commands().bind(Export, [this] { exportFile(); });
    m_tables->setObjectName(u"tables"_s);
    m_tables->setMinimumContentsLength(kTableCharacters);
    auto *label = new QLabel(u"&Table"_s);
    label->setBuddy(m_tables);
    titleBar().addWidget(label);
    titleBar().addWidget(m_tables);
    titleBar().addStretch(1);
    m_table->setObjectName(u"fields"_s);
    m_table->setAccessibleName(u"Fields"_s);
    m_table->setEntryColumn(u"FIELD"_s, 5);
    m_table->setVisibleRows(kVisibleRows);
    m_table->setSource(&m_edit);
    connect(&m_table->grid(), &QAbstractItemModel::dataChanged, this, [this] { refresh(); });
    connect(m_tables, &QComboBox::activated, this, [this](int table) {
        m_edit.setTable(table);
        m_table->reload();
    });
    body().addWidget(m_table, 1);
    showTables();
    finish(m_table, {830, m_table->sizeHint().height() + 130});
}

FormatInfoDlg::~FormatInfoDlg()
{
    m_table->grid().disconnect(this);
    m_table->setSource(nullptr);
}

void FormatInfoDlg::showTables()
{
    m_tables->clear();
    m_tables->addItems(m_edit.tableNames());
    m_tables->setCurrentIndex(m_edit.table());
    m_table->reload();
}

void FormatInfoDlg::importFile()
{
    const QString path = m_files.openFile(kChooser, u"Import"_s, m_context.roots);
    if (path.isEmpty() || !m_edit.importFrom(path))
        return;
    showTables();
    showMessage(tarnwick::format(u"Read the formats of \"%S\".", path));
}

void FormatInfoDlg::exportFile()
{
    const QString path = m_files.saveFile(kChooser, u"Export"_s, m_context.roots, kFileName);
    if (!path.isEmpty() && m_edit.exportTo(path))
        prompts().status(messages::kStored, path);
}

bool FormatInfoDlg::store()
{
    if (m_edit.isModified())
        return m_edit.store();
    prompts().status(messages::kNoFormatChanges);
    return true;
}

bool FormatInfoDlg::discard()
{
    if (m_edit.isModified()) {
        const Answer answer = prompts().question(Buttons::YesNoCancel, messages::kAskSaveChanges);
        if (answer != Answer::No)
            return answer == Answer::Yes && store();
    }
    prompts().status(messages::kNoFormatChanges);
    return true;
}

} // namespace query
