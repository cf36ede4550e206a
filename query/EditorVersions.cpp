#include "EditorVersions.h"

namespace query {

void EditorVersions::enter(const QString &text)
{
    if (!m_texts.contains(text))
        m_texts.append(text);
}

std::optional<int> EditorVersions::move(const QString &present, int steps) const
{
    const int index = int(m_texts.indexOf(present));
    const int target = index < 0 ? 0 : index + steps;
    if (!canMove() || target < 0 || target >= m_texts.size())
        return std::nullopt;
    return target;
}

} // namespace query
