#pragma once
#include <tarnwick/CommandHandlers.h>

#include <QList>

class QWidget;

namespace tarnwick {
class FileDialogs;
}

namespace app {

class ProjectSession;

/// The commands of the inspection results: upload and conversion of reports, repairs, history.
class ResultCommands
{
public:
    /// parent: of the dialogs.
    ResultCommands(ProjectSession &session, QWidget *parent)
        : m_session(session)
        , m_parent(parent)
    {
    }
    void bind(tarnwick::CommandHandlers &handlers);
    /// The dialogs that ask for files; must outlive this object.
    void setFileDialogs(tarnwick::FileDialogs *dialogs) { m_dialogs = dialogs; }

    /// The dialogs of upload and conversion. files: shown in the list; empty for none.
    void uploadReports(const QStringList &files = {});
    void convertReports(const QStringList &files = {});

private:
    void showLog();
    void showHistory();
    void showRepairs();
    /// Adds an entry with these tubes to the legend.
    void showRepairsInMap(const QString &label, const QList<qint32> &tubes);

    ProjectSession &m_session;
    QWidget *m_parent;
    tarnwick::FileDialogs *m_dialogs = nullptr;
};

} // namespace app
