#pragma once
#include "ChangeListener.h"

#include <db/DatabaseSession.h>
#include <QStringList>

namespace query {

/// The transaction of an SQL editor. It begins with the first change, so that an editor in which nothing was changed
/// holds no lock; a change that fails before any other succeeded ends it again.
class EditorTransaction : public ChangeListener
{
public:
    /// isUsed: false for an editor whose changes take effect at once; nothing is counted then.
    EditorTransaction(db::DatabaseSession &session, bool isUsed)
        : m_session(session)
        , m_isUsed(isUsed)
    {
    }
    /// Rolls back.
    ~EditorTransaction() override;
    EditorTransaction(const EditorTransaction &) = delete;
    EditorTransaction &operator=(const EditorTransaction &) = delete;

    bool beginChange() override;
    void endChange(const QString &what, int rows) override;
    void changeFailed() override;

    bool isOpen() const { return m_isOpen; }
    /// Rows that were changed and not committed; a definition counts as one.
    int changeCount() const { return m_count; }
    /// The changes in order; of many, the last ones.
    const QStringList &changes() const { return m_changes; }

    /// A failure is reported (1055), and the changes stay uncommitted: commit again or roll back.
    bool commit();
    /// A failure is reported (1056).
    void rollback();

private:
    void forget();

    db::DatabaseSession &m_session;
    bool m_isUsed;
    bool m_isOpen = false;
    int m_count = 0;
    QStringList m_changes;
};

} // namespace query
