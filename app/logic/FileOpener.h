#pragma once
#include "FileKinds.h"

#include <QStringList>

#include <functional>

namespace app {

class ProjectSession;

/// Opens the files that a user names, each in its window or dialog: arguments of the program, files dropped on the
/// window.
class FileOpener
{
public:
    /// What the window does with each kind. Machine paths.
    struct Actions
    {
        /// Replaces the project. Returns false if the user cancels, or after reporting why it failed.
        std::function<bool(const QString &folder)> openProject;
        std::function<void(const QString &path)> connectDatabase;
        std::function<void(const QString &path)> openMap;
        std::function<void(const QString &path)> openQuery;
        std::function<void(const QString &path)> openPlan;
        std::function<void(const QString &path)> openList;
        std::function<void(const QStringList &paths)> uploadReports;
        std::function<void(const QStringList &paths)> convertTexts;
    };
    /// session must outlive this object.
    FileOpener(ProjectSession &session, const Actions &actions)
        : m_session(session)
        , m_actions(actions)
    {
    }

    /// Opens the files in order; reports and texts of other systems that follow each other in one dialog. The project
    /// of a file is opened first; a file outside of any project is opened in the present one, or else in the one opened
    /// last. Files that do not exist or are of no known kind are reported together; nothing is opened then. Returns
    /// false after a failure.
    bool open(const QStringList &paths);

private:
    struct Group
    {
        FileKind kind;
        QString project;
        QStringList paths;
    };
    bool openGroup(const Group &group);
    bool enterProject(const Group &group);

    ProjectSession &m_session;
    const Actions m_actions;
};

} // namespace app
