#pragma once
#include <dao/values/DaoException.h>
#include <QString>

namespace db {

/// Whether a file of that name can be written to as a database: its journal stands beside it under a longer name.
bool hasRoomForJournal(const QString &path);

/// A database file while it is being made: it stands under a name of its own in the folder of the wanted file, and gets
/// that name once it is whole. So whatever happens, no file that bears the wanted name is half of one. Removed when it
/// is left unfinished; what a killed program left behind is removed by a later one.
class UnfinishedFile
{
public:
    /// Throws dao::DaoException (3051) when the wanted name leaves no room for a journal.
    explicit UnfinishedFile(const QString &wanted);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile &) = delete;
    UnfinishedFile &operator=(const UnfinishedFile &) = delete;

    /// Of the unfinished file, which does not exist yet.
    const QString &path() const { return m_path; }

    // The finished file, closed, is flushed to the disk and gets the wanted name. Throw dao::DaoException (3051).
    void finish();  ///< there must be no file of that name (3204)
    void replace(); ///< in place of the file of that name, with its permissions, in one step

    /// The exception as it reads for the file that the user asked for.
    dao::DaoException named(const dao::DaoException &exception) const;

private:
    void flush() const;

    QString m_wanted;
    QString m_path;
};

} // namespace db
