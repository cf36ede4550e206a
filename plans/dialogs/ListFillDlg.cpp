#include "ListFillDlg.h"

#include "ListParseDlg.h"
#include "MovingRows.h"

#include <plans/storage/Messages.h>
#include <tarnwick/AskToSave.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QClipboard>
#include <QComboBox>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QUrl>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace plans {

namespace {

enum Command : int {
    OpenList,
    SaveList,
    SaveListAs,
    PrintList,
    AddSymbols,
    AddSelected,
    ClearList,
    PasteTubes,
    MoveUp,
    MoveDown,
    AddTubes,
    RemoveTubes,
    KeepTubes,
    FetchList,
    UploadList,
    UploadListAs,
    DeleteList,
    EditFile,
    ViewParsed,
    SetIndex,
};
enum Condition : int { AnyEntry = 1, AnySymbol, AnySelected, Connected, IsSet };
constexpr int kTablePart = 1;

constexpr CommandRow kRows[] = {
    {OpenList, u"&Open ...", u"Open a list file", kAlways, u"Ctrl+O"},
    {SaveList, u"&Save", u"Store the list in its file", kAlways, u"Ctrl+S"},
    {SaveListAs, u"Save &As...", u"Store the list in another file"},
    {PrintList, u"&Print...", u"Print the list as it is shown", kAlways, u"Ctrl+P"},
    {AddSymbols, u"Add Symbols", u"Append every tube that carries a symbol on the map", AnySymbol},
    {AddSelected, u"Add Selected", u"Append every tube that is selected on the map", AnySelected},
    {ClearList, u"&Clear List ...", u"Remove all tubes from the list", AnyEntry},
    {PasteTubes, u"Paste &Tubes\tCtrl+V",
     u"Append the tubes of the clipboard: a line for each, as a spreadsheet copies them", kAlways, nullptr,
     u"pasteTubes", CommandRow::KeysNeedFocus, kTablePart},
    {MoveUp, u"Move &Up\tAlt+Up", u"Move the marked rows up", AnyEntry, nullptr, u"moveUp", CommandRow::KeysNeedFocus,
     kTablePart},
    {MoveDown, u"Move &Down\tAlt+Down", u"Move the marked rows down", AnyEntry, nullptr, u"moveDown",
     CommandRow::KeysNeedFocus, kTablePart},
    {AddTubes, u"&Add Tubes Of ...", u"Append tubes of another list, tube set, plan, legend entry or the selection"},
    {RemoveTubes, u"&Remove Tubes Of ...",
     u"Remove tubes of another list, tube set, plan, legend entry or the selection", AnyEntry},
    {KeepTubes, u"&Keep Only Tubes Of ...",
     u"Remove all tubes but those of another list, tube set, plan, legend entry or the selection", AnyEntry},
    {FetchList, u"&Fetch List ...", u"Read a tube set from the database", Connected},
    {UploadList, u"&Upload List", u"Store the list in the database under its name", Connected},
    {UploadListAs, u"Upload List &As ...", u"Store the list in the database under another name", Connected},
    {DeleteList, u"&Delete List ...", u"Delete the tube set of this name from the database", IsSet},
    {EditFile, u"Edit File", u"Open the list's file in the desktop's editor"},
    {ViewParsed, u"View Parsed File", u"Show how each line of the list's file was parsed"},
    {SetIndex, u"&Set Index", u"Number the entries in the order shown", AnyEntry},
};
constexpr MenuItem kBar[] = {
    openMenu(u"&File"),
    menuItem(OpenList),
    menuItem(SaveList),
    menuItem(SaveListAs),
    menuItem(PrintList),
    kCloseMenu,
    openMenu(u"&Edit"),
    menuItem(AddSymbols),
    menuItem(AddSelected),
    menuItem(ClearList),
    kSeparator,
    menuItem(PasteTubes),
    menuItem(MoveUp),
    menuItem(MoveDown),
    kSeparator,
    menuItem(AddTubes),
    menuItem(RemoveTubes),
    menuItem(KeepTubes),
    kCloseMenu,
    openMenu(u"&Database"),
    menuItem(FetchList),
    menuItem(UploadList),
    menuItem(UploadListAs),
    menuItem(DeleteList),
    kCloseMenu,
    openMenu(u"&Util"),
    menuItem(EditFile),
    menuItem(ViewParsed),
    menuItem(SetIndex),
    kCloseMenu,
    kEndOfMenu,
};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

constexpr FileChooserInfo kListChooser{u"tube_lists", u"Tube List (*.lst)", u".lst",
                                       u"Tube List (*.txt);;All Files (*.*)"};

} // namespace

