#include "CommandActions.h"

#include "ReturnKey.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QRegularExpression>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Text of a list entry with a mnemonic: digits 1 to 9, and 0 for the tenth.
QString numbered(int place, QString text)
{
    text.replace(u'&', u"&&"_s);
    constexpr int kTenth = 9;
    if (place == kTenth)
        return u"1&0 "_s + text;
    return (place < kTenth ? u"&"_s : QString()) + QString::number(place + 1) + u' ' + text;
}

QString withoutMnemonic(QString text)
{
    static const QRegularExpression mark(u"&(?!&)"_s);
    return text.remove(mark);
}

/// Tool bar buttons cannot take the focus by default: makes the button reachable with Tab and Return.
void makePressable(QToolButton *button, const CommandRow &row)
{
    button->setObjectName(row.objectName());
    button->setFocusPolicy(Qt::TabFocus);
    pressWithReturn(button);
    if (const QString label = row.label(); label != label.trimmed())
        button->setAccessibleName(label.trimmed());
}

} // namespace

CommandActions::CommandActions(CommandHandlers &handlers, QWidget *window)
    : QObject(window)
    , m_handlers(handlers)
    , m_window(window)
{
    m_parts.insert(0, window);
    for (const CommandRow &row : handlers.table().rows())
        addRow(row);
}

void CommandActions::addRow(const CommandRow &row)
{
    if (!row.isList()) {
        makeAction(row.id, row.objectName(), false);
        addKeys(row);
        return;
    }
    for (int id = row.id; id < row.id + row.count; ++id)
        makeAction(id, row.name ? row.objectName() + QString::number(id - row.id) : u"command"_s + QString::number(id),
                   false)
            ->setVisible(false);
}

QAction *CommandActions::makeAction(int id, const QString &name, bool hasOwnText)
{
    const CommandRow *row = m_handlers.table().row(id);
    auto *action = new QAction(this);
    action->setObjectName(name);
    action->setCheckable(row->isCheckable());
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this, [this, id] { run(id); });
    m_shown.append({action, row, id, hasOwnText});
    if (!hasOwnText) {
        m_actions.insert(id, action);
        action->setText(m_handlers.text(id));
    }
    return action;
}

void CommandActions::addKeys(const CommandRow &row)
{
    QWidget *part = m_parts.value(row.part);
    QList<QKeySequence> keys;
    for (const QString &key : row.keyList())
        keys.append(QKeySequence(key, QKeySequence::PortableText));
    if (keys.isEmpty() || !part)
        return;
    QAction *action = m_actions.value(row.id);
    action->setShortcuts(keys);
    action->setShortcutContext(row.needsFocus() ? Qt::WidgetWithChildrenShortcut : Qt::WindowShortcut);
    part->addAction(action);
}

void CommandActions::setPart(int part, QWidget *widget)
{
    m_parts.insert(part, widget);
    for (const CommandRow &row : m_handlers.table().rows()) {
        if (row.part == part && !row.isList())
            addKeys(row);
    }
}

void CommandActions::fillMenuBar(QMenuBar *bar)
{
    for (const CommandLayout &layout : m_handlers.table().layouts()) {
        if (layout.kind == CommandLayout::Kind::MenuBar)
            fill(bar, layout);
    }
}

QMenu *CommandActions::makeMenu(QStringView layout, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    menu->setObjectName(layout.toString());
    menu->setToolTipsVisible(true);
    fill(menu, m_handlers.table().layout(layout));
    return menu;
}

void CommandActions::fill(QWidget *top, const CommandLayout &layout)
{
    m_madeLayouts.insert(QString::fromUtf16(layout.name));
    QList<QWidget *> open{top};
    for (const MenuItem &item : layout.items) {
        switch (item.kind) {
        case MenuItem::Open:
            open.append(openSubmenu(open.last(), item));
            break;
        case MenuItem::Close:
            open.removeLast();
            break;
        case MenuItem::Separator:
            qobject_cast<QMenu *>(open.last())->addSeparator();
            break;
        case MenuItem::Item:
            addItem(qobject_cast<QMenu *>(open.last()), item, layout.kind == CommandLayout::Kind::MenuBar);
            break;
        case MenuItem::End:
            return;
        }
    }
}

QMenu *CommandActions::openSubmenu(QWidget *top, const MenuItem &item)
{
    const QString text = QString::fromUtf16(item.text);
    auto *bar = qobject_cast<QMenuBar *>(top);
    QMenu *menu = bar ? bar->addMenu(text) : qobject_cast<QMenu *>(top)->addMenu(text);
    menu->setObjectName(u"menu"_s + QString(text).remove(u'&').remove(u' '));
    menu->setToolTipsVisible(true);
    if (item.condition != kAlways)
        m_submenus.append({menu, item});
    return menu;
}

void CommandActions::addItem(QMenu *menu, const MenuItem &item, bool isMenuBar)
{
    const CommandRow *row = m_handlers.table().row(item.command);
    if (!row)
        return;
    if (isMenuBar || !m_menus.contains(row->id))
        m_menus.insert(row->id, menu);
    m_inMenus.insert(row->id);
    m_withText.insert(row->id);
    if (row->isList()) {
        addList(menu, *row);
    } else if (item.text) {
        QAction *action = makeAction(row->id, u"popup"_s + QString::number(row->id), true);
        action->setText(QString::fromUtf16(item.text));
        menu->addAction(action);
    } else {
        menu->addAction(m_actions.value(row->id));
    }
}

void CommandActions::addList(QMenu *menu, const CommandRow &row)
{
    for (int id = row.id; id < row.id + row.count; ++id)
        menu->addAction(m_actions.value(id));
    connect(menu, &QMenu::aboutToShow, this, [this, id = row.id] { refreshList(id); });
}

