#pragma once
#include "SubsystemCommands.h"

#include <tarnwick/CommandHandlers.h>

#include <QList>

namespace app {

/// The commands of the inspection results: upload and conversion of reports, repairs, history.
class ResultCommands : public SubsystemCommands
{
public:
    /// parent: of the dialogs.
    ResultCommands(ProjectSession &session, QWidget *parent)
        : SubsystemCommands(session, parent)
    {
    }
    void bind(tarnwick::CommandHandlers &handlers);

    /// The dialogs of upload and conversion. files: shown in the list; empty for none.
    void uploadReports(const QStringList &files = {});
    void convertReports(const QStringList &files = {});

private:
    void showLog();
    void showHistory();
    void showRepairs();
    /// Adds an entry with these tubes to the legend.
    void showRepairsInMap(const QString &label, const QList<qint32> &tubes);
};

} // namespace app
