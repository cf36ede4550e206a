#include "ListFillDlg.h"

#include "ListParseDlg.h"

#include <plans/storage/Messages.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/OptionPrompts.h>

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QUrl>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace plans {

namespace {

enum Command : int { AddSymbols = FirstOwnCommand, AddSelected, ClearList, EditFile, ViewParsed, SetIndex };
enum Condition : int { IsSet = FirstOwnCondition };

constexpr CommandRow kRows[] = {
    {OpenEntries, u"&Open ...", u"Open a list file", kAlways, u"Ctrl+O"},
    {SaveEntries, u"&Save", u"Store the list in its file", kAlways, u"Ctrl+S"},
    {SaveEntriesAs, u"Save &As...", u"Store the list in another file"},
    {PrintEntries, u"&Print...", u"Print the list as it is shown", kAlways, u"Ctrl+P"},
    {AddSymbols, u"Add Symbols", u"Append every tube that carries a symbol on the map", AnySymbol},
    {AddSelected, u"Add Selected", u"Append every tube that is selected on the map", AnySelected},
    {ClearList, u"&Clear List ...", u"Remove all tubes from the list", AnyEntry},
    {TypeTube, u"T&ype Tube ...\tIns", u"Add a tube by its labels, as a pasted line has them", kAlways, nullptr,
     u"typeTube", CommandRow::KeysNeedFocus, kTablePart},
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
    {FetchEntries, u"&Fetch List ...", u"Read a tube set from the database", Connected},
    {UploadEntries, u"&Upload List", u"Store the list in the database under its name", Connected},
    {UploadEntriesAs, u"Upload List &As ...", u"Store the list in the database under another name", Connected},
    {DeleteEntries, u"&Delete List ...", u"Delete the tube set of this name from the database", IsSet},
    {EditFile, u"Edit File", u"Open the list's file in the desktop's editor"},
    {ViewParsed, u"View Parsed File", u"Show how each line of the list's file was parsed"},
    {SetIndex, u"&Set Index", u"Number the entries in the order shown", AnyEntry},
};
constexpr MenuItem kBar[] = {
    openMenu(u"&File"),
    menuItem(OpenEntries),
    menuItem(SaveEntries),
    menuItem(SaveEntriesAs),
    menuItem(PrintEntries),
    kCloseMenu,
    openMenu(u"&Edit"),
    menuItem(AddSymbols),
    menuItem(AddSelected),
    menuItem(ClearList),
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
    openMenu(u"&Database"),
    menuItem(FetchEntries),
    menuItem(UploadEntries),
    menuItem(UploadEntriesAs),
    menuItem(DeleteEntries),
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

constexpr EntriesKind kKind{
    kTable,       u"List",      u"list",      u"listFillDlg",        u"listEntries", u"Tubes of the list",
    u"Tube List", u"tube_sets", kListChooser, messages::kListChanged};

} // namespace

ListFillDlg::ListFillDlg(const DialogSetup &setup, const TubeList *list)
    : TubeEntriesDlg(setup, kKind, m_editor, m_grid)
    , m_isNew(!list)
    , m_editor(setup.session, setup.project)
    , m_grid(m_editor)
    , m_notes(new QPlainTextEdit)
{
    loadOptions(m_editor.options, setup.project.roots(), prompts());
    if (list)
        m_editor.setList(*list);
    bindOwn();
    makeTitleBar();
    makeNotes();
    makeTable();
    finishEntries({600, 620});
}

void ListFillDlg::bindOwn()
{
    commands().bind(AddSymbols, [this] { showEntries(m_editor.addSymbols(setup().tubes)); });
    commands().bind(AddSelected, [this] { showEntries(m_editor.addSelected(setup().tubes)); });
    commands().bind(ClearList, [this] {
        if (m_editor.clear())
            showEntries();
    });
    commands().bind(EditFile, [this] { editFile(); });
    commands().bind(ViewParsed, [this] { viewParsedFile(); });
    commands().bind(SetIndex, [this] { setIndex(); });
}

QString ListFillDlg::whyNot(int condition) const
{
    if (condition != IsSet)
        return TubeEntriesDlg::whyNot(condition);
    if (m_editor.isFromFile() || m_editor.list().name.isEmpty())
        return u"The list is no tube set of the database."_s;
    return TubeEntriesDlg::whyNot(Connected);
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
        if (isShowing())
            return;
        m_editor.setDescription(m_notes->toPlainText());
        refresh();
    });
}

void ListFillDlg::showFields()
{
    m_notes->setPlainText(m_editor.list().description);
}

QString ListFillDlg::chooseFile()
{
    int filter = m_editor.options.fileFilter;
    FileChooserInfo chooser = kListChooser;
    chooser.filterIndex = &filter;
    const QString path = setup().files.openFile(chooser, u"Open List"_s, setup().project.roots());
    if (!path.isEmpty())
        m_editor.options.fileFilter = filter;
    return path;
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
        storeOptions(m_editor.options, setup().project.roots(), prompts());
        // The list that is shown was read by the other rule.
        if (!m_editor.isModified() && m_editor.open(m_editor.file()))
            showEntries();
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
    const GridModel &shown = table().grid();
    for (int row = 0; row < shown.rowCount(); ++row)
        places.append(shown.sourceRow(row));
    m_editor.setIndex(first, places);
    table().grid().noteAllChanged();
}

bool ListFillDlg::store()
{
    // The list goes into the legend in any case; the question is about its file or tube set.
    if (m_editor.isModified() &&
        prompts().question(Buttons::YesNo, messages::kListChanged, m_editor.shownName()) == Answer::Yes &&
        !saveAtOrigin())
        return false;
    if (m_isNew)
        storeOptions(m_editor.options, setup().project.roots(), prompts());
    return true;
}

} // namespace plans
