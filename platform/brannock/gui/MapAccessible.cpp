#include "MapAccessible.h"

#include "TubesheetMap.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace brannock {

namespace {

/// One tube; created when a screen reader requests it.
class AccessibleTube : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    AccessibleTube(TubesheetMap &map, int tube)
        : m_map(&map)
        , m_tube(tube)
    {
    }
    int tube() const { return m_tube; }

    bool isValid() const override { return m_map && m_tube < m_map->scene().numTube(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_map.data()); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override
    {
        const QStringList lines = isValid() ? m_map->tubeLines(m_tube) : QStringList();
        if (kind == QAccessible::Name) // the state of the tube is heard with its name
            return lines.mid(0, 2).join(u", "_s);
        return kind == QAccessible::Description ? lines.mid(2).join(u'\n') : QString();
    }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override
    {
        if (!isValid())
            return {};
        // A square about as large as the disc.
        const int side = std::max(1, int(m_map->scene().grid().spacing() * m_map->view().scale));
        const QPoint centre = m_map->mapToGlobal(m_map->posOf(m_tube).toPoint());
        return {centre.x() - side / 2, centre.y() - side / 2, side, side};
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.focusable = true;
        state.selectable = true;
        state.focused = m_map->hasFocus() && m_map->cursorTube() == m_tube;
        state.selected = m_map->scene().isSelected(m_tube);
        state.hotTracked = m_map->hoveredTube() == m_tube;
        state.offscreen = !m_map->rect().contains(m_map->posOf(m_tube).toPoint());
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }

    QStringList actionNames() const override { return {setFocusAction(), toggleAction(), pressAction()}; }
    void doAction(const QString &action) override
    {
        if (!isValid())
            return;
        m_map->setCursorTube(m_tube);
        if (action == toggleAction())
            Q_EMIT m_map->selectionWanted({m_tube}, ellery::SelectMode::Toggle);
        else if (action == pressAction())
            Q_EMIT m_map->tubeActivated(m_tube);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QPointer<TubesheetMap> m_map;
    int m_tube;
};

class AccessibleMap : public QAccessibleWidget
{
public:
    explicit AccessibleMap(TubesheetMap *map)
        : QAccessibleWidget(map, QAccessible::List)
    {
    }
    ~AccessibleMap() override { forget(); }

    int childCount() const override { return map().scene().numTube(); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        if (const auto known = m_tubes.constFind(index); known != m_tubes.constEnd())
            return QAccessible::accessibleInterface(*known);
        constexpr qsizetype kMostTubes = 20'000; // a screen reader may walk through a large component
        if (m_tubes.size() >= kMostTubes)
            forget();
        auto *tube = new AccessibleTube(map(), index);
        m_tubes.insert(index, QAccessible::registerAccessibleInterface(tube));
        return tube;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const auto *tube = dynamic_cast<const AccessibleTube *>(child);
        return tube ? tube->tube() : -1;
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        return child(map().tubeAt(map().mapFromGlobal(QPointF(x, y))));
    }
    QAccessibleInterface *focusChild() const override { return child(map().cursorTube()); }

private:
    TubesheetMap &map() const { return *static_cast<TubesheetMap *>(widget()); }
    void forget() const
    {
        for (const QAccessible::Id id : std::as_const(m_tubes))
            QAccessible::deleteAccessibleInterface(id);
        m_tubes.clear();
    }

    mutable QHash<int, QAccessible::Id> m_tubes;
};

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    if (className != QLatin1StringView("brannock::TubesheetMap"))
        return nullptr;
    return new AccessibleMap(static_cast<TubesheetMap *>(object));
}

} // namespace

void installMapAccessibility()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled);
}

} // namespace brannock
