#include "EditorTransaction.h"

#include <tarnwick/Format.h>

namespace query {

EditorTransaction::~EditorTransaction()
{
    rollback();
}

bool EditorTransaction::beginChange()
{
    if (m_isUsed && !m_isOpen)
        m_isOpen = db::beginTrans(m_session, false, db::Begin::Writing);
    return !m_isUsed || m_isOpen;
}

void EditorTransaction::endChange(const QString &what, int rows)
{
    if (!m_isUsed)
        return;
    constexpr int kMostShown = 20;
    constexpr int kMostCharacters = 70;
    QString text = what.simplified();
    if (text.size() > kMostCharacters)
        text = text.left(kMostCharacters) + QStringLiteral(" ...");
    if (rows > 0)
        text += rows == 1 ? QStringLiteral(" (1 row)") : tarnwick::format(u" (%D rows)", rows);
    m_changes.append(text);
    if (m_changes.size() > kMostShown)
        m_changes.removeFirst();
    m_count += std::max(rows, 1);
}

void EditorTransaction::changeFailed()
{
    if (m_count == 0)
        rollback();
}

bool EditorTransaction::commit()
{
    if (m_isOpen && !db::commitTrans(m_session))
        return false;
    forget();
    return true;
}

void EditorTransaction::rollback()
{
    if (m_isOpen && m_session.isOpen())
        db::rollbackTrans(m_session);
    forget();
}

void EditorTransaction::forget()
{
    m_isOpen = false;
    m_count = 0;
    m_changes.clear();
}

} // namespace query
