#include "RecentMenus.h"

#include <QDir>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace app {

RecentMenus::RecentMenus(CommandActions &actions, QObject *parent)
    : QObject(parent)
    , m_actions(actions)
{
    for (const int placeholder : {NoRecentProject, NoRecentDatabase, NoRecentMap})
        m_actions.setUnavailable(placeholder, u""_s);
}

void RecentMenus::fill(int placeholder, int last, const QList<Entry> &entries, IsThere isThere)
{
    // Actions are made once and used again: one of them may be the very command that is being carried out.
    for (int number = placeholder + 1; number <= last; ++number) {
        const int place = number - placeholder;
        const bool isUsed = place <= entries.size();
        QAction *action = m_actions.action(number);
        if (!action && isUsed) {
            QMenu *menu = m_actions.menuOf(placeholder);
            action = m_actions.addAction(number, {}, menu, u"command"_s);
            menu->addAction(action);
        }
        if (!action)
            continue;
        action->setVisible(isUsed);
        if (isUsed)
            show(number, place, entries[place - 1], isThere(entries[place - 1].path));
        else
            m_paths.remove(number);
    }
    m_actions.action(placeholder)->setVisible(entries.isEmpty());
}

void RecentMenus::show(int number, int place, const Entry &entry, bool isThere)
{
    QString shown = entry.text;
    shown.replace(u'&', u"&&"_s);
    const QString digit = place < 10 ? u"&%1 "_s.arg(place) : u"1&0 "_s;
    m_actions.action(number)->setText(digit + shown);
    m_paths.insert(number, entry.path);
    const QString missing = QDir::toNativeSeparators(entry.path) + u"\nIt is not there any more."_s;
    m_actions.setUnavailable(number, isThere ? QString() : missing);
}

} // namespace app