ListFillDlg::ListFillDlg(const DialogSetup &setup, const TubeList *list)
    : JDialog(setup.session.prompts(), &kTable, u"listFillDlg"_s, setup.parent)
    , m_setup(setup)
    , m_isNew(!list)
    , m_editor(setup.session, setup.project)
    , m_grid(m_editor)
    , m_table(new JTableWin(prompts()))
    , m_order(new QComboBox)
    , m_notes(new QPlainTextEdit)
    , m_summary(new QLabel)
    , m_printing(prompts(), this)
{
    loadOptions(m_editor.options, setup.project.roots(), prompts());
    if (list)
        m_editor.setList(*list);
    bindFiles();
    bindEditing();
    bindDatabase();
    makeTitleBar();
    makeNotes();
    makeTable();
    m_summary->setObjectName(u"summary"_s);
    body().addWidget(m_summary);
    showList();
    finish(m_table, {600, 620});
    keepDrafts(setup.project.folder, u"list"_s);
}

ListFillDlg::~ListFillDlg()
{
    m_table->setSource(nullptr);
}

void ListFillDlg::bindFiles()
{
    commands().setConditions([this](int condition) -> QString {
        if ((condition == Connected || condition == IsSet) && !m_setup.session.isOpen())
            return u"Connect to a database first."_s;
        if (condition == AnyEntry && m_editor.list().entries.isEmpty())
            return u"The list has no tubes."_s;
        if (condition == AnySymbol && m_setup.tubes.symbolCount() == 0)
            return u"No tube on the map carries a symbol."_s;
        if (condition == AnySelected && m_setup.tubes.selectedCount() == 0)
            return u"No tubes are selected on the map."_s;
        if (condition == IsSet && (m_editor.isFromFile() || m_editor.list().name.isEmpty()))
            return u"The list is no tube set of the database."_s;
        return {};
    });
    commands().bind(OpenList, [this] { openFile(); });
    commands().bind(SaveList, [this] { save(); });
    commands().bind(SaveListAs, [this] { saveAs(); });
    commands().bind(PrintList, [this] { print(); });
    commands().bind(EditFile, [this] { editFile(); });
    commands().bind(ViewParsed, [this] { viewParsedFile(); });
    commands().bind(SetIndex, [this] { setIndex(); });
}

void ListFillDlg::bindEditing()
{
    commands().bind(AddSymbols, [this] { showList(m_editor.addSymbols(m_setup.tubes)); });
    commands().bind(AddSelected, [this] { showList(m_editor.addSelected(m_setup.tubes)); });
    commands().bind(ClearList, [this] {
        if (m_editor.clear())
            showList();
    });
    commands().bind(PasteTubes, [this] { showList(m_editor.paste(QGuiApplication::clipboard()->text())); });
    commands().bind(MoveUp, [this] { move(-1); });
    commands().bind(MoveDown, [this] { move(1); });
    commands().bind(AddTubes, [this] { combine(Combine::Add, u"Add Tubes"_s); });
    commands().bind(RemoveTubes, [this] { combine(Combine::Remove, u"Remove Tubes"_s); });
    commands().bind(KeepTubes, [this] { combine(Combine::Intersect, u"Keep Only Tubes"_s); });
    actions().setPart(kTablePart, m_table);
}

void ListFillDlg::bindDatabase()
{
    commands().bind(FetchList, [this] { fetch(); });
    commands().bind(UploadList, [this] {
        const bool hasName = !m_editor.isFromFile() && !m_editor.list().name.isEmpty();
        hasName ? upload(m_editor.list().name) : uploadAs();
    });
    commands().bind(UploadListAs, [this] { uploadAs(); });
    commands().bind(DeleteList, [this] { m_editor.remove(); });
}

