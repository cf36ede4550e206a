// Parts of the dialog, its files and its text; storing and checking are in ConvDlgStore.cpp.
#include "ReportConvDlg.h"

#include "PromptPanel.h"
#include "ReportConvOptionsDlg.h"
#include "ReportConvSpecDlg.h"
#include "TextReport.h"

#include <conversion/Messages.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QFileInfo>
#include <QHBoxLayout>
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
    : ReportFilesDlg(setup.prompts, setup.project, setup.files,
                     {.commands = kTable,
                      .dialogName = u"reportConvDlg",
                      .tableTitle = u"Text reports",
                      .closes = messages::kCloseWithoutStore,
                      .goesOn = messages::kGoOnWithNextFile,
                      .editor = {.isImport = false, .isReadOnly = false}},
                     setup.parent)
    , m_setup(setup)
    , m_conversion(setup.project)
    , m_text(new TextReport)
    , m_prompts(new PromptPanel(setup.project))
    , m_printing(prompts(), this)
{
    entryCheck().setIsFilledLater();
    loadOptions(m_options, setup.project.roots(), prompts());
    m_conversion.prompts = m_options.prompts;
    m_prompts->setPrompts(m_options.prompts);
    commands().bind(OpenFiles, [this] { chooseFiles(); });
    commands().bind(Print, [this] { print(); });
    makeMiddle();
    m_splitter = new QSplitter(Qt::Vertical);
    m_splitter->setObjectName(u"splitter"_s);
    m_splitter->addWidget(&fileTable());
    m_splitter->addWidget(m_middle);
    m_splitter->addWidget(&editor());
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    body().addWidget(m_splitter, 1);
    makeButtons();
    applyOptions();
    run([this] { loadSpec(); });
    finish(&fileTable(), {1000, 800});
}

ReportConvDlg::~ReportConvDlg()
{
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
    connect(&editor(), &brannock::ReportEditor::currentEntryChanged, this, &ReportConvDlg::followEntry);
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
              u"Convert and store the texts that are not done, from the first to the last"_s,
              [this] { storeAll(u"Storing reports"_s); });
    row->addStretch(1);
    body().addLayout(row);
}

QString ReportConvDlg::caption() const
{
    if (fileList().rowCount() == 0)
        return u"Convert Reports"_s;
    const SuitePath spec(m_options.specFile);
    return format(messages::kConvertCaption.text, spec.baseName(),
                  nameOf(fileList().files()[fileList().current()].path));
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
    editor().table().setVisibleRows(m_options.reportLines);
    const int text = m_text->sizeHint().width();
    m_middle->setSizes({text, std::max(m_prompts->sizeHint().width(), m_middle->width() - text)});
    const int entries = editor().sizeHint().height();
    const int rest = m_splitter->height() - entries - fileTable().height();
    if (rest > 0)
        m_splitter->setSizes({fileTable().height(), rest, entries});
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

bool ReportConvDlg::showFile(const QString &path, const brannock::Report *edited)
{
    editor().setReport({}); // the entries of another file must not be stored in place of this one's
    m_text->setText(nullptr);
    takePrompts();
    bool isConverted = false;
    const auto convert = [&] {
        if (!batch()) {
            // The first screen appears at once, however long the text is.
            m_head = TextSource::head(path);
            m_text->setText(&m_head);
            m_text->viewport()->repaint();
        }
        std::unique_ptr<ProgressDialog> own;
        if (!batch())
            own = std::make_unique<ProgressDialog>(this, u"Converting text report"_s);
        Progress &progress = batch() ? *batch() : *own;
        m_conversion.convertFile(path, &progress);
        showConverted(edited, progress);
        isConverted = true;
    };
    const Outcome outcome = attemptCancellable(prompts(), convert, messages::kCouldNotLoadText);
    if (isConverted)
        showRemarks();
    else if (outcome == Outcome::Cancelled)
        prompts().status(messages::kNotConverted, nameOf(path));
    else
        m_text->setText(nullptr);
    if (outcome == Outcome::Cancelled && batch())
        throw Cancelled();
    return isConverted;
}

void ReportConvDlg::showConverted(const brannock::Report *edited, Progress &progress)
{
    editor().setReport(edited ? *edited : m_conversion.report(), &progress);
    m_text->setText(&m_conversion.text());
    m_text->setMarks(FieldMarks(m_conversion.spec, m_setup.project.steamGen));
    m_prompts->setPrompts(m_conversion.prompts);
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
    forgetEdits();
    m_conversion.spec.assignSettings(spec);
    m_text->setMarks(FieldMarks(spec, m_setup.project.steamGen));
    m_text->viewport()->repaint(); // before the text is converted, which can take longer
    if (fileList().rowCount() == 0)
        return;
    if (!isShown()) {
        showCurrentFile();
        return;
    }
    const int line = m_text->currentLine();
    setShown(false);
    {
        takePrompts();
        ProgressDialog progress(this, u"Converting text report"_s);
        const auto convert = [&] {
            m_conversion.convertAgain(&progress);
            editor().setReport(m_conversion.report(), &progress);
            setShown(true);
        };
        if (attemptCancellable(prompts(), convert, messages::kCouldNotLoadText) == Outcome::Cancelled) {
            editor().setReport({});
            prompts().status(messages::kNotConverted, nameOf(m_conversion.text().path()));
            return;
        }
    }
    m_prompts->setPrompts(m_conversion.prompts);
    m_text->setNotes({});
    showRemarks();
    followText(line);
    refresh();
}

void ReportConvDlg::followText(int line)
{
    editor().setCurrentEntry(ReportConversion::entryOfLine(editor().report(), line));
}

void ReportConvDlg::followEntry(int entry)
{
    m_text->setCurrentLine(ReportConversion::lineOfEntry(editor().report(), entry));
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
                              .text = isShown() ? m_conversion.text() : m_head,
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

} // namespace conversion
