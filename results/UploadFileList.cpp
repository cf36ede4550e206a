#include "UploadFileList.h"

#include "Messages.h"

namespace results {

using namespace Qt::StringLiterals;

void UploadFileList::open(const QStringList &paths)
{
    m_files.clear();
    for (const QString &path : paths)
        m_files.append({path, false});
    m_current = 0;
}

bool UploadFileList::select(int index, tarnwick::UserPrompts &prompts)
{
    if (index < 0 || index >= m_files.size())
        return false;
    m_current = index;
    prompts.status(messages::kFileSelected, index + 1);
    return true;
}

bool UploadFileList::checkCurrent(tarnwick::UserPrompts &prompts) const
{
    if (m_current >= 0 && m_current < m_files.size())
        return true;
    prompts.error(messages::kFileNumberNotValid, m_current);
    return false;
}

void UploadFileList::markCurrentDone()
{
    m_files[m_current].done = true;
}

QString UploadFileList::statusText(int index) const
{
    return m_files[index].done ? u"DONE"_s : QString();
}

} // namespace results
