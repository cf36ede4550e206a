#include "AboutText.h"

#include "ProjectSession.h"

#include <brannock/Project.h>
#include <dao/StorageVersion.h>
#include <tarnwick/base/Installation.h>
#include <tarnwick/FailureLog.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QStandardPaths>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace app {

namespace {

QString line(const QString &label, const QString &value)
{
    constexpr int kLabelWidth = 16;
    return QString(label + u':').leftJustified(kLabelWidth) + (value.isEmpty() ? u"<none>"_s : value) + u'\n';
}

QString libraries()
{
    struct Library
    {
        QString name;
        QString licence;
    };
    const Library kLibraries[] = {
        {u"Qt "_s + QString::fromLatin1(qVersion()), u"LGPL 3"_s},
        {u"SQLite "_s + dao::sqliteVersion(), u"public domain"_s},
        {u"QScintilla"_s, u"GPL 3"_s},
        {u"mdbtools"_s, u"LGPL 2 or later"_s},
        {u"libseccomp"_s, u"LGPL 2.1"_s},
        {u"libEMF"_s, u"LGPL 2.1 or later"_s},
        {u"libxlsxwriter"_s, u"BSD, 2 clauses"_s},
        {u"minizip"_s, u"zlib"_s},
    };
    QString text;
    for (const Library &library : kLibraries)
        text += u"  "_s + library.name.leftJustified(18) + library.licence + u'\n';
    return text;
}

QString folders(const ProjectSession &session)
{
    const auto native = [](const QString &path) { return path.isEmpty() ? QString() : QDir::toNativeSeparators(path); };
    const auto user = [&](QStandardPaths::StandardLocation location) {
        return native(QStandardPaths::writableLocation(location));
    };
    return line(u"Program"_s, native(QCoreApplication::applicationFilePath())) +
           line(u"Guide"_s, native(tarnwick::Installation::guideFolder())) +
           line(u"PALOMINE_DIR"_s, native(session.roots().palomineDir)) +
           line(u"Settings"_s, user(QStandardPaths::AppConfigLocation)) +
           line(u"User data"_s, user(QStandardPaths::AppDataLocation)) +
           line(u"Failures"_s, native(tarnwick::FailureLog::defaultPath())) +
           line(u"Project"_s, native(session.project().folder)) +
           line(u"Database"_s, native(session.databaseStatus().path));
}

} // namespace

QString aboutText(const ProjectSession &session, const QString &platform)
{
    const QString sources = tarnwick::sourceRevision();
    return line(u"Program"_s, u"ARVO "_s + tarnwick::programVersion() +
                                  (sources.isEmpty() ? QString() : QString(u", sources "_s + sources))) +
           line(u"Revision"_s, brannock::TOLVENMARK_REV) +
           line(u"License"_s, u"GNU General Public License, version 3 or later"_s) + u"\nLibraries\n"_s + libraries() +
           u"\nSystem\n"_s +
           line(u"Runs on"_s, QSysInfo::prettyProductName() + u", "_s + QSysInfo::kernelType() + u' ' +
                                  QSysInfo::kernelVersion() + u", "_s + QSysInfo::currentCpuArchitecture()) +
           line(u"Window system"_s, platform) + line(u"Locale"_s, QLocale().name()) + u"\nFolders and files\n"_s +
           folders(session);
}

QString failuresText(const QString &logFile)
{
    constexpr qint64 kMost = 256 * 1024;
    QFile file(logFile);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
        return u"No failures have been reported.\n"_s;
    const bool isCut = file.size() > kMost;
    if (isCut) {
        file.seek(file.size() - kMost);
        file.readLine(); // the rest of a line
    }
    return (isCut ? u"...\n"_s : QString()) + QString::fromUtf8(file.readAll());
}

} // namespace app
