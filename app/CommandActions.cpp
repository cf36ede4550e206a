#include "CommandActions.h"

#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace app {

namespace {

QString plainText(QString text)
{
    return text.remove(u'&').remove(u' ');
}

bool isCheckable(int command)
{
    return command == FlipHorizontal || command == FlipVertical || command == ShowFloatingId ||
           command == IgnoreSection;
}

QMenu *addSubmenu(QWidget *top, const QString &text)
{
    auto *bar = qobject_cast<QMenuBar *>(top);
    QMenu *menu = bar ? bar->addMenu(text) : qobject_cast<QMenu *>(top)->addMenu(text);
    menu->setObjectName(u"menu"_s + plainText(text));
    menu->setToolTipsVisible(true);
    return menu;
}

} // namespace

void CommandActions::buildMenuBar(QMenuBar *bar, std::span<const MenuItem> items)
{
    build(bar, items, true);
}

void CommandActions::buildMenu(QMenu *menu, std::span<const MenuItem> items)
{
    menu->setToolTipsVisible(true);
    build(menu, items, false);
}

void CommandActions::build(QWidget *top, std::span<const MenuItem> items, bool isMenuBar)
{
    QList<QWidget *> open{top};
    for (const MenuItem &item : items) {
        switch (item.kind) {
        case MenuItem::Open:
            open.append(addSubmenu(open.last(), QString::fromUtf16(item.text)));
            break;
        case MenuItem::Close:
            open.removeLast();
            break;
        case MenuItem::Separator:
            qobject_cast<QMenu *>(open.last())->addSeparator();
            break;
        case MenuItem::Item: {
            auto *menu = qobject_cast<QMenu *>(open.last());
            const QString label = QString::fromUtf16(item.text).section(u'\t', 0, 0);
            QAction *action = addAction(item.command, label, menu, isMenuBar ? u"command"_s : u"popup"_s);
            if (const QString keys = menuKeys(item); isMenuBar && !keys.isEmpty())
                action->setShortcut(QKeySequence(keys, QKeySequence::PortableText));
            menu->addAction(action);
            m_menus.insert(item.command, menu);
            break;
        }
        case MenuItem::End:
            return;
        }
    }
}

QAction *CommandActions::addAction(int command, const QString &text, QObject *parent, const QString &namePrefix)
{
    auto *action = new QAction(text, parent);
    action->setObjectName(namePrefix + QString::number(command));
    action->setCheckable(isCheckable(command));
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this, [this, command] { Q_EMIT triggered(command); });
    connect(action, &QObject::destroyed, this, [this, command, action] { m_actions[command].removeAll(action); });
    m_actions[command].append(action);
    return action;
}

QAction *CommandActions::addExtra(Extra extra, QWidget *scope)
{
    const ExtraInfo &info = extraInfo(extra);
    auto *action = new QAction(QString::fromUtf16(info.text), scope);
    action->setObjectName(QString::fromUtf16(info.name));
    if (info.keys) {
        QList<QKeySequence> keys;
        for (const QString &key : QString::fromUtf16(info.keys).split(u'|'))
            keys.append(QKeySequence(key, QKeySequence::PortableText));
        action->setShortcuts(keys);
        action->setShortcutContext(info.scope == Scope::Legend ? Qt::WidgetWithChildrenShortcut : Qt::WindowShortcut);
    }
    scope->addAction(action);
    connect(action, &QAction::triggered, this, [this, extra] { Q_EMIT extraTriggered(extra); });
    m_extras.insert(int(extra), action);
    return action;
}

void CommandActions::setText(int command, const QString &text)
{
    if (QAction *first = action(command))
        first->setText(text);
}

void CommandActions::setUnavailable(int command, const QString &reason)
{
    if (reason.isNull())
        m_unavailable.remove(command);
    else
        m_unavailable.insert(command, reason);
}

void CommandActions::setChecked(int command, bool checked)
{
    for (QAction *each : actions(command))
        each->setChecked(checked);
}

void CommandActions::refresh(const CommandContext &context)
{
    for (auto it = m_actions.constBegin(); it != m_actions.constEnd(); ++it) {
        const CommandInfo *info = commandInfo(it.key());
        if (!info)
            continue;
        const bool isAvailable = !m_unavailable.contains(it.key());
        const bool enabled = isAvailable && isEnabled(info->when, context);
        QString tip = tipText(info->tip, info->when, context);
        if (!isAvailable)
            tip = QString::fromUtf16(info->tip) + u'\n' + m_unavailable.value(it.key());
        for (QAction *each : it.value()) {
            each->setEnabled(enabled);
            each->setToolTip(tip);
            each->setStatusTip(QString(tip).replace(u'\n', u' '));
        }
    }
    for (auto it = m_extras.constBegin(); it != m_extras.constEnd(); ++it) {
        const ExtraInfo &info = extraInfo(Extra(it.key()));
        it.value()->setEnabled(isEnabled(info.when, context));
        const QString keys = it.value()->shortcut().toString(QKeySequence::NativeText);
        const QString name = QString::fromUtf16(info.text).remove(u'&') +
                             (keys.isEmpty() ? QString() : QString(u" ("_s + keys + u")"_s));
        it.value()->setToolTip(name + u'\n' + tipText(info.tip, info.when, context));
    }
}

} // namespace app
