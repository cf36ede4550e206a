// Parts of the dialog, its files and its text; storing and checking are in ConvDlgStore.cpp.
#include "ReportConvDlg.h"

#include "PromptPanel.h"
#include "ReportConvOptionsDlg.h"
#include "ReportConvSpecDlg.h"
#include "TextReport.h"

#include <brannock/gui/ReportEditor.h>
#include <brannock/gui/ReportProblemsDlg.h>
#include <conversion/Messages.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/DroppedFiles.h>
#include <tarnwick/gui/FileStatusTable.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QDropEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace conversion {

namespace {

enum Command : int { OpenFiles, Print };

constexpr CommandRow kRows[] = {
    {OpenFiles, u"&Open ...\tCtrl+O", u"Choose text reports for the list"},
    {Print, u"&Print ...\tCtrl+P", u"Print the entries of the current report"},
};
constexpr MenuItem kBar[] = {openMenu(u"&File"), menuItem(OpenFiles), menuItem(Print), kCloseMenu, kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

} // namespace

ReportConvDlg::ReportConvDlg(const Setup &setup)
    : JDialog(setup.prompts, &kTable, u"reportConvDlg"_s, setup.parent)
    , m_setup(setup)
    , m_check(setup.project.steamGen, setup.project.defects)
    , m_conversion(setup.project)
    , m_fileTable(makeFileStatusTable(m_files, prompts(), u"Text reports"_s,
                                      [this](int index) { run([&] { selectFile(index); }); }))
    , m_text(new TextReport)
    , m_prompts(new PromptPanel(setup.project))
    , m_editor(new brannock::ReportEditor(prompts(), &m_check, {.isImport = false, .isReadOnly = false}))
    , m_printing(prompts(), this)
{
    m_check.setIsFilledLater();
    loadOptions(m_options, setup.project.roots(), prompts());
    m_conversion.prompts = m_options.prompts;
    m_prompts->setPrompts(m_options.prompts);
    setAcceptDrops(true);
    commands().bind(OpenFiles, [this] { chooseFiles(); });
    commands().bind(Print, [this] { print(); });
    makeMiddle();
    m_splitter = new QSplitter(Qt::Vertical);
    m_splitter->setObjectName(u"splitter"_s);
    m_splitter->addWidget(m_fileTable);
    m_splitter->addWidget(m_middle);
    m_splitter->addWidget(m_editor);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    body().addWidget(m_splitter, 1);
    makeButtons();
    applyOptions();
    run([this] { loadSpec(); });
    finish(m_fileTable, {1000, 800});
}

ReportConvDlg::~ReportConvDlg()
{
    m_fileTable->setSource(nullptr);
    m_text->setText(nullptr);
}

void ReportConvDlg::makeMiddle()
{
    m_text->setObjectName(u"textReport"_s);
    m_middle = new QSplitter(Qt::Horizontal);
    m_middle->setObjectName(u"textSplitter"_s);
    m_middle->setChildrenCollapsible(false);
    m_middle->addWidget(m_text);
    m_middle->addWidget(m_prompts);
    m_middle->setStretchFactor(0, 1);
    connect(m_text, &TextReport::currentLineChanged, this, &ReportConvDlg::followText);
    connect(m_editor, &brannock::ReportEditor::currentEntryChanged, this, &ReportConvDlg::followEntry);
}

void ReportConvDlg::makeButtons()
{
    auto *row = new QHBoxLayout;
    addButton(*row, u"&OPTIONS"_s, u"optionsButton"_s, u"Change the size and the look of text and report"_s,
              [this] { editOptions(); });
    addButton(*row, u"FOR&MAT"_s, u"formatButton"_s, u"Edit the format by which the texts are read"_s,
              [this] { editFormat(); });
    addButton(*row, u"CHEC&K"_s, u"checkButton"_s, u"List what would be stored of all texts, and every problem"_s,
              [this] { checkAll(); });
    addButton(*row, u"&STORE"_s, u"storeButton"_s, u"Store the entries of the current text as a report file"_s,
              [this] { storeCurrent(); });
    addButton(*row, u"STORE A&LL"_s, u"storeAllButton"_s,
              u"Convert and store the texts that are not done, from the first to the last"_s, [this] { storeAll(); });
    row->addStretch(1);
    body().addLayout(row);
}

QString ReportConvDlg::caption() const
{
    if (m_files.rowCount() == 0)
        return u"Convert Reports"_s;
    const SuitePath spec(m_options.specFile);
    return format(messages::kConvertCaption.text, spec.baseName(), nameOf(m_files.files()[m_files.current()].path));
}

void ReportConvDlg::loadSpec()
{
    const SuitePath path(m_options.specFile);
    ReportConvSpec spec;
    bool isThere = true;
    const auto load = [&] { isThere = spec.loadOrReset(path.machinePath(m_setup.project.roots())); };
    attempt(prompts(), load, messages::kCouldNotLoadSpec);
    if (!isThere)
        prompts().status(messages::kDefaultSpecUsed, path.text());
    m_conversion.spec = spec;
    m_text->setMarks(FieldMarks(spec, m_setup.project.steamGen));
}

void ReportConvDlg::applyOptions()
{
    constexpr int kTextLines = 12;
    m_text->setVisiblePart(m_options.sourceColumns, kTextLines);
    m_text->setFontSize(m_options.fontSize);
    m_text->setHighlighted(m_options.highlightFields);
    m_editor->table().setVisibleRows(m_options.reportLines);
    const int text = m_text->sizeHint().width();
    m_middle->setSizes({text, std::max(m_prompts->sizeHint().width(), m_middle->width() - text)});
    const int editor = m_editor->sizeHint().height();
    const int rest = m_splitter->height() - editor - m_fileTable->height();
    if (rest > 0)
        m_splitter->setSizes({m_fileTable->height(), rest, editor});
}

void ReportConvDlg::chooseFiles()
{
    QStringList filters;
    for (const TextPair &type : std::as_const(m_conversion.spec.fileTypes))
        filters.append(format(u"%S (%S)", type.from, type.entry));
    filters.append(u"All Files (*.*)"_s);
    const QString first = filters.takeFirst();
    const QString more = filters.join(u";;"_s);
    const QString folder = m_options.reportsFolder;
    int filterIndex = m_options.fileFilterIndex;
    const FileChooserInfo chooser{.folder = reinterpret_cast<const char16_t *>(folder.utf16()),
                                  .filter = reinterpret_cast<const char16_t *>(first.utf16()),
                                  .extension = u".txt",
                                  .moreFilters =
                                      more.isEmpty() ? nullptr : reinterpret_cast<const char16_t *>(more.utf16()),
                                  .filterIndex = &filterIndex};
    const QStringList paths = m_setup.files.openFiles(chooser, u"Open Text Reports"_s, m_setup.project.roots());
    if (paths.isEmpty())
        return;
    m_options.fileFilterIndex = filterIndex;
    m_options.reportsFolder =
        SuitePath::fromMachine(QFileInfo(paths.constFirst()).absolutePath(), m_setup.project.roots()).text();
    openFiles(paths);
}

void ReportConvDlg::openFiles(const QStringList &paths)
{
    if (!mayLoseEdits(messages::kCloseWithoutStore))
        return;
    m_edited.clear();
    delete m_problems; // of other files
    m_files.open(paths);
    m_fileTable->reload();
    showCurrentFile();
    saveOptions();
    refresh();
}

void ReportConvDlg::keepEdits()
{
    if (m_editor->document().isModified())
        m_edited.insert(m_files.current(), m_editor->report());
}

void ReportConvDlg::selectFile(int index)
{
    keepEdits();
    takePrompts();
    m_files.select(index, prompts());
    m_fileTable->grid().noteAllChanged();
    showCurrentFile();
}

void ReportConvDlg::showCurrentFile()
{
    m_fileTable->setCurrentSourceRow(m_files.current());
    if (!convertCurrent())
        return;
    if (const auto edited = m_edited.constFind(m_files.current()); edited != m_edited.constEnd())
        m_editor->setReport(*edited);
}

bool ReportConvDlg::convertCurrent()
{
    const QString path = m_files.files()[m_files.current()].path;
    if (!m_edited.contains(m_files.current()))
        m_files.noteRead();
    m_isConverted = false;
    m_editor->setReport({}); // the entries of another file must not be stored in place of this one's
    m_text->setText(nullptr);
    takePrompts();
    const auto convert = [&] {
        if (!m_batch) {
            // The first screen appears at once, however long the text is.
            m_head = TextSource::head(path);
            m_text->setText(&m_head);
            m_text->viewport()->repaint();
        }
        std::unique_ptr<ProgressDialog> progress;
        if (!m_batch)
            progress = std::make_unique<ProgressDialog>(this, u"Converting text report"_s);
        m_conversion.convertFile(path, m_batch ? m_batch : progress.get());
        m_isConverted = true;
    };
    const Outcome outcome = attemptCancellable(prompts(), convert, messages::kCouldNotLoadText);
    if (m_isConverted)
        showConverted();
    else if (outcome == Outcome::Cancelled)
        prompts().status(messages::kNotConverted, nameOf(path));
    else
        m_text->setText(nullptr);
    if (outcome == Outcome::Cancelled && m_batch)
        throw Cancelled();
    return m_isConverted;
}

void ReportConvDlg::showConverted()
{
    m_text->setText(&m_conversion.text());
    m_text->setMarks(FieldMarks(m_conversion.spec, m_setup.project.steamGen));
    m_editor->setReport(m_conversion.report());
    m_prompts->setPrompts(m_conversion.prompts);
    showRemarks();
    followText(m_text->currentLine());
}

void ReportConvDlg::showRemarks()
{
    const Remarks &remarks = m_conversion.remarks();
    const QString name = nameOf(m_conversion.text().path());
    if (remarks.isEmpty()) {
        prompts().status(messages::kConverted, name, m_conversion.report().numEntry());
        return;
    }
    QHash<int, QString> notes;
    for (const Remark &remark : remarks.kept()) {
        QString &note = notes[remark.line];
        note += (note.isEmpty() ? QString() : u"\n"_s) + remark.text;
    }
    m_text->setNotes(notes);
    const Remark &first = remarks.kept().constFirst();
    const QString place = first.line > 0 ? u"line %1: "_s.arg(first.line) : QString();
    prompts().status(messages::kRemarks, remarks.count(), name, QString(place + first.text));
}

void ReportConvDlg::useSpec(const ReportConvSpec &spec)
{
    if (!mayLoseEdits(messages::kLoseEdits))
        return;
    m_edited.clear();
    m_editor->document().setStored();
    m_conversion.spec.assignSettings(spec);
    m_text->setMarks(FieldMarks(spec, m_setup.project.steamGen));
    m_text->viewport()->repaint(); // before the text is converted, which can take longer
    if (m_files.rowCount() == 0)
        return;
    if (!m_isConverted) {
        showCurrentFile();
        return;
    }
    const int line = m_text->currentLine();
    m_isConverted = false;
    {
        takePrompts();
        ProgressDialog progress(this, u"Converting text report"_s);
        const auto convert = [&] {
            m_conversion.convertAgain(&progress);
            m_isConverted = true;
        };
        if (attemptCancellable(prompts(), convert, messages::kCouldNotLoadText) == Outcome::Cancelled) {
            m_editor->setReport({});
            prompts().status(messages::kNotConverted, nameOf(m_conversion.text().path()));
            return;
        }
    }
    m_editor->setReport(m_conversion.report());
    m_prompts->setPrompts(m_conversion.prompts);
    m_text->setNotes({});
    showRemarks();
    followText(line);
    refresh();
}

void ReportConvDlg::followText(int line)
{
    m_editor->setCurrentEntry(ReportConversion::entryOfLine(m_editor->report(), line));
}

void ReportConvDlg::followEntry(int entry)
{
    m_text->setCurrentLine(ReportConversion::lineOfEntry(m_editor->report(), entry));
}

void ReportConvDlg::editOptions()
{
    ReportConvOptionsDlg dialog(m_options, prompts(), this);
    dialog.exec();
    if (!dialog.isSaved())
        return;
    m_options = dialog.options();
    applyOptions();
    saveOptions();
}

void ReportConvDlg::editFormat()
{
    const auto apply = [this](const ReportConvSpec &spec, const QString &path) {
        m_options.specFile = path;
        useSpec(spec);
    };
    ReportConvSpecDlg dialog({.prompts = prompts(),
                              .project = m_setup.project,
                              .files = m_setup.files,
                              .spec = m_conversion.spec,
                              .path = m_options.specFile,
                              .extraFields = m_options.extraFields,
                              .text = m_isConverted ? m_conversion.text() : m_head,
                              .line = m_text->currentLine(),
                              .printMacros = m_setup.printMacros,
                              .apply = apply,
                              .parent = this});
    dialog.exec();
    saveOptions();
}

void ReportConvDlg::takePrompts()
{
    m_conversion.prompts = m_prompts->prompts();
}

void ReportConvDlg::saveOptions()
{
    m_options.prompts = m_prompts->prompts();
    storeOptions(m_options, m_setup.project.roots(), prompts());
}

bool ReportConvDlg::mayLoseEdits(const Message &question)
{
    keepEdits();
    return m_edited.isEmpty() || prompts().question(Buttons::YesNo, question, int(m_edited.size())) == Answer::Yes;
}

bool ReportConvDlg::store()
{
    if (!mayLoseEdits(messages::kCloseWithoutStore))
        return false;
    saveOptions();
    return true;
}

bool ReportConvDlg::discard()
{
    return mayLoseEdits(messages::kCloseWithoutStore);
}

void ReportConvDlg::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void ReportConvDlg::dropEvent(QDropEvent *event)
{
    const QStringList paths = droppedFiles(*event->mimeData());
    if (!paths.isEmpty())
        run([&] { openFiles(paths); });
}

} // namespace conversion
