#pragma once
#include <QString>

namespace app {

class ProjectSession;

/// Lines about the program for a report of a fault: version, licence, libraries with theirs, system, folders in use.
/// platform: the window system, as Qt names it.
QString aboutText(const ProjectSession &session, const QString &platform);

/// The log of failures, the newest last; only its end if it is long.
QString failuresText(const QString &logFile);

} // namespace app
