#pragma once
#include "Cal.h"

#include <db/DatabaseSession.h>
#include <ellery/SteamGen.h>

namespace results {

/// The cals of table 'report' with their counts of rows. One transaction spans its life, from opening to closing.
class CalList
{
public:
    struct Row
    {
        Cal cal;
        int count = 0;
    };

    explicit CalList(db::DatabaseSession &session)
        : m_session(&session)
    {
    }
    /// Rolls back when it was opened and not closed.
    ~CalList();
    CalList(const CalList &) = delete;
    CalList &operator=(const CalList &) = delete;

    /// Begins the transaction and fills the list. False without a connection or transaction; a list that cannot be read
    /// is reported and stays empty.
    bool open();
    bool fill();

    /// "Cals In - ..." with the database's name.
    QString caption() const;
    const QList<Row> &rows() const { return m_rows; }
    int current() const { return m_current; }
    void setCurrent(int row) { m_current = row; }
    bool isChanged() const { return m_changed; }

    /// Deletes the current cal after a question and fills the list again.
    void deleteCurrent();

    /// Ends with a commit.
    void closeWithOk();
    /// When something was deleted, asks whether to save: Yes commits, Cancel keeps the list open and returns false, No
    /// rolls back.
    bool closeWithCancel();

    /// Column titles; the section has its own only where the component has sections.
    static QStringList columnTitles(const ellery::SteamGen &steamGen);
    static QStringList cells(const Row &row, int index, const ellery::SteamGen &steamGen);

private:
    void end(bool commit);

    db::DatabaseSession *m_session;
    QList<Row> m_rows;
    int m_current = -1;
    bool m_changed = false;
    bool m_open = false;
};

} // namespace results
