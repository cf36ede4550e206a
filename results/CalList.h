#pragma once
#include "Cal.h"

#include <db/SessionTransaction.h>
#include <ellery/SteamGen.h>

namespace results {

/// The cals of table 'report' with their row counts. Holds one transaction from opening to closing: other programs can
/// read meanwhile, but not write.
class CalList
{
public:
    struct Row
    {
        Cal cal;
        int count = 0;
    };

    /// Entries of one cal that an analyst made on one day.
    struct DayCount
    {
        Cal cal;
        QString analyst;
        tarnwick::JDateTime day; ///< null: the entries have no time
        int count = 0;
    };

    /// progress shows and can cancel the wait for another program that uses the database; it may be null. The
    /// destructor rolls back a list that was opened and not closed.
    explicit CalList(db::DatabaseSession &session, tarnwick::Progress *progress = nullptr)
        : m_session(&session)
        , m_progress(progress)
        , m_transaction(session)
    {
    }
    CalList(const CalList &) = delete;
    CalList &operator=(const CalList &) = delete;

    /// Begins the transaction and reads the list. Returns false if there is no connection or transaction, or the user
    /// cancelled the wait for it. If the list cannot be read, reports it and stays empty.
    bool open();
    bool fill();

    /// "Cals In - ..." with the database's name.
    QString caption() const;
    const QList<Row> &rows() const { return m_rows; }
    /// Read at the first call and after each deletion, sorted by analyst and day. If they cannot be read, that is
    /// reported and there are none.
    const QList<DayCount> &dayCounts();
    int current() const { return m_current; }
    void setCurrent(int row) { m_current = row; }
    bool isChanged() const { return m_deleted > 0; }

    /// Asks the user, deletes the current cal and reads the list again.
    void deleteCurrent();
    /// The same for several cals, with one question. Either all are deleted or, after a failure, the ones before it.
    void deleteCals(const QList<int> &rows);
    /// Number of cals deleted since the list was opened.
    int deletedCount() const { return m_deleted; }

    /// Commits. If the commit fails or is cancelled, reports it and rolls back.
    void closeWithOk();
    /// If something was deleted, asks whether to save: Yes commits, No rolls back, Cancel keeps the list open and
    /// returns false.
    bool closeWithCancel();

    /// Column titles. There is a section column only if the component has sections.
    static QStringList columnTitles(const ellery::SteamGen &steamGen);
    static QStringList cells(const Row &row, int index, const ellery::SteamGen &steamGen);

private:
    void end(bool commit);

    db::DatabaseSession *m_session;
    tarnwick::Progress *m_progress;
    db::SessionTransaction m_transaction;
    QList<Row> m_rows;
    std::optional<QList<DayCount>> m_dayCounts;
    int m_current = -1;
    int m_deleted = 0;
};

/// All cals of table 'report', sorted by site, component, outage, cal number, operation type and section. Throws the
/// engine's exceptions.
QList<CalList::Row> readCals(dao::Database &database);

} // namespace results
