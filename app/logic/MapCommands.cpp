#include "MapCommands.h"

#include "AskToSave.h"
#include "Messages.h"
#include "ProjectSession.h"

#include <map/MapFiles.h>
#include <QFileInfo>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace app {

bool MapCommands::mayReplaceMap()
{
    if (!m_session.hasProject() || !m_session.map().isModified())
        return true;
    return saveOrLetGo(m_session.prompts(), messages::kAskSaveMap, [this] { return save(); });
}

void MapCommands::newMap()
{
    if (!mayReplaceMap())
        return;
    m_session.newMap();
    m_session.prompts().status(messages::kNewMap);
}

void MapCommands::open()
{
    // Asked first: who wants to go on with the present map need not choose a file.
    if (!mayReplaceMap())
        return;
    const QString path = m_choice->openFile(kMapChooser, u"Open Map"_s, m_session.roots());
    if (!path.isEmpty())
        m_session.openMap(path);
}

void MapCommands::open(const QString &machinePath)
{
    if (mayReplaceMap())
        m_session.openMap(machinePath);
}

bool MapCommands::save()
{
    const tarnwick::SuitePath file(m_session.map().file());
    if (file.isEmpty())
        return saveAs();
    if (m_session.map().isFileChanged() &&
        m_session.prompts().question(Buttons::NoYes, messages::kAskReplaceChanged, file.text()) != Answer::Yes)
        return false;
    if (m_session.map().isOfOtherModel() &&
        m_session.prompts().question(Buttons::NoYes, messages::kAskReplaceOtherModel, file.text()) != Answer::Yes)
        return false;
    return m_session.saveMap(file.machinePath(m_session.roots()));
}

QString MapCommands::offeredName() const
{
    const QString name = m_session.map().name();
    return name.isEmpty() ? QString() : name + u".map"_s;
}

bool MapCommands::saveAs()
{
    const QString path = m_choice->saveFile(kMapChooser, u"Save Map As"_s, m_session.roots(), offeredName());
    return !path.isEmpty() && m_session.saveMap(path);
}

void MapCommands::importMap()
{
    if (!mayReplaceMap())
        return;
    const tarnwick::PathRoots roots = m_session.roots();
    const QString from = m_choice->openFile(kMapTemplateChooser, u"Import From User"_s, roots);
    if (from.isEmpty())
        return;
    const tarnwick::SuitePath copy(u"maps\\"_s + QFileInfo(from).fileName());
    const QString to = copy.machinePath(roots);
    if (QFileInfo(from) != QFileInfo(to) && !copyIntoProject(from, to))
        return;
    if (m_session.openMap(to))
        m_session.prompts().status(messages::kImported, copy.text());
}

bool MapCommands::copyIntoProject(const QString &from, const QString &to)
{
    tarnwick::UserPrompts &prompts = m_session.prompts();
    const auto read = [&] { map::MapFile().readMap(from, m_session.map().component().numTube()); };
    if (!tarnwick::attempt(prompts, read, map::messages::kReadMapFailed))
        return false;
    if (QFileInfo::exists(to) &&
        prompts.question(Buttons::NoYes, messages::kAskReplaceFile,
                         tarnwick::SuitePath::fromMachine(to, m_session.roots()).text()) != Answer::Yes)
        return false;
    const auto copy = [&] { tarnwick::writeFileAtomically(to, tarnwick::readFile(from)); };
    return tarnwick::attempt(prompts, copy, map::messages::kStoreMapFailed);
}

void MapCommands::exportMap()
{
    const tarnwick::PathRoots roots = m_session.roots();
    const QString path = m_choice->saveFile(kMapTemplateChooser, u"Export To User As"_s, roots, offeredName());
    if (!path.isEmpty() && map::exportMap(m_session.map(), path, m_session.prompts()))
        m_session.prompts().status(messages::kExported, tarnwick::SuitePath::fromMachine(path, roots).text());
}

} // namespace app
