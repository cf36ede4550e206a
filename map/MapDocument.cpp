#include "MapDocument.h"

#include <exception>
#include <map>
#include <QFileInfo>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace map {

struct MapDocument::Listeners
{
    std::map<int, Listener> list; ///< in the order of subscription
    int next = 0;
};

MapDocument::MapDocument()
    : m_listeners(std::make_shared<Listeners>())
{
}

MapDocument::~MapDocument() = default;

Subscription MapDocument::subscribe(const Listener &listener)
{
    const int number = m_listeners->next++;
    m_listeners->list.emplace(number, listener);
    const std::weak_ptr<Listeners> listeners = m_listeners;
    return Subscription(std::shared_ptr<void>(nullptr, [listeners, number](void *) {
        if (const auto stillThere = listeners.lock())
            stillThere->list.erase(number);
    }));
}

void MapDocument::notify(const MapEvent &event)
{
    // Copied, since a listener may unsubscribe itself or others.
    QList<int> numbers;
    for (const auto &[number, listener] : m_listeners->list)
        numbers.append(number);
    // All listeners must follow the change, also if one of them fails. The first failure is reported.
    std::exception_ptr failure;
    for (const int number : std::as_const(numbers)) {
        const auto found = m_listeners->list.find(number);
        if (found == m_listeners->list.end())
            continue;
        try {
            Listener(found->second)(event);
        } catch (...) {
            if (!failure)
                failure = std::current_exception();
        }
    }
    if (failure)
        std::rethrow_exception(failure);
}

const ellery::SteamGen &MapDocument::component() const
{
    static const ellery::SteamGen none;
    return m_project ? m_project->steamGen : none;
}

void MapDocument::setProject(const brannock::Project *project)
{
    m_project = project;
    m_file.clear();
    m_stored = {};
    restart(MapState(), MapEvent::Component | MapEvent::File);
}

int MapDocument::followComponent(const ellery::SteamGen &before)
{
    const bool wasModified = isModified();
    MapState state = this->state();
    qsizetype dropped = 0;
    for (Entry &entry : state.entries) {
        const auto copy = std::shared_ptr(entry->clone());
        copy->tubes = followTubes(entry->tubes, before, component());
        dropped += entry->tubes.size() - copy->tubes.size();
        entry = copy;
    }
    if (dropped > 0)
        state.header.clearSignatures(); // the signatures were given for other entries
    state.selection = followTubes(state.selection, before, component());
    std::sort(state.selection.begin(), state.selection.end());
    m_history.reset(state);
    // Map files store tubes as indices into the component, so a map with entries must be saved again.
    if (wasModified || count() > 0)
        m_history.setNeverSaved();
    MapEvent event;
    event.what = MapEvent::Component | MapEvent::Undo;
    paint(event);
    notify(event);
    return int(dropped);
}

void MapDocument::change(const QString &label, const Change &make)
{
    if (m_edit)
        return make(*m_edit);
    MapEdit edit(state());
    {
        const QScopedValueRollback current(m_edit, &edit);
        make(edit);
    }
    MapState after = edit.state();
    const MapState &before = state();
    if (!marksTheSame(before.entries, after.entries))
        after.header.clearSignatures();
    for (size_t i = 0; i < std::min(before.entries.size(), after.entries.size()); ++i) {
        if (isSame(before.entries[i], after.entries[i]))
            after.entries[i] = before.entries[i];
    }
    MapEvent event = MapEvent::between(before, after);
    if (!event.what)
        return;
    event.what |= MapEvent::Undo;
    m_history.push(label, std::move(after));
    paint(event);
    notify(event);
}

void MapDocument::moveTo(int position)
{
    const MapState before = state();
    m_history.moveTo(position);
    MapEvent event = MapEvent::between(before, state());
    event.what |= MapEvent::Undo;
    paint(event);
    notify(event);
}

void MapDocument::restart(const MapState &state, MapEvent::Changes further)
{
    MapEvent event = MapEvent::between(this->state(), state);
    event.what |= further | MapEvent::Undo;
    m_history.reset(state);
    paint(event);
    notify(event);
}

void MapDocument::paint(const MapEvent &event)
{
    if (event.has(MapEvent::kLegend)) {
        m_tubes = ellery::TubeStates(component().numTube());
        m_hits = paintEntries(entries(), component(), m_tubes);
    }
    m_tubes.setSelection(selection());
}

QString MapDocument::name() const
{
    return tarnwick::SuitePath(m_file).baseName();
}

QString MapDocument::machinePath() const
{
    return tarnwick::SuitePath(m_file).machinePath(m_project->roots());
}

tarnwick::JDateTime MapDocument::storedAt() const
{
    return m_stored.at.isNull() ? tarnwick::JDateTime()
                                : tarnwick::JDateTime::fromSeconds(m_stored.at.toSecsSinceEpoch());
}

bool MapDocument::isFileChanged() const
{
    if (m_stored.at.isNull())
        return false;
    const QFileInfo info(machinePath());
    return info.exists() && info.lastModified() != m_stored.at;
}

bool MapDocument::isFileGone() const
{
    return !m_stored.at.isNull() && !QFileInfo::exists(machinePath());
}

bool MapDocument::isOfOtherModel() const
{
    return !m_stored.at.isNull() && m_stored.site.model != component().modelName;
}

MapFile MapDocument::content() const
{
    MapFile map;
    if (m_project) {
        static_cast<fenwright::SiteInfo &>(map) = m_project->site;
        map.modelName = map.model = component().modelName;
        map.outage = m_project->outageName();
    }
    map.header = header();
    map.description = description();
    map.entries = entries();
    return map;
}

void MapDocument::setContent(const MapFile &map, const QString &file, const Stored &stored)
{
    restore(map, file, stored, selection());
}

void MapDocument::restore(const MapFile &map, const QString &file, const Stored &stored, const QList<qint32> &selection)
{
    m_file = file;
    m_stored = stored;
    MapEdit edit(state());
    edit.setEntries(map.entries);
    edit.setHeader(map.header);
    edit.setDescription(map.description);
    edit.setSelection(selection);
    restart(edit.state(), MapEvent::File);
}

MapDocument::Stored MapDocument::storedNow(const QString &machinePath, const fenwright::SiteInfo &site) const
{
    return {site, QFileInfo(machinePath).lastModified()};
}

void MapDocument::setRead(const MapFile &map, const QString &machinePath)
{
    fenwright::SiteInfo site = map;
    site.model = map.modelName; // the first file versions hold no site
    setContent(map, tarnwick::SuitePath::fromMachine(machinePath, m_project->roots()).text(),
               storedNow(machinePath, site));
}

void MapDocument::setStored(const QString &machinePath)
{
    m_file = tarnwick::SuitePath::fromMachine(machinePath, m_project->roots()).text();
    m_stored = storedNow(machinePath, content());
    m_history.setSaved();
    MapEvent event;
    event.what = MapEvent::File | MapEvent::Undo;
    notify(event);
}

void MapDocument::setNeverSaved()
{
    m_history.setNeverSaved();
    MapEvent event;
    event.what = MapEvent::Undo;
    notify(event);
}

QList<qint32> followTubes(const QList<qint32> &tubes, const ellery::SteamGen &before, const ellery::SteamGen &after)
{
    QList<qint32> followed;
    followed.reserve(tubes.size());
    for (const qint32 tube : tubes) {
        const int place = tube >= 0 && tube < before.numTube() ? after.findTube(before[tube].address) : -1;
        if (place >= 0)
            followed.append(place);
    }
    return followed;
}

} // namespace map
