#pragma once
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <functional>
#include <tarnwick/Format.h>

namespace db {

/// Asks once for all steps of a conversion. Every step asks here before it changes anything; the first that does puts
/// the question to the user, and its answer governs the others. On yes the backup is made, before anything changes.
/// What was asked is kept in the session's ConversionState.
class ConversionRequest
{
public:
    /// Writes the database, as it is, to that path; throws dao::DaoException.
    using Backup = std::function<void(const QString &path)>;

    /// project may be null: then no database lies in it.
    ConversionRequest(DatabaseSession &session, const brannock::Project *project, Backup backup);

    /// Lists a step by its description. True when the user has agreed to convert. A backup that cannot be written is
    /// said (1033), and nothing is converted.
    template <typename... Args>
    bool operator()(const tarnwick::Message &description, const Args &...args)
    {
        return request(tarnwick::format(QStringView(description.text), args...));
    }
    bool request(const QString &description);

    /// Whether the database lies in the project's arvo folder, where alone databases are converted.
    bool isInProject() const;
    /// The same folder and name with the extension "._db".
    static QString backupPath(const QString &databasePath);

private:
    bool ask();

    DatabaseSession *m_session;
    const brannock::Project *m_project;
    Backup m_backup;
};

/// Forgets what was asked: at the start of every pass.
void resetConversion(DatabaseSession &session);
/// Says what was converted, when something was approved and done.
void announceConversion(DatabaseSession &session);

} // namespace db
