#include "Target.h"

#include <app/logic/SystemMacros.h>
#include <db/CreateDatabase.h>
#include <db/FieldDefinition.h>
#include <db/revision/ConnectDatabase.h>
#include <QDir>
#include <QFileInfo>
#include <tarnwick/Leftovers.h>
#include <tarnwick/OptionPrompts.h>

namespace cli {

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace {

Answer answerOf(const QString &word)
{
    if (word == "yes"_L1)
        return Answer::Yes;
    if (word == "no"_L1)
        return Answer::No;
    if (word == "cancel"_L1)
        return Answer::Cancel;
    throw UsageError(u"\"%1\" is not a valid answer; use yes, no or cancel."_s.arg(word));
}

} // namespace

QList<Answer> answersOf(const Arguments &arguments)
{
    if (arguments.has(u"yes") + arguments.has(u"no") + arguments.has(u"answers") > 1)
        throw UsageError(u"Only one of --yes, --no and --answers can be given."_s);
    if (arguments.has(u"yes"))
        return {Answer::Yes};
    if (arguments.has(u"no"))
        return {Answer::No};
    if (arguments.has(u"convert")) {
        const QString word = arguments.value(u"convert");
        if (word != "yes"_L1 && word != "no"_L1)
            throw UsageError(u"--convert is yes or no."_s);
        return {answerOf(word)};
    }
    QList<Answer> answers;
    if (arguments.has(u"answers"))
        for (const QString &word : arguments.value(u"answers").split(u','))
            answers.append(answerOf(word));
    return answers;
}

ConsolePrompts consolePromptsOf(const Arguments &arguments)
{
    using Tell = ConsolePrompts::Tell;
    const QList<Answer> answers = answersOf(arguments);
    if (arguments.knows(u"convert"))
        return ConsolePrompts(answers, Tell::AsResult, u"answer with --convert yes or --convert no"_s);
    const QString advice = arguments.knows(u"yes") ? u"answer with --yes, --no or --answers"_s
                                                   : u"\"arvo-cli connect\" can answer otherwise"_s;
    return ConsolePrompts(answers, arguments.has(u"verbose") ? Tell::Everything : Tell::Failures, advice);
}

FlagParameters::FlagParameters(const QStringList &assignments, tarnwick::UserPrompts &prompts)
    : m_prompts(&prompts)
{
    for (const QString &assignment : assignments) {
        const qsizetype equals = assignment.indexOf(u'=');
        if (equals < 1)
            throw UsageError(u"--param needs NAME=VALUE, not \"%1\"."_s.arg(assignment));
        QString name = assignment.left(equals).trimmed().toLower();
        if (name.startsWith(u'[') && name.endsWith(u']'))
            name = name.mid(1, name.size() - 2);
        m_values[name] = assignment.mid(equals + 1);
    }
}

bool FlagParameters::confirm(const QString &, QList<query::ParameterEntry> &entries, query::QueryContext &)
{
    QStringList missing;
    for (query::ParameterEntry &entry : entries) {
        const auto given = m_values.constFind(entry.name.toLower());
        const bool isRemembered = entry.source == query::ParameterEntry::Source::SqlQuery && entry.hasValue();
        if (given != m_values.constEnd()) {
            entry.setText(*given, *m_prompts);
            entry.source = query::ParameterEntry::Source::SystemMacro; // valid for this run only: not remembered
        } else if (isRemembered) {
            missing.append(u"[%1] (last time \"%2\")"_s.arg(entry.name, entry.text));
            continue;
        }
        if (!entry.hasValue())
            missing.append(entry.lack());
    }
    if (missing.isEmpty())
        return true;
    m_prompts->showError(tarnwick::kErrorSeverity, 0,
                         u"No value for %1; give it with --param NAME=VALUE."_s.arg(missing.join(u", "_s)));
    return false;
}

namespace {

brannock::Project projectAt(const QString &path, Target::Takes takes)
{
    const QFileInfo info(path);
    if (info.isDir())
        return brannock::Project::load(info.absoluteFilePath());
    // A database in a project's arvo folder selects that project.
    QDir folder = info.absoluteDir();
    const bool inArvo = folder.dirName().compare("arvo"_L1, Qt::CaseInsensitive) == 0 && folder.cdUp();
    if (info.exists() && inArvo && brannock::Project::isProjectFolder(folder.path()))
        return brannock::Project::load(folder.path());
    if (takes == Target::Takes::Project)
        throw tarnwick::Error(info.exists() ? u"%1 is neither a project's folder nor a database of one."_s.arg(path)
                                            : u"The folder %1 does not exist."_s.arg(path));
    return {};
}

} // namespace

Target::Target(const QString &path, const Arguments &arguments, Takes takes)
    : m_console(consolePromptsOf(arguments))
    , m_prompts(m_console, programName())
    , m_project(projectAt(path, takes))
    , m_session(m_prompts)
    , m_parameters(arguments.values(u"param"), m_prompts)
    , m_queries(m_session, m_context)
    , m_runner(m_queries, m_prompts)
    , m_options(m_project.databaseFormat)
{
    m_context.roots = m_project.isLoaded() ? m_project.roots() : tarnwick::PathRoots::fromEnvironment();
    m_map.setProject(&m_project);
    if (m_project.isLoaded())
        tarnwick::removeLeftoversBelow(m_project.folder);
    for (const QString &kept : {u"/config"_s, u"/user"_s})
        tarnwick::removeLeftoversBelow(m_context.roots.palomineDir + kept);
    m_context.prompt = &m_parameters;
    m_context.systemMacros = [this] { return systemMacros(); };
    // Commands that take only a project work on its component.
    if (const QString remark = m_project.tablesRemark(); takes == Takes::Project && !remark.isEmpty())
        m_prompts.showInformation(remark);
    const bool hasOptions = tarnwick::loadOptions(m_options, m_context.roots, m_prompts);
    m_formatYear = hasOptions ? m_options.databaseFormat : m_project.databaseFormat;
    m_context.userMacros = m_options.userMacros;
    tarnwick::loadOptions(m_context.history, m_context.roots, m_prompts);
    query::loadFormats(m_context.formats, m_context.roots, m_prompts);
    if (arguments.has(u"database"))
        m_databasePath = pathOf(arguments.value(u"database"));
    else
        m_databasePath = QFileInfo(path).isDir() ? m_project.databasePath() : QFileInfo(path).absoluteFilePath();
}

QString Target::pathOf(const QString &argument) const
{
    const bool isOfSuite = argument.contains(u'\\') || argument.startsWith(u"[PALOMINE_DIR]"_s, Qt::CaseInsensitive);
    const QString path = isOfSuite ? tarnwick::SuitePath(argument).machinePath(m_context.roots) : argument;
    return QFileInfo(path).absoluteFilePath();
}

bool Target::connect(Use use)
{
    const int errors = m_console.errorsShown();
    const bool ownAndMissing =
        m_project.isLoaded() && m_databasePath == m_project.databasePath() && !QFileInfo::exists(m_databasePath);
    if (use == Use::Store && ownAndMissing && !db::createProjectDatabase(m_prompts, m_project, m_formatYear))
        return false;
    // Failed tables were reported; an incomplete schema must not receive results.
    if (m_console.errorsShown() > errors)
        return false;
    ConsoleProgress progress;
    if (db::connectDatabase(m_session, m_databasePath,
                            {hasProject() ? &m_project : nullptr, nullptr, &progress, use == Use::Read,
                             use == Use::Import || use == Use::Store}))
        return true;
    if (m_console.errorsShown() == errors)
        throw tarnwick::Cancelled();
    return false;
}

tarnwick::JMacro Target::systemMacros() const
{
    if (!m_project.isLoaded())
        return {};
    return app::systemMacros(m_project, m_map.tubes(), m_map.file(),
                             {m_session.path(), m_session.isOpen() && m_session.isUpdatable()});
}

} // namespace cli
