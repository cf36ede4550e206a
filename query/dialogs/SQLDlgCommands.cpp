// The commands of the SQL editor's menus.
#include "ExplainDlg.h"
#include "FormatInfoDlg.h"
#include "JQueryWin.h"
#include "JSchemaInfoDlg.h"
#include "QueryPage.h"
#include "SqlCommands.h"
#include "SQLDlg.h"
#include "SQLOptionsDlg.h"

#include <dao/ProgressScope.h>
#include <query/gui/SqlFindBar.h>
#include <query/Messages.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QDesktopServices>
#include <QTabWidget>
#include <QUrl>

namespace query {

using namespace Qt::StringLiterals;
using Rows = tarnwick::TablePrinting::Rows;

namespace {

constexpr tarnwick::FileChooserInfo kExports{u"temp", u"Query Exports (*.txt)", u".txt",
                                             u"CSV (*.csv);;Spreadsheet (*.xlsx);;All Files (*.*)"};

} // namespace

void SQLDlg::bindCommands()
{
    commands().setConditions([this](int condition) { return whyNot(condition); });
    bindFileCommands();
    bindEditCommands();
    bindDatabaseCommands();
}

QString SQLDlg::whyNot(int condition) const
{
    const auto unless = [](bool holds, const QString &reason) { return holds ? QString() : reason; };
    switch (condition) {
    case Full:
        return unless(m_setup.isFull, u"Queries cannot be stored from here."_s);
    case Versions:
        return unless(m_editor.versions().canMove(), u"No other text was executed yet."_s);
    case HasText:
        return unless(m_page->sql().length() > 0, u"There is no text."_s);
    case HasMap:
        return unless(bool(m_setup.markOnMap), u"OK marks the tubes on the map."_s);
    case HasSelection:
        return unless(m_page->sql().hasSelectedText(), u"No text is selected."_s);
    default:
        return {};
    }
}

void SQLDlg::bindFileCommands()
{
    commands().bind(NewQuery, [this] { m_editor.newQuery(); });
    commands().bind(OpenQuery, [this] { m_editor.openFile(); });
    commands().bind(SaveQuery, [this] { m_editor.save(); });
    commands().bind(SaveQueryAs, [this] { m_editor.saveAs(); });
    commands().bind(ImportQuery, [this] { m_editor.importFile(); });
    commands().bind(ExportQuery, [this] { m_editor.exportFile(); });
    commands().bindList(
        FirstRecentQuery, [this](const auto &entry) { m_editor.openRecent(entry.value); },
        [this] {
            QList<tarnwick::CommandHandlers::ListEntry> entries;
            for (const QString &name : m_editor.recentNames())
                entries.append({tarnwick::SuitePath(name).shown(u"queries"_s), name, {}});
            return entries;
        });
    commands().bind(PrintResult, [this] { print(false, Rows::All); });
    commands().bind(PrintCurrentPage, [this] { print(false, Rows::CurrentPage); });
    commands().bind(PreviewResult, [this] { print(true, Rows::All); });
}

void SQLDlg::bindEditCommands()
{
    commands().bind(ClearQuery, [this] { m_editor.clear(); });
    commands().bind(BackVersion, [this] { m_editor.back(); });
    commands().bind(ForwardVersion, [this] { m_editor.forward(); });
    commands().bind(EditSqlOptions, [this] { editOptions(); });
    commands().bind(EditDisplayFormats, [this] {
        FormatInfoDlg::show(m_setup.editor.session, m_setup.editor.context, m_setup.editor.files, this);
    });
    commands().bind(ClearRecentQueries, [this] { m_editor.clearRecent(); });
    commands().bind(FindText, [this] { m_page->findBar().open(); });
    commands().bind(FindNextText, [this] { m_page->findBar().findNext(true); });
    commands().bind(NextPart, [this] {
        const bool isInText = m_page->sql().hasFocus();
        m_tabs->setCurrentIndex(0);
        (isInText ? static_cast<QWidget &>(m_page->table()) : m_page->sql()).setFocus();
    });
    commands().bind(FormatStatements, [this] { formatStatements(); });
}

void SQLDlg::bindDatabaseCommands()
{
    commands().bind(ShowTables, [this] {
        JSchemaInfoDlg::show(m_setup.editor.session,
                             {.roots = m_setup.editor.context.roots,
                              .printMacros = m_setup.editor.context.currentSystemMacros(),
                              .insertName = [this](const QString &name) { m_page->sql().insertName(name); },
                              .parent = this});
    });
    commands().bind(StoreQuery, [this] { m_editor.storeQuery(); });
    commands().bind(StoreQueryAs, [this] { m_editor.storeQueryAs(); });
    commands().bind(DeleteQuery, [this] { m_editor.deleteQuery(); });
    commands().bindList(
        FirstFormerText,
        [this](const auto &entry) {
            const auto versions = m_editor.formerTexts(m_editor.storedName());
            const int index = entry.value.toInt();
            if (index < versions.size())
                m_editor.bringBack(m_editor.storedName(), versions[index]);
        },
        [this] { return formerTexts(); });
    commands().bind(ExportResults, [this] { exportResults(); });
    commands().bind(ViewExport, [this] { viewExport(); });
    commands().bind(MarkOnMap, [this] {
        m_setup.markOnMap(m_editor.currentDocument(), m_editor.result());
        m_page->table().grid().noteAllChanged(); // rows without a tube are highlighted
    });
    commands().bind(SelectOnMap, [this] { selectOnMap(); });
    commands().bind(FindSelectedTubes, [this] { findSelectedTubes(); });
    commands().bind(ExplainStatements, [this] { explain(); });
    commands().bind(ExecuteQuery, [this] { execute(); });
    commands().bind(ExecuteSelection, [this] { execute(m_page->sql().selectedPart()); });
}

QList<tarnwick::CommandHandlers::ListEntry> SQLDlg::formerTexts() const
{
    QList<tarnwick::CommandHandlers::ListEntry> entries;
    const QString name = m_editor.storedName();
    if (name.isEmpty() || !m_setup.editor.session.isOpen())
        return entries;
    constexpr int kMostCharacters = 50;
    for (const QueryVersions::Version &version : m_editor.formerTexts(name)) {
        const QString time =
            QDateTime::fromString(version.time, Qt::ISODate).toLocalTime().toString(u"yyyy-MM-dd HH:mm"_s);
        entries.append({time + u"   "_s + version.sql.simplified().left(kMostCharacters).replace(u'&', u"&&"_s),
                        QString::number(entries.size()),
                        {}});
    }
    return entries;
}

void SQLDlg::editOptions()
{
    SQLOptionsDlg dialog(m_editor.options(), m_setup.editor.context.roots, prompts(), m_setup.editor.files, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (m_setup.isFull)
        applyOptions();
    m_editor.storeOptions();
}

void SQLDlg::print(bool isPreview, Rows rows)
{
    const tarnwick::JMacro macros = m_editor.setUpMacros();
    const QueryDocument &document = m_editor.document();
    const QString name = tarnwick::SuitePath(document.name).baseName();
    if (isPreview)
        m_page->table().preview(document.layout, macros, name, rows);
    else
        m_page->table().print(document.layout, macros, name, rows);
}

void SQLDlg::exportResults()
{
    const tarnwick::PathRoots &roots = m_setup.editor.context.roots;
    const QString path = m_setup.editor.files.saveFile(kExports, u"Export Results"_s, roots,
                                                       tarnwick::SuitePath(m_editor.document().name).baseName());
    if (!path.isEmpty() && m_page->table().exportTo(path))
        prompts().status(messages::kStored, tarnwick::SuitePath::fromMachine(path, roots).shown(u"temp"_s));
}

void SQLDlg::viewExport()
{
    const QString path = m_setup.editor.files.openFile(kExports, u"View Export"_s, m_setup.editor.context.roots);
    if (!path.isEmpty() && !QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        prompts().error(messages::kNoTextEditor, path);
}

void SQLDlg::explain()
{
    if (!db::checkConnected(m_setup.editor.session))
        return;
    QList<StatementWords> words;
    const auto read = [&] {
        tarnwick::ProgressDialog progress(this, u"Explain"_s);
        const QueryResult::ReadPause pause(m_editor.result());
        const dao::ProgressScope stoppable(m_setup.editor.session.database(), &progress);
        words = m_editor.explain(m_page->sql().selectedPart());
    };
    if (attemptCancellable(prompts(), read, messages::kExplain) != tarnwick::Outcome::Done)
        return;
    ExplainDlg dialog(words, prompts(), this);
    if (dialog.exec() == QDialog::Accepted && !dialog.chosen().isEmpty())
        executeOther(dialog.chosen());
}

void SQLDlg::formatStatements()
{
    QString formatted;
    const auto format = [&] { formatted = formattedText(sql()); };
    if (tarnwick::attempt(prompts(), format, messages::kFormatStatement))
        setSql(formatted);
}

} // namespace query
