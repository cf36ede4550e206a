#include "MapCommands.h"

#include "Messages.h"
#include "ProjectSession.h"

#include <map/FileChoosers.h>
#include <map/MapFiles.h>
#include <map/Messages.h>
#include <QFileInfo>
#include <tarnwick/AskToSave.h>

using namespace Qt::StringLiterals;

namespace app {

bool MapCommands::mayReplaceMap()
{
    if (!m_session.hasProject() || !m_session.map().isModified())
        return true;
    return tarnwick::saveOrDiscard(m_session.prompts(), messages::kAskSaveMap, [this] { return save(); });
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
    // The question comes first: after Cancel no file has to be chosen.
    if (!mayReplaceMap())
        return;
    const QString path = m_choice->openFile(map::kMapChooser, u"Open Map"_s, m_session.roots());
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
    return map::mayOverwrite(m_session.map(), m_session.prompts()) &&
           m_session.saveMap(file.machinePath(m_session.roots()));
}

QString MapCommands::offeredName() const
{
    const QString name = m_session.map().name();
    return name.isEmpty() ? QString() : name + u".map"_s;
}

bool MapCommands::saveAs()
{
    const QString path = m_choice->saveFile(map::kMapChooser, u"Save Map As"_s, m_session.roots(), offeredName());
    return !path.isEmpty() && m_session.saveMap(path);
}

void MapCommands::importMap()
{
    if (!mayReplaceMap())
        return;
    const tarnwick::PathRoots roots = m_session.roots();
    const QString from = m_choice->openFile(map::kMapTemplateChooser, u"Import From User"_s, roots);
    if (from.isEmpty())
        return;
    const tarnwick::SuitePath copy(u"maps\\"_s + QFileInfo(from).fileName());
    const QString to = copy.machinePath(roots);
    if (QFileInfo(from) != QFileInfo(to) &&
        !map::copyMap(from, to, m_session.map().component().numTube(), roots, m_session.prompts()))
        return;
    if (m_session.openMap(to))
        m_session.prompts().status(map::messages::kImported, copy.text());
}

void MapCommands::exportMap()
{
    const tarnwick::PathRoots roots = m_session.roots();
    const QString path = m_choice->saveFile(map::kMapTemplateChooser, u"Export To User As"_s, roots, offeredName());
    if (!path.isEmpty() && map::exportMap(m_session.map(), path, m_session.prompts()))
        m_session.prompts().status(map::messages::kExported, tarnwick::SuitePath::fromMachine(path, roots).shown());
}

} // namespace app
