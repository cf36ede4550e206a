#pragma once
#include <dao/Database.h>
#include <tarnwick/Progress.h>
#include <tarnwick/Prompts.h>

#include <memory>

namespace db {

/// Where a conversion of an older database stands. Reset at the start of every pass, so that the question is asked at
/// most once per connection and its answer governs every later step.
struct ConversionState
{
    QStringList requested; ///< a description of each step that was requested so far
    QStringList failed;    ///< those of them that were tried and undone
    bool asked = false;
    bool approved = false;
    bool cancelled = false;        ///< by the user, after it had begun
    bool refreshCancelled = false; ///< by the user: views and labels may be older than the project
    QString backup;                ///< of the file as it was before the conversion; empty when none was made

    QStringList done() const; ///< requested and not failed
    /// "    %d) %S\n" for each step.
    static QString numbered(const QStringList &steps);
};

/// The one database of the main window: whether it is open, where it lies, the workspace its transactions run on, and
/// the state of a conversion in progress. Every operation on the database takes it and calls checkConnected() first.
class DatabaseSession
{
public:
    explicit DatabaseSession(tarnwick::UserPrompts &prompts);
    ~DatabaseSession();
    DatabaseSession(const DatabaseSession &) = delete;
    DatabaseSession &operator=(const DatabaseSession &) = delete;

    tarnwick::UserPrompts &prompts() const { return *m_prompts; }
    dao::Workspace &workspace() { return *m_workspace; }
    /// Only while one is open.
    dao::Database &database() const { return *m_database; }

    bool isOpen() const;
    bool isUpdatable() const;
    QString path() const; ///< machine path, empty when none is open

    /// Opens in place of what is open, which is closed first. Throws dao::DaoException; then none is open.
    /// progress: who is told, and may cancel (DaoCancelled), while another program has the file locked; may be null.
    void open(const QString &path, dao::OpenMode mode = dao::OpenMode::Update, tarnwick::Progress *progress = nullptr);
    /// Opens a working copy that stands for the file at path, which is of a format that can only be read: path() is
    /// that file's. keeper is let go when the session closes the copy.
    void openCopy(const QString &path, const QString &copy, dao::OpenMode mode, std::shared_ptr<void> keeper = {});
    /// Rolls back what is not committed. Does nothing when none is open.
    void close();

    /// Outlives the closing of the database, since a conversion may close and open it.
    ConversionState conversion;

private:
    tarnwick::UserPrompts *m_prompts;
    std::unique_ptr<dao::Workspace> m_workspace;
    std::unique_ptr<dao::Database> m_database;
    QString m_copiedPath; ///< what the open database is a working copy of; empty when it is none
    std::shared_ptr<void> m_copyKeeper;
};

/// True when a database is open; otherwise says "Connect to a database first." (1053).
bool checkConnected(DatabaseSession &session);

/// Transactions on the session's workspace; what writes uses SessionTransaction. Begin::Writing and the commit wait for
/// other programs that use the file, and may be cancelled, while the database has a progress object (EngineProgress):
/// DaoCancelled passes on. An engine exception is reported (1054, 1055, 1056) and false returned, or, with rethrow,
/// passes on unreported.
using Begin = dao::Workspace::Begin;
bool beginTrans(DatabaseSession &session, bool rethrow = false, Begin begin = Begin::AsNeeded);
bool commitTrans(DatabaseSession &session, bool rethrow = false);
bool rollbackTrans(DatabaseSession &session, bool rethrow = false);

} // namespace db
