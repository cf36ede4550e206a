#include "FileStatusList.h"

#include "Messages.h"

#include <QDir>

namespace tarnwick {

using namespace Qt::StringLiterals;

void FileStatusList::open(const QStringList &paths)
{
    m_files.clear();
    for (const QString &path : paths)
        m_files.append({path, false});
    m_current = 0;
}

bool FileStatusList::select(int index, UserPrompts &prompts)
{
    if (index < 0 || index >= m_files.size())
        return false;
    m_current = index;
    prompts.status(messages::kFileSelected, index + 1);
    return true;
}

bool FileStatusList::checkCurrent(UserPrompts &prompts) const
{
    if (m_current >= 0 && m_current < m_files.size())
        return true;
    prompts.error(messages::kFileNumberNotValid, m_current);
    return false;
}

void FileStatusList::markCurrentDone()
{
    m_files[m_current].isDone = true;
}

int FileStatusList::nextNotDone() const
{
    for (int i = m_current + 1; i < m_files.size(); ++i) {
        if (!m_files[i].isDone)
            return i;
    }
    return -1;
}

QString FileStatusList::statusText(int index) const
{
    return m_files[index].isDone ? u"DONE"_s : QString();
}

GridColumn FileStatusList::column(int column) const
{
    constexpr int kPathWidth = 70;
    return column == 0 ? GridColumn{.title = u"REPORT FILE"_s, .width = kPathWidth} : GridColumn{.title = u"STATUS"_s};
}

QString FileStatusList::text(int row, int column) const
{
    return column == 0 ? QDir::toNativeSeparators(m_files[row].path) : statusText(row);
}

RowColours FileStatusList::colours(int row) const
{
    constexpr ColourRef kCurrent(0xA0FFFF); // light yellow
    return row == m_current ? RowColours{.background = kCurrent} : RowColours{};
}

QString FileStatusList::tip(int row, int column) const
{
    return column == 0 ? text(row, column) : QString();
}

} // namespace tarnwick
