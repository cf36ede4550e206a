#include "QueryEditor.h"

#include "Messages.h"

#include <db/StoredQueries.h>
#include <QFileInfo>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/OptionPrompts.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::SuitePath;

namespace {

constexpr tarnwick::FileChooserInfo kProjectQueries{u"queries", u"Query File (*.qry)", u".qry"};
constexpr tarnwick::FileChooserInfo kUserQueries{u"[PALOMINE_DIR]\\user\\queries", u"Query File (*.qry)", u".qry"};

QString shownName(const QString &name)
{
    return SuitePath(name).shown(u"queries"_s);
}

} // namespace

QueryEditor::QueryEditor(const Setup &setup, EditorView &view)
    : m_setup(setup)
    , m_view(view)
    , m_options(setup.optionsName)
    , m_transaction(setup.session, setup.hasTransaction)
    , m_result(setup.session, setup.context)
{
    m_document.layout = tarnwick::JTablePrintArg::forResults();
    tarnwick::loadOptions(m_options, roots(), prompts());
    m_result.setChangeListener(&m_transaction);
}

void QueryEditor::open()
{
    show(false);
    if (!m_options.recentQueries.isEmpty())
        openNamed(m_options.recentQueries.constFirst());
    resetVersions();
}

void QueryEditor::openNamed(const QString &name)
{
    if (QueryDocument::isFileName(name))
        load(SuitePath(name).machinePath(roots()));
    else
        fetch(name);
}

void QueryEditor::openDocument(const QueryDocument &document)
{
    m_document = document;
    show(false);
    m_view.queriesChanged();
    resetVersions();
}

const QueryDocument &QueryEditor::currentDocument()
{
    m_view.collect(m_document);
    return m_document;
}

void QueryEditor::storeOptions()
{
    tarnwick::storeOptions(m_options, roots(), prompts());
}

QString QueryEditor::caption() const
{
    return m_document.isFile() ? tarnwick::format(u"Query File - %S", shownName(m_document.name))
                               : tarnwick::format(u"ARVO Query - %S", m_document.name);
}

QStringList QueryEditor::storedQueries()
{
    QStringList names;
    if (m_setup.session.isOpen())
        tarnwick::attempt(
            prompts(), [&] { names = db::storedQueryNames(m_setup.session.database()); }, messages::kQueryList);
    return names;
}

QString QueryEditor::storedName() const
{
    return m_document.isFile() ? QString() : m_document.name;
}

void QueryEditor::show(bool isModified)
{
    m_view.showDocument(m_document);
    m_view.setModified(isModified);
}

void QueryEditor::adopt(const QString &name)
{
    m_document.name = name;
    m_view.queriesChanged();
}

// ---- new, files --------------------------------------------------------------------------------------------------

bool QueryEditor::askToSave(tarnwick::Buttons buttons)
{
    if (!m_view.isModified())
        return true;
    const Answer answer = prompts().question(buttons, messages::kAskSaveQuery, m_document.name);
    if (answer == Answer::Yes)
        return m_document.isFile() ? save() : storeQuery();
    return answer == Answer::No;
}

void QueryEditor::newQuery()
{
    if (!askToSave())
        return;
    m_view.setSql({});
    m_view.setModified(false);
    adopt({});
    resetVersions();
}

bool QueryEditor::load(const QString &machinePath)
{
    m_view.collect(m_document);
    const auto read = [&] { readQueryFile(m_document, machinePath, roots()); };
    if (!tarnwick::attempt(prompts(), read, messages::kReadFile))
        return false;
    show(false);
    prompts().status(messages::kLoaded, shownName(m_document.name));
    m_view.queriesChanged();
    resetVersions();
    return true;
}

void QueryEditor::openFile()
{
    if (!askToSave())
        return;
    const QString path = m_setup.files.openFile(kProjectQueries, u"Open Query"_s, roots());
    if (!path.isEmpty())
        load(path);
}

void QueryEditor::openFile(const QString &machinePath)
{
    if (askToSave())
        load(machinePath);
}

bool QueryEditor::write(const QString &machinePath, bool isAdopted)
{
    m_view.collect(m_document);
    const auto store = [&] { writeQueryFile(m_document, machinePath); };
    if (!tarnwick::attempt(prompts(), store, messages::kStoreFile))
        return false;
    const QString name = SuitePath::fromMachine(machinePath, roots()).text();
    prompts().status(messages::kStored, shownName(name));
    if (isAdopted) {
        m_view.setModified(false);
        adopt(name);
    }
    return true;
}

