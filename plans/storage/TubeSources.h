#pragma once
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <ellery/Tube.h>
#include <optional>

namespace plans {

/// Tubes with a name, such as those of a legend entry.
struct NamedTubes
{
    QString name;
    QList<ellery::TubeAddress> tubes;
};

/// What a list or plan can be combined with: tubes of the map, the tube sets and plans of the database, and the list
/// and plan files of the project.
class TubeSources
{
public:
    /// ofMap: the selection, legend entries and so on. All must outlive this object. The options of list fills tell how
    /// list files are read.
    TubeSources(db::DatabaseSession &session, const brannock::Project &project, const QList<NamedTubes> &ofMap)
        : m_session(session)
        , m_project(project)
        , m_ofMap(ofMap)
    {
    }

    /// All of them, as the user chooses them.
    QStringList names() const;
    /// The tubes of one of the names. Reports and returns an empty optional if it cannot be read; a name that is not in
    /// the list gives no tubes and is reported, too.
    std::optional<QList<ellery::TubeAddress>> tubes(const QString &name) const;

private:
    QStringList files(const QString &folder, const QStringList &patterns) const;

    db::DatabaseSession &m_session;
    const brannock::Project &m_project;
    const QList<NamedTubes> &m_ofMap;
};

} // namespace plans
