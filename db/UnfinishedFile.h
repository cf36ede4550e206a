#pragma once
#include <dao/values/DaoException.h>
#include <QString>

namespace db {

/// Returns true if a database of this name can be written: the journal beside it has a longer name, which must also be
/// valid.
bool hasRoomForJournal(const QString &path);

/// A database file under construction. It has a temporary name in the folder of the wanted file and is renamed when it
/// is complete, so a file with the wanted name is never incomplete. Removed if it is not finished; files left behind by
/// a killed program are removed by a later run.
class UnfinishedFile
{
public:
    /// Throws dao::DaoException (3051) if the wanted name is too long to have a journal beside it.
    explicit UnfinishedFile(const QString &wanted);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile &) = delete;
    UnfinishedFile &operator=(const UnfinishedFile &) = delete;

    /// Path of the unfinished file. The file does not exist yet.
    const QString &path() const { return m_path; }

    /// Runs the work that makes the file. Its exceptions name the wanted file, not the temporary one.
    template <typename Work>
    void fill(const Work &work) const
    {
        try {
            work();
        } catch (const dao::DaoException &exception) {
            throw named(exception);
        }
    }

    // Both flush the closed file to the disk and give it the wanted name. Throw dao::DaoException (3051).
    void finish();  ///< a file of that name must not exist (3204)
    void replace(); ///< replaces a file of that name in one step and keeps its permissions

private:
    dao::DaoException named(const dao::DaoException &exception) const;
    void flush() const;

    QString m_wanted;
    QString m_path;
};

} // namespace db
