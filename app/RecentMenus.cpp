#include "RecentMenus.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace app {

RecentMenus::RecentMenus(CommandActions &actions, QObject *parent)
    : QObject(parent)
    , m_actions(actions)
{
}

void RecentMenus::fill(int placeholder, int last, const QList<Entry> &entries)
{
    QMenu *menu = m_actions.menuOf(placeholder);
    qDeleteAll(m_entries.take(placeholder));
    for (int number = placeholder + 1; number <= last; ++number)
        m_paths.remove(number);

    QList<QAction *> made;
    int number = placeholder + 1;
    for (const Entry &entry : entries) {
        if (number > last)
            break;
        const int place = number - placeholder;
        QString shown = entry.text;
        shown.replace(u'&', u"&&"_s);
        const QString digit = place < 10 ? u"&%1 "_s.arg(place) : u"1&0 "_s;
        QAction *action = m_actions.addAction(number, digit + shown, menu, u"command"_s);
        menu->addAction(action);
        m_paths.insert(number, entry.path);
        made.append(action);
        ++number;
    }
    m_entries.insert(placeholder, made);
    m_actions.action(placeholder)->setVisible(made.isEmpty());
    refresh();
}

void RecentMenus::refresh()
{
    for (const int placeholder : {NoRecentProject, NoRecentDatabase, NoRecentMap}) {
        if (QAction *action = m_actions.action(placeholder))
            action->setEnabled(false);
    }
    for (auto it = m_paths.constBegin(); it != m_paths.constEnd(); ++it) {
        QAction *action = m_actions.action(it.key());
        if (!action)
            continue;
        const QString native = QDir::toNativeSeparators(it.value());
        if (!QFileInfo::exists(it.value())) {
            action->setEnabled(false);
            action->setToolTip(native + u"\nIt is not there any more."_s);
        } else if (action->isEnabled()) {
            action->setToolTip(native);
        }
    }
}

} // namespace app
