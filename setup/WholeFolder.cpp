#include "WholeFolder.h"

#include <brannock/Project.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <tarnwick/base/Error.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/TemporaryName.h>

#include <cerrno>
#include <cstdio>

namespace setup {

using namespace Qt::StringLiterals;

static void checkFree(const QString &wanted)
{
    const QFileInfo info(wanted);
    const auto refuse = [&](const QString &reason) { throw tarnwick::FileError(wanted, 0, reason); };
    if (brannock::Project::isProjectFolder(wanted))
        refuse(u"There is a project in this folder already."_s);
    if (info.isSymLink() || (info.exists() && !info.isDir()))
        refuse(u"There is something else with this name already."_s);
    if (info.exists() && !QDir(wanted).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
        refuse(u"A project is made in a new or empty folder; this one has something in it."_s);
    if (!QFileInfo(info.absolutePath()).isDir())
        throw tarnwick::FileError(info.absolutePath(), 0, u"There is no such folder."_s);
}

void makeWholeFolder(const QString &wanted, const std::function<void(const QString &folder)> &fill)
{
    const QString target = QDir::cleanPath(QFileInfo(wanted).absoluteFilePath());
    checkFree(target);
    const QString folder = tarnwick::temporaryNameFor(target);
    if (!QDir().mkdir(folder))
        throw tarnwick::WriteError(target, errno);
    auto removing = qScopeGuard([&] { QDir(folder).removeRecursively(); });
    fill(folder);
    // Takes the place of an empty folder, and of nothing else.
    if (::rename(QFile::encodeName(folder).constData(), QFile::encodeName(target).constData()) != 0)
        throw tarnwick::WriteError(target, errno);
    removing.dismiss();
    tarnwick::syncFolderOf(target);
}

} // namespace setup
