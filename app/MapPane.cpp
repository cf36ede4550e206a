#include "MapPane.h"

#include <brannock/gui/MapAccessible.h>
#include <brannock/gui/TubesheetMap.h>
#include <map/TubeText.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// While a screen reader runs, a widget gets its accessibility in its constructor.
brannock::TubesheetMap *makeMap()
{
    brannock::installMapAccessibility();
    return new brannock::TubesheetMap;
}

QStringList linesOf(const QString &text)
{
    return text.isEmpty() ? QStringList() : QStringList{text};
}

/// What the colours of the tube on the map say: its entry, and whether it is selected.
QStringList stateOf(const map::MapDocument &document, int tube)
{
    return linesOf(map::markedBy(document, tube)) +
           (document.tubes().isSelected(tube) ? QStringList{u"Selected"_s} : QStringList());
}

} // namespace

MapPane::MapPane(map::MapDocument &document, QWidget *startPage, QWidget *parent)
    : QStackedWidget(parent)
    , m_document(document)
    , m_map(makeMap())
    , m_subscription(document.subscribe([this](const map::MapEvent &event) { mapChanged(event); }))
{
    m_map->setObjectName(u"map"_s);
    m_map->setTubeTip(true);
    m_map->setTipText(
        [this](int tube) { return stateOf(m_document, tube) + (m_notes ? m_notes(tube) : QStringList()); });
    addWidget(m_map);
    addWidget(startPage);
    connect(m_map, &brannock::TubesheetMap::selectionWanted, this, &MapPane::select);
    connect(m_map, &brannock::TubesheetMap::hovered, this, [this](int tube) {
        m_pointed = tube;
        Q_EMIT pointedAt(tube);
    });
}

MapPane::~MapPane()
{
    m_map->setSteamGen(nullptr);
}

void MapPane::setProjectOpen(bool isOpen)
{
    if (!isOpen)
        m_map->setSteamGen(nullptr);
    setCurrentIndex(isOpen ? 0 : 1);
}

void MapPane::setOptions(const brannock::MapOptions &options)
{
    m_map->setOptions(options);
}

void MapPane::mapChanged(const map::MapEvent &event)
{
    using map::MapEvent;
    if (event.has(MapEvent::Component))
        m_map->setSteamGen(&m_document.component(), &m_document.tubes());
    if (event.has(MapEvent::Orientation | MapEvent::Component)) {
        m_map->setXOrientation(m_document.state().xOrientation);
        m_map->setYOrientation(m_document.state().yOrientation);
    }
    if (event.has(MapEvent::kLook))
        m_map->refresh();
}

void MapPane::showTrial(const ellery::TubeStates *tubes)
{
    m_map->setTubes(tubes ? tubes : &m_document.tubes());
}

void MapPane::select(const QList<qint32> &tubes, ellery::SelectMode mode)
{
    ellery::TubeStates changed = m_document.tubes();
    changed.select(tubes, mode);
    m_document.change(u"Select Tubes"_s, [&changed](map::MapEdit &edit) { edit.setSelection(changed.selection()); });
}

void MapPane::showTube(int tube)
{
    select({tube}, ellery::SelectMode::Replace);
    m_map->ensureVisible(tube);
    m_map->setCursorTube(tube);
}

QString MapPane::pointedText() const
{
    const ellery::SteamGen &component = m_document.component();
    if (m_pointed < 0 || m_pointed >= component.numTube())
        return {};
    QStringList parts{component.tubeName(component[m_pointed].address)};
    if (!m_document.tubes().isOpen(m_pointed))
        parts << m_document.tubes().symbol(m_pointed).text();
    return (parts + stateOf(m_document, m_pointed)).join(u"   ");
}

} // namespace app
