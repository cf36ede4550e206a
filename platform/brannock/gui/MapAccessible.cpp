#include "MapAccessible.h"

#include "TubesheetMap.h"

#include <tarnwick/gui/AccessibleItems.h>

#include <QAccessibleWidget>

using namespace Qt::StringLiterals;

namespace brannock {

namespace {

/// One tube; created when a screen reader requests it.
class AccessibleTube : public tarnwick::AccessibleItem, public QAccessibleActionInterface
{
public:
    AccessibleTube(TubesheetMap &map, int tube)
        : AccessibleItem(map)
        , m_map(map)
        , m_tube(tube)
    {
    }
    int tube() const { return m_tube; }

    bool isValid() const override { return hasOwner() && m_tube < m_map.scene().numTube(); }
    QString text(QAccessible::Text kind) const override
    {
        const QStringList lines = isValid() ? m_map.tubeLines(m_tube) : QStringList();
        if (kind == QAccessible::Name) // the state of the tube is heard with its name
            return lines.mid(0, 2).join(u", "_s);
        return kind == QAccessible::Description ? lines.mid(2).join(u'\n') : QString();
    }
    QRect rect() const override
    {
        if (!isValid())
            return {};
        // A square about as large as the disc.
        const int side = std::max(1, int(m_map.scene().grid().spacing() * m_map.view().scale));
        const QPoint centre = m_map.mapToGlobal(m_map.posOf(m_tube).toPoint());
        return {centre.x() - side / 2, centre.y() - side / 2, side, side};
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }

    QStringList actionNames() const override { return {setFocusAction(), toggleAction(), pressAction()}; }
    void doAction(const QString &action) override
    {
        if (!isValid())
            return;
        m_map.setCursorTube(m_tube);
        if (action == toggleAction())
            Q_EMIT m_map.selectionWanted({m_tube}, ellery::SelectMode::Toggle);
        else if (action == pressAction())
            Q_EMIT m_map.tubeActivated(m_tube);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

protected:
    void describe(QAccessible::State &state) const override
    {
        state.focusable = true;
        state.selectable = true;
        state.focused = m_map.hasFocus() && m_map.cursorTube() == m_tube;
        state.selected = m_map.scene().isSelected(m_tube);
        state.hotTracked = m_map.hoveredTube() == m_tube;
        state.offscreen = !m_map.rect().contains(m_map.posOf(m_tube).toPoint());
    }

private:
    TubesheetMap &m_map; ///< used only while isValid()
    int m_tube;
};

class AccessibleMap : public QAccessibleWidget
{
public:
    static constexpr const char *kWidgetClass = "brannock::TubesheetMap";
    explicit AccessibleMap(QWidget *map)
        : QAccessibleWidget(map, QAccessible::List)
    {
    }
    int childCount() const override { return map().scene().numTube(); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        return m_tubes.get(index, [&] { return new AccessibleTube(map(), index); });
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
    mutable tarnwick::AccessibleItems<int> m_tubes{20'000};
};

} // namespace

void installMapAccessibility()
{
    tarnwick::installAccessibility<AccessibleMap>();
}

} // namespace brannock