void ListFillDlg::makeTitleBar()
{
    const ellery::SteamGen &component = m_editor.component();
    m_order->setObjectName(u"order"_s);
    m_order->addItems(
        {component.axisNames[int(ellery::Axis::Row)], component.axisNames[int(ellery::Axis::Col)], u"ENTRY"_s});
    m_order->setCurrentIndex(int(m_editor.order()));
    auto *prompt = new QLabel(u"Order B&y"_s);
    prompt->setBuddy(m_order);
    titleBar().addWidget(prompt);
    titleBar().addWidget(m_order);
    titleBar().addStretch(1);
    connect(m_order, &QComboBox::activated, this, [this](int order) {
        run([this, order] {
            m_editor.sort(ListEditor::Order(order));
            showList();
        });
    });
}

void ListFillDlg::makeNotes()
{
    constexpr int kLines = 3;
    m_notes->setObjectName(u"notes"_s);
    m_notes->setTabChangesFocus(true);
    m_notes->setFixedHeight(m_notes->fontMetrics().lineSpacing() * (kLines + 1));
    m_notes->setToolTip(u"Notes of the list file, description of the tube set"_s);
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(u"&Notes"_s);
    label->setBuddy(m_notes);
    row->addWidget(label, 0, Qt::AlignTop);
    row->addWidget(m_notes, 1);
    body().addLayout(row);
    connect(m_notes, &QPlainTextEdit::textChanged, this, [this] {
        if (m_isShowing)
            return;
        m_editor.setDescription(m_notes->toPlainText());
        refresh();
    });
}

void ListFillDlg::makeTable()
{
    constexpr int kVisibleRows = 16;
    m_table->setObjectName(u"listEntries"_s);
    m_table->setAccessibleName(u"Tubes of the list"_s);
    m_table->setVisibleRows(kVisibleRows);
    m_table->setSource(&m_grid);
    m_grid.changed = [this] {
        showSummary();
        refresh();
    };
    body().addWidget(m_table, 1);
    new RowDragging(*m_table, [this](const QList<int> &rows, int before) { run([&] { moveRows(rows, before); }); });
}

void ListFillDlg::showList(int firstRow)
{
    {
        m_isShowing = true;
        const auto end = qScopeGuard([this] { m_isShowing = false; });
        m_notes->setPlainText(m_editor.list().description);
        m_order->setCurrentIndex(int(m_editor.order()));
    }
    m_table->reload();
    if (m_grid.rowCount() > 0) {
        m_table->setCurrentSourceRow(m_grid.rowCount() - 1); // so that the row below comes first in sight
        m_table->setCurrentSourceRow(std::clamp(firstRow, 0, m_grid.rowCount() - 1));
    }
    showSummary();
}

void ListFillDlg::showSummary()
{
    const QList<ListFillTube> &entries = m_editor.list().entries;
    const qsizetype total = entries.size();
    const qsizetype tubes = TubeGroup(addressesOf(entries)).count();
    QString text = total == 1 ? u"1 entry"_s : format(u"%D entries", total);
    if (tubes != total)
        text += format(u", %D different tubes", tubes);
    m_summary->setText(text);
}

bool ListFillDlg::mayReplace()
{
    if (!m_editor.isModified())
        return true;
    const auto saving = [this] { return m_editor.isFromFile() ? save() : upload(m_editor.list().name); };
    return saveOrDiscard(prompts(), messages::kListChanged, saving, m_editor.shownName());
}

bool ListFillDlg::save()
{
    return m_editor.file().isEmpty() ? saveAs() : m_editor.store(m_editor.file());
}

bool ListFillDlg::saveAs()
{
    const QString name = m_editor.list().name.isEmpty() ? QString() : QFileInfo(m_editor.shownName()).fileName();
    const QString path = m_setup.files.saveFile(kListChooser, u"Save List"_s, m_setup.project.roots(), name);
    return !path.isEmpty() && m_editor.store(path);
}

void ListFillDlg::openFile()
{
    if (!mayReplace())
        return;
    int filter = m_editor.options.fileFilter;
    tarnwick::FileChooserInfo chooser = kListChooser;
    chooser.filterIndex = &filter;
    const QString path = m_setup.files.openFile(chooser, u"Open List"_s, m_setup.project.roots());
    if (path.isEmpty())
        return;
    m_editor.options.fileFilter = filter;
    m_editor.open(path);
    showList();
}

