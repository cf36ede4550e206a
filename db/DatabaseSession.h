#pragma once
#include <dao/Database.h>
#include <tarnwick/Prompts.h>

#include <memory>

namespace db {

/// The one database of the main window: whether it is open, where it lies, the workspace its transactions run on, and the
/// state of a conversion in progress. Every operation on the database takes it and calls checkConnected() first.
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

    /// Opens in place of what is open. Throws dao::DaoException.
    void open(const QString &path, dao::OpenMode mode = dao::OpenMode::Update);
    void close();

private:
    tarnwick::UserPrompts *m_prompts;
    std::unique_ptr<dao::Workspace> m_workspace;
    std::unique_ptr<dao::Database> m_database;
};

/// True when a database is open; otherwise says "Connect to a database first." (1053).
bool checkConnected(DatabaseSession &session);

} // namespace db
