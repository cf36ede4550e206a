#pragma once
#include <dao/Database.h>
#include <tarnwick/base/Progress.h>
#include <tarnwick/Prompts.h>

#include <memory>

namespace db {

/// State of the conversion of an older database. Reset at the start of every pass, so the question is asked at most
/// once per connection and its answer applies to all later steps.
struct ConversionState
{
    QStringList requested; ///< description of each step requested so far
    QStringList failed;    ///< requested steps that failed and were undone
    bool asked = false;
    bool approved = false;
    bool cancelled = false;        ///< the user stopped it after it had begun
    bool refreshCancelled = false; ///< by the user: views and labels may be older than the project
    QString backup;                ///< path of the backup made before the conversion; empty if none was made

    QStringList done() const; ///< requested steps that did not fail
    /// "    %d) %S\n" for each step.
    static QString numbered(const QStringList &steps);
};

/// The database of the main window: whether it is open, its path, the workspace of its transactions, and the state of a
/// running conversion. Every operation on the database takes the session and calls checkConnected() first.
class DatabaseSession
{
public:
    explicit DatabaseSession(tarnwick::UserPrompts &prompts);
    ~DatabaseSession();
    DatabaseSession(const DatabaseSession &) = delete;
    DatabaseSession &operator=(const DatabaseSession &) = delete;

    tarnwick::UserPrompts &prompts() const { return *m_prompts; }
    dao::Workspace &workspace() { return *m_workspace; }
    /// Call only while a database is open.
    dao::Database &database() const { return *m_database; }

    bool isOpen() const;
    bool isUpdatable() const;
    QString path() const; ///< machine path; empty if none is open

    /// Closes the open database, then opens this one. If it throws (dao::DaoException), none is open. progress is
    /// informed while another program has the file locked and may cancel the wait (tarnwick::Cancelled); it may be
    /// null.
    void open(const QString &path, dao::OpenMode mode = dao::OpenMode::Update, tarnwick::Progress *progress = nullptr);
    /// Opens a working copy in place of the file at path, whose format can only be read. path() returns the path of the
    /// original. keeper is released when the session closes the copy.
    void openCopy(const QString &path, const QString &copy, dao::OpenMode mode, std::shared_ptr<void> keeper = {});
    /// Rolls back uncommitted changes and closes. Does nothing if none is open.
    void close();

    /// Kept when the database is closed, since a conversion may close and reopen it.
    ConversionState conversion;

private:
    tarnwick::UserPrompts *m_prompts;
    std::unique_ptr<dao::Workspace> m_workspace;
    std::unique_ptr<dao::Database> m_database;
    QString m_copiedPath; ///< path of the original if the open database is a working copy; else empty
    std::shared_ptr<void> m_copyKeeper;
};

/// Returns true if a database is open; otherwise reports "Connect to a database first." (1053).
bool checkConnected(DatabaseSession &session);

/// Transactions on the session's workspace. Code that writes uses SessionTransaction. While the database has a progress
/// object (dao::ProgressScope), Begin::Writing and the commit wait for other programs that use the file and can be
/// cancelled; tarnwick::Cancelled is passed on. An engine exception is reported (1054, 1055, 1056) and false is
/// returned; with rethrow it is passed on unreported.
using Begin = dao::Workspace::Begin;
bool beginTrans(DatabaseSession &session, bool rethrow = false, Begin begin = Begin::AsNeeded);
bool commitTrans(DatabaseSession &session, bool rethrow = false);
bool rollbackTrans(DatabaseSession &session, bool rethrow = false);

} // namespace db
