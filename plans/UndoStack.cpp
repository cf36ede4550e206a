#include "UndoStack.h"

#include <algorithm>

namespace plans {

void UndoStack::push(std::unique_ptr<UndoCommand> command)
{
    if (m_clean > m_position)
        m_clean = kNowhere; // the saved state was among the undone changes and cannot be reached any more
    m_commands.resize(size_t(m_position));
    m_commands.push_back(std::move(command));
    ++m_position;
    if (count() > kMaxLevels) {
        m_commands.erase(m_commands.begin());
        --m_position;
        m_clean = std::max(m_clean - 1, int(kNowhere));
    }
}

void UndoStack::dropLast()
{
    m_commands.pop_back();
    --m_position;
}

void UndoStack::clear()
{
    m_commands.clear();
    m_position = 0;
    m_clean = 0;
}

void UndoStack::undo()
{
    if (!canUndo())
        return;
    m_commands[size_t(m_position - 1)]->undo();
    --m_position;
}

void UndoStack::redo()
{
    if (!canRedo())
        return;
    m_commands[size_t(m_position)]->redo();
    ++m_position;
}

QStringList UndoStack::labels() const
{
    QStringList list;
    for (const auto &command : m_commands)
        list.append(command->label());
    return list;
}

void UndoStack::moveTo(int position)
{
    position = std::clamp(position, 0, count());
    if (position < m_position)
        m_commands[size_t(position)]->undo();
    else if (position > m_position)
        m_commands[size_t(position - 1)]->redo();
    m_position = position;
}

} // namespace plans
