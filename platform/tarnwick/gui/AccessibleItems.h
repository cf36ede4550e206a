#pragma once
#include <QAccessible>
#include <QHash>
#include <QPointer>
#include <QWidget>

namespace tarnwick {

/// For screen readers: an item that a widget paints itself, such as a cell of a table. It has no object, window or
/// children.
class AccessibleItem : public QAccessibleInterface
{
public:
    explicit AccessibleItem(QWidget &owner)
        : m_owner(&owner)
    {
    }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_owner.data()); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override {}
    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (isValid())
            describe(state);
        else
            state.invalid = true;
        return state;
    }

protected:
    /// Sets the state of a valid item.
    virtual void describe(QAccessible::State &state) const = 0;
    bool hasOwner() const { return !m_owner.isNull(); }

private:
    QPointer<QWidget> m_owner;
};

/// The items of one widget that a screen reader has requested, by key. They are deleted with this object.
template <typename Key>
class AccessibleItems
{
public:
    /// most: number of items that are kept, since a screen reader may walk through millions.
    explicit AccessibleItems(qsizetype most)
        : m_most(most)
    {
    }
    ~AccessibleItems() { forget(); }
    AccessibleItems(const AccessibleItems &) = delete;
    AccessibleItems &operator=(const AccessibleItems &) = delete;

    /// make: returns a new item; called if there is none with this key.
    template <typename Make>
    QAccessibleInterface *get(Key key, const Make &make)
    {
        if (const auto known = m_ids.constFind(key); known != m_ids.constEnd())
            return QAccessible::accessibleInterface(*known);
        if (m_ids.size() >= m_most)
            forget();
        QAccessibleInterface *item = make();
        m_ids.insert(key, QAccessible::registerAccessibleInterface(item));
        return item;
    }
    void forget()
    {
        for (const QAccessible::Id id : std::as_const(m_ids))
            QAccessible::deleteAccessibleInterface(id);
        m_ids.clear();
    }

private:
    qsizetype m_most;
    QHash<Key, QAccessible::Id> m_ids;
};

/// Lets Interface, which has a constructor with a QWidget*, describe the widgets of the class Interface::kWidgetClass
/// (with its namespace) and of the classes derived from it. May be called repeatedly.
template <typename Interface>
void installAccessibility()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory([](const QString &className, QObject *object) -> QAccessibleInterface * {
            const bool isDescribed = className == QLatin1StringView(Interface::kWidgetClass);
            return isDescribed ? new Interface(qobject_cast<QWidget *>(object)) : nullptr;
        });
        return true;
    }();
    Q_UNUSED(isInstalled);
}

} // namespace tarnwick