QList<QToolButton *> CommandActions::makeButtons(QStringView layout, QWidget *parent)
{
    m_madeLayouts.insert(layout.toString());
    QList<QToolButton *> buttons;
    for (const int id : m_handlers.table().idsIn(m_handlers.table().layout(layout))) {
        auto *button = new QToolButton(parent);
        button->setDefaultAction(m_actions.value(id));
        makePressable(button, *m_handlers.table().row(id));
        buttons.append(button);
    }
    return buttons;
}

void CommandActions::fillToolBar(QToolBar *bar, QStringView layout)
{
    bar->setObjectName(layout.toString());
    m_madeLayouts.insert(layout.toString());
    for (const MenuItem &item : m_handlers.table().layout(layout).items) {
        QAction *action = item.kind == MenuItem::Item ? m_actions.value(item.command) : nullptr;
        if (item.kind == MenuItem::Separator)
            bar->addSeparator();
        if (!action)
            continue;
        bar->addAction(action);
        // If a button shows a picture instead of its text, the text is added to the tip.
        if (bar->toolButtonStyle() != Qt::ToolButtonIconOnly)
            m_withText.insert(item.command);
        makePressable(qobject_cast<QToolButton *>(bar->widgetForAction(action)), *m_handlers.table().row(item.command));
    }
}

void CommandActions::setIcon(int id, const QIcon &icon)
{
    QAction *action = m_actions.value(id);
    action->setIcon(icon);
    action->setIconVisibleInMenu(false);
}

void CommandActions::run(int id)
{
    // The command may destroy the window and this object with it.
    const QPointer<CommandActions> self(this);
    m_handlers.run(id);
    if (self)
        refresh();
}

QString CommandActions::tip(const CommandRow &row, const QString &whyNot) const
{
    const QString tip = QString::fromUtf16(row.tip);
    QStringList lines{tip};
    if (!m_withText.contains(row.id)) {
        const QString keys = m_actions.value(row.id)->shortcut().toString(QKeySequence::NativeText);
        lines.prepend(row.label() + (keys.isEmpty() ? QString() : QString(u" ("_s + keys + u')')));
    }
    if (!whyNot.isEmpty() && whyNot != tip)
        lines.append(whyNot);
    return lines.join(u'\n');
}

template <typename Reason>
void CommandActions::update(const Shown &shown, const Reason &reason)
{
    const CommandRow &row = *shown.row;
    QAction *action = shown.action;
    // Entries and placeholder of a list have reasons of their own.
    const bool isPlain = !row.isList() && !row.isPlaceholder();
    const QString whyNot = isPlain ? reason(row.condition) : m_handlers.whyNot(shown.id);
    action->setEnabled(whyNot.isEmpty());
    if (row.isCheckable())
        action->setChecked(m_handlers.isChecked(row.id));
    if (row.isPlaceholder())
        action->setVisible(m_handlers.entries(row.placeholderOf).isEmpty());
    if (!shown.hasOwnText && isPlain) {
        action->setText(m_handlers.text(row.id));
        action->setIconText(withoutMnemonic(action->text())); // Qt would trim the text it derives itself
    }
    const QString text = tip(row, whyNot);
    action->setToolTip(text);
    if (m_inMenus.contains(row.id))
        action->setStatusTip(QString(text).replace(u'\n', u' '));
}

void CommandActions::refresh()
{
    // Each condition is evaluated once.
    QHash<int, QString> known;
    const auto reason = [this, &known](int condition) {
        const auto found = known.find(condition);
        return found != known.end() ? *found : *known.insert(condition, m_handlers.conditionReason(condition));
    };
    for (const Shown &shown : std::as_const(m_shown))
        update(shown, reason);
    for (const auto &[menu, item] : std::as_const(m_submenus)) {
        menu->setEnabled(reason(item.condition).isEmpty());
        menu->menuAction()->setToolTip(reason(item.condition));
    }
}

void CommandActions::refresh(std::initializer_list<int> conditions)
{
    for (const Shown &shown : std::as_const(m_shown)) {
        if (std::find(conditions.begin(), conditions.end(), shown.row->condition) != conditions.end())
            update(shown, [this](int each) { return m_handlers.conditionReason(each); });
    }
}

void CommandActions::refreshList(int id)
{
    m_handlers.refreshList(id);
    const CommandRow *list = m_handlers.table().row(id);
    const QList<CommandHandlers::ListEntry> entries = m_handlers.entries(id);
    for (int place = 0; place < list->count; ++place) {
        QAction *action = m_actions.value(id + place);
        action->setVisible(place < entries.size());
        if (place < entries.size())
            action->setText(numbered(place, entries[place].text));
    }
    const auto reason = [this](int condition) { return m_handlers.conditionReason(condition); };
    for (const Shown &shown : std::as_const(m_shown)) {
        if (shown.row == list || shown.row->placeholderOf == id)
            update(shown, reason);
    }
}

QStringList CommandActions::faults() const
{
    QStringList all = m_handlers.faults();
    for (const CommandLayout &layout : m_handlers.table().layouts()) {
        const QString name = QString::fromUtf16(layout.name);
        if (!m_madeLayouts.contains(name))
            all.append(name + u": no widget was made from this layout"_s);
    }
    for (const CommandRow &row : m_handlers.table().rows()) {
        if (!row.keyList().isEmpty() && !m_parts.contains(row.part))
            all.append(row.objectName() + u": no widget carries its keys"_s);
        for (const QString &key : row.keyList()) {
            if (QKeySequence(key, QKeySequence::PortableText).toString(QKeySequence::PortableText) != key)
                all.append(row.objectName() + u": no valid key: "_s + key);
        }
    }
    return all;
}

} // namespace tarnwick
