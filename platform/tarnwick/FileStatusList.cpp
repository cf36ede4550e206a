#include "FileStatusList.h"

#include "Messages.h"

#include <QDir>
#include <QFileInfo>

namespace tarnwick {

using namespace Qt::StringLiterals;

void FileStatusList::open(const QStringList &paths)
{
    m_files.clear();
    for (const QString &path : paths)
        m_files.append({.path = path, .isDone = false, .modified = {}, .size = 0});
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

void FileStatusList::noteRead()
{
    File &file = m_files[m_current];
    const QFileInfo now(file.path);
    file.modified = now.lastModified();
    file.size = now.size();
}

Answer FileStatusList::askIfChanged(UserPrompts &prompts) const
{
    const File &file = m_files[m_current];
    const QFileInfo now(file.path);
    if (!now.exists() || (now.lastModified() == file.modified && now.size() == file.size))
        return Answer::No;
    return prompts.question(Buttons::YesNoCancel, messages::kFileChanged, now.fileName());
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
    QStringList lines;
    if (column == 0)
        lines.append(text(row, column));
    if (row == m_current)
        lines.append(u"This file is shown below."_s);
    return lines.join(u'\n');
}

} // namespace tarnwick