QString ListFillDlg::chooseName(const QString &title, const QString &initial)
{
    return m_setup.chooseName(
        m_setup.session,
        {.title = title, .label = u"List Name"_s, .column = u"name"_s, .table = u"tube_sets"_s, .initialName = initial},
        this);
}

bool ListFillDlg::upload(const QString &name)
{
    ProgressDialog progress(this, u"Upload List"_s);
    return m_editor.upload(name, &progress);
}

bool ListFillDlg::uploadAs()
{
    const QString initial =
        m_editor.isFromFile() ? QFileInfo(m_editor.file()).completeBaseName() : m_editor.list().name;
    const QString name = chooseName(u"Upload List As"_s, initial);
    return !name.isEmpty() && upload(name);
}

void ListFillDlg::fetch()
{
    const QString name = chooseName(u"Fetch List"_s, {});
    if (name.isEmpty() || !mayReplace())
        return;
    ProgressDialog progress(this, u"Fetch List"_s);
    if (m_editor.fetch(name, &progress))
        showList();
}

void ListFillDlg::editFile()
{
    const QString file = m_editor.fileForTools();
    if (!file.isEmpty() && !QDesktopServices::openUrl(QUrl::fromLocalFile(file)))
        prompts().information(messages::kNoEditor, file);
}

void ListFillDlg::viewParsedFile()
{
    if (m_editor.fileForTools().isEmpty() || !m_editor.parseFile())
        return;
    const auto optionChanged = [this] {
        storeOptions(m_editor.options, m_setup.project.roots(), prompts());
        // The list that is shown was read by the other rule.
        if (!m_editor.isModified() && m_editor.open(m_editor.file()))
            showList();
        else
            m_editor.parseFile();
    };
    ListParseDlg(m_editor, optionChanged, this).exec();
}

void ListFillDlg::setIndex()
{
    bool isChosen = false;
    const int first = QInputDialog::getInt(this, u"Set Index"_s, u"First entry number"_s, 0, 0,
                                           std::numeric_limits<qint32>::max() - m_grid.rowCount(), 1, &isChosen);
    if (!isChosen)
        return;
    QList<int> places;
    const GridModel &shown = m_table->grid();
    for (int row = 0; row < shown.rowCount(); ++row)
        places.append(shown.sourceRow(row));
    m_editor.setIndex(first, places);
    m_table->grid().noteAllChanged();
}

void ListFillDlg::combine(Combine how, const QString &title)
{
    const auto tubes = chooseTubes(m_setup, title, this);
    if (!tubes)
        return;
    const int before = m_grid.rowCount();
    m_editor.combine(*tubes, how);
    showList(how == Combine::Add ? before : 0);
}

void ListFillDlg::move(int by)
{
    if (const auto [rows, before] = rowsToMove(*m_table, by); !rows.isEmpty())
        moveRows(rows, before);
}

void ListFillDlg::moveRows(const QList<int> &rows, int before)
{
    if (const int first = m_editor.moveEntries(rows, before); first >= 0)
        showMoved(*m_table, first, int(rows.size()));
}

void ListFillDlg::print()
{
    JTablePrintArg layout;
    layout.title = u"Tube List - "_s + m_editor.shownName();
    layout.sections[JTablePrintArg::ReportTitle].text = layout.title + u'\n';
    layout.sections[JTablePrintArg::ReportHeader].text =
        m_summary->text() + u'\n' + m_editor.list().description.trimmed() + u'\n';
    layout.sections[JTablePrintArg::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    m_printing.print({*m_table, layout, m_setup.printMacros(), m_editor.shownName()}, TablePrinting::Rows::All);
}

bool ListFillDlg::store()
{
    // The list goes into the legend in any case; the question is about its file or tube set.
    if (m_editor.isModified() &&
        prompts().question(Buttons::YesNo, messages::kListChanged, m_editor.shownName()) == Answer::Yes &&
        !(m_editor.isFromFile() ? save() : upload(m_editor.list().name)))
        return false;
    if (m_isNew)
        storeOptions(m_editor.options, m_setup.project.roots(), prompts());
    return true;
}

void ListFillDlg::restoreDraft(const QByteArray &content)
{
    m_editor.restoreDraft(content);
    showList();
}

QString ListFillDlg::draftName(const QByteArray &content) const
{
    return u"list \"%1\""_s.arg(ListEditor::nameInDraft(content));
}

} // namespace plans