bool QueryEditor::save()
{
    if (m_document.name.isEmpty())
        return saveAs();
    return write(SuitePath(m_document.name).machinePath(roots()), true);
}

bool QueryEditor::saveAs()
{
    const QString path =
        m_setup.files.saveFile(kProjectQueries, u"Save Query As"_s, roots(), m_document.nameInFolder());
    return !path.isEmpty() && write(path, true);
}

void QueryEditor::importFile()
{
    if (!askToSave())
        return;
    const QString from = m_setup.files.openFile(kUserQueries, u"Import Query"_s, roots());
    if (from.isEmpty())
        return;
    const SuitePath copy(u"queries\\"_s + QFileInfo(from).fileName());
    const QString to = copy.machinePath(roots());
    const bool isThere = QFileInfo(from) == QFileInfo(to);
    if (!isThere && QFileInfo::exists(to) &&
        prompts().question(tarnwick::Buttons::NoYes, messages::kAskReplaceQueryFile, copy.fileName()) != Answer::Yes)
        return;
    const auto copyFile = [&] { tarnwick::writeFileAtomically(to, tarnwick::readFile(from)); };
    if (isThere || tarnwick::attempt(prompts(), copyFile, messages::kStoreFile))
        load(to);
}

void QueryEditor::exportFile()
{
    const QString path = m_setup.files.saveFile(kUserQueries, u"Export Query"_s, roots(), m_document.nameInFolder());
    if (!path.isEmpty())
        write(path, false);
}

void QueryEditor::openRecent(const QString &name)
{
    if (askToSave())
        openNamed(name);
}

void QueryEditor::clearRecent()
{
    if (prompts().question(tarnwick::Buttons::YesNo, messages::kAskClearRecentQueries) == Answer::Yes)
        tarnwick::changeOptions(m_options, roots(), prompts(), [this] { m_options.recentQueries.clear(); });
}

// ---- stored queries ----------------------------------------------------------------------------------------------

bool QueryEditor::storeUnder(const QString &name, Overwrite overwrite)
{
    const QString sql = m_view.sql();
    if (QueryDocument::isFileName(name)) {
        prompts().error(messages::kNameOfFile, name);
        return false;
    }
    Change change(m_setup.session.isOpen() && !db::isViewName(name) ? &m_transaction : nullptr);
    if (!change.isAllowed() || !query::storeQuery(m_setup.session, name, sql, overwrite))
        return false;
    change.done(u"query \"%1\" stored"_s.arg(name), 0);
    if (m_transaction.isOpen())
        m_stored.append({name, sql});
    m_view.collect(m_document);
    m_view.setModified(false);
    adopt(name);
    return true;
}

bool QueryEditor::storeQuery()
{
    if (m_document.isFile())
        return storeQueryAs(SuitePath(m_document.name).baseName());
    return m_document.name.isEmpty() ? storeQueryAs() : storeUnder(m_document.name, Overwrite::Yes);
}

bool QueryEditor::storeQueryAs(const QString &suggestion)
{
    const std::optional<QString> name = m_view.askName(suggestion);
    return name && !name->trimmed().isEmpty() && storeUnder(name->trimmed(), Overwrite::Ask);
}

void QueryEditor::deleteQuery()
{
    if (m_document.name.isEmpty() || !db::checkConnected(m_setup.session))
        return;
    Change change(&m_transaction);
    if (!change.isAllowed() || !query::deleteQuery(m_setup.session, m_document.name))
        return;
    change.done(u"query \"%1\" deleted"_s.arg(m_document.name), 0);
    m_view.setSql({});
    m_view.setModified(false);
    adopt({});
    resetVersions();
}

void QueryEditor::fetch(const QString &name)
{
    if (name.isEmpty() || !askToSave() || !m_setup.session.isOpen())
        return;
    const std::optional<QString> sql = fetchQuery(m_setup.session, name);
    if (!sql)
        return;
    m_view.setSql(*sql);
    m_view.setModified(false);
    prompts().status(messages::kSetQuery, name);
    adopt(name);
    resetVersions();
}

// ---- versions ----------------------------------------------------------------------------------------------------

void QueryEditor::clear()
{
    m_view.setSql({});
    m_versions.enter({});
}

void QueryEditor::moveVersion(int steps)
{
    if (!m_versions.canMove())
        return;
    const std::optional<int> target = m_versions.move(m_view.sql(), steps);
    if (!target) {
        m_view.beep();
        return;
    }
    prompts().status(messages::kSetVersion, *target + 1, int(m_versions.texts().size()));
    m_view.setSql(m_versions.texts()[*target]);
}

QStringList QueryEditor::namesWithFormerTexts() const
{
    if (!m_setup.session.isOpen())
        return {};
    QueryVersions versions(m_setup.session.path());
    tarnwick::attempt(
        prompts(), [&] { versions.read(); }, messages::kReadVersions);
    return versions.queryNames();
}

QList<QueryVersions::Version> QueryEditor::formerTexts(const QString &name) const
{
    QueryVersions versions(m_setup.session.path());
    tarnwick::attempt(
        prompts(), [&] { versions.read(); }, messages::kReadVersions);
    return versions.versionsOf(name);
}

void QueryEditor::bringBack(const QString &name, const QueryVersions::Version &version)
{
    m_versions.enter(m_view.sql());
    m_view.setSql(version.sql);
    m_versions.enter(version.sql);
    prompts().status(messages::kBroughtBack, name, version.time);
}

// ---- running -----------------------------------------------------------------------------------------------------

bool QueryEditor::loadButton(const QString &path)
{
    if (path.isEmpty()) {
        m_view.beep();
        return false;
    }
    return askToSave() && load(SuitePath(path).machinePath(roots()));
}

Execution QueryEditor::execute(tarnwick::Progress *progress, const TextPart &part,
                               const std::function<void(int, int)> &begins)
{
    if (m_document.isFile())
        tarnwick::changeOptions(m_options, roots(), prompts(), [this] { m_options.addRecentQuery(m_document.name); });
    const QString text = m_view.sql();
    m_versions.enter(text);
    prompts().status(messages::kExecuting);
    m_document.sql = text;
    const QString sql = part.length > 0 ? statementInPlace(text, part) : text;
    QList<TextPart> statements = statementsIn(sql);
    const bool isOne = statements.size() < 2;
    if (isOne)
        statements = {{0, int(sql.size())}};
    Execution execution;
    int affected = 0;
    for (int i = 0; i < statements.size(); ++i) {
        if (begins && !isOne)
            begins(i + 1, int(statements.size()));
        execution = executeStatement(m_setup.session, m_setup.context, m_document.name,
                                     statementInPlace(sql, statements[i]), m_result, progress);
        affected += execution.affected;
        if (execution.outcome == Execution::Outcome::Failed || execution.outcome == Execution::Outcome::Cancelled)
            break;
    }
    execution.affected = affected;
    if (execution.outcome == Execution::Outcome::Rows)
        m_textOfRows = text;
    return execution;
}

Execution QueryEditor::executeOther(const QString &sql, tarnwick::Progress *progress)
{
    prompts().status(messages::kExecuting);
    return executeStatement(m_setup.session, m_setup.context, m_document.name, sql, m_result, progress);
}

QList<StatementWords> QueryEditor::explain(const TextPart &part)
{
    const QString text = m_view.sql();
    const QString sql = part.length > 0 ? statementInPlace(text, part) : text;
    const QList<TextPart> statements = statementsIn(sql);
    const bool isFound = statements.size() == 1 && part.length == 0 && !isEditedSinceRun() && m_result.elapsed() >= 0;
    const auto found = isFound ? std::optional(m_result.rowCount()) : std::nullopt;
    QList<StatementWords> words;
    for (const TextPart &statement : statements)
        words.append(StatementWords::of(m_setup.session.database(), statementInPlace(sql, statement), found));
    return words;
}

tarnwick::JMacro QueryEditor::setUpMacros()
{
    m_view.collect(m_document);
    applyPrintOptions(m_document, m_options);
    return queryMacros(m_document, m_result, m_setup.context, m_setup.steamGen);
}

QueryDocument QueryEditor::expanded()
{
    const tarnwick::JMacro macros = setUpMacros();
    return expandedDocument(m_document, macros);
}

} // namespace query
