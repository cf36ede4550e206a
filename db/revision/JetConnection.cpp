#include "JetConnection.h"

#include "JetImport.h"
#include "JetUse.h"
#include "Messages.h"
#include "RevisionConversion.h"

#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/TableGrowth.h>
#include <db/UnfinishedFile.h>
#include <jet/JetReader.h>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <tarnwick/Leftovers.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

/// Wraps content so that reading it reports progress. progress may be null.
FileContent watched(const FileContent &content, qint64 size, const QString &what, tarnwick::Progress *progress)
{
    return [=](const std::function<void(QByteArrayView)> &take) {
        tarnwick::ProgressLoop loop(progress, size, what);
        qint64 done = 0;
        content([&](QByteArrayView piece) {
            take(piece);
            done += piece.size();
            loop.tick(std::min(done, size));
        });
    };
}

/// Thrown if another program has changed the file since it was read: it must be read again.
class ChangedMeanwhile : public std::exception
{
};

/// Identifies the version of a file, to notice that another program has written to it.
struct FileStamp
{
    explicit FileStamp(const QString &path)
        : size(QFileInfo(path).size())
        , modified(QFileInfo(path).lastModified())
    {
    }
    bool operator==(const FileStamp &) const = default;

    qint64 size;
    QDateTime modified;
};

/// Makes a folder for a working copy. Copies may be large, so those left behind by killed programs are removed first.
std::shared_ptr<QTemporaryDir> makeWorkFolder()
{
    tarnwick::removeWorkFolders();
    return std::make_shared<QTemporaryDir>(tarnwick::workFolderPattern());
}

/// A Jet file that is opened through a working copy.
class JetFile
{
public:
    explicit JetFile(const QString &path)
        : m_path(path)
        , m_file(QFileInfo(path).canonicalFilePath())
        , m_asRead(m_file)
        , m_folder(makeWorkFolder())
    {
        if (!m_folder->isValid())
            throw dao::DaoException(dao::error::DiskError, u"DAO.Workspace"_s,
                                    u"No temporary folder could be made: %1"_s.arg(m_folder->errorString()));
    }

    const QString &path() const { return m_path; } ///< as given by the user
    QString workingCopy() const { return m_folder->filePath(u"copy.mdb"_s); }
    void open(DatabaseSession &session, dao::OpenMode mode = dao::OpenMode::ReadOnly) const
    {
        session.openCopy(m_path, workingCopy(), mode, m_folder);
    }
    bool mayBeReplaced() const
    {
        return QFileInfo(m_file).isWritable() && QFileInfo(QFileInfo(m_file).absolutePath()).isWritable();
    }
    /// Path of the file with links resolved: the finished file replaces it there.
    const QString &resolvedPath() const { return m_file; }
    /// Passes the content of the file to take; reads through the lock if there is one.
    void read(const std::function<void(QByteArrayView)> &take) const
    {
        if (m_lock)
            m_lock->read(take);
        else
            contentOf(m_file)(take);
    }
    qint64 size() const { return m_asRead.size; }
    /// Other programs may write to the file while the question is open, and their changes must not be lost. So the file
    /// is locked after the answer and compared with the version that was read.
    void lock(tarnwick::Progress *progress)
    {
        m_lock = std::make_unique<JetLock>(m_file, progress, [this] { requireAsRead(); });
        requireUnchanged();
    }
    /// Checks who uses the file. Throws ChangedMeanwhile if it is no longer the file that was read: a lock on a file
    /// that was put in its place by another conversion says nothing.
    JetUse currentUse() const
    {
        JetUse use(m_file);
        requireAsRead(); // after the look at the locks, which may have been those of a new file
        return use;
    }
    bool isChanged() const { return !(FileStamp(m_file) == m_asRead); }
    /// Throws ChangedMeanwhile, or dao::DaoException (3045) if a program has opened the file since it was read.
    void requireUnchanged() const
    {
        requireAsRead();
        requireUnused();
    }
    void requireAsRead() const
    {
        if (isChanged())
            throw ChangedMeanwhile();
    }
    void requireUnused() const
    {
        if (!JetUse(m_file).lockFile.isEmpty())
            throw dao::DaoException(dao::error::FileInUse, u"DAO.Workspace"_s,
                                    dao::errorText(dao::error::FileInUse, {QDir::toNativeSeparators(m_path)}));
    }

private:
    QString m_path;
    QString m_file;
    FileStamp m_asRead;
    std::shared_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<JetLock> m_lock;
};

void tellRemarks(tarnwick::UserPrompts &prompts, const QString &path, const JetImportReport &report)
{
    constexpr int kMostLines = 30;
    const QStringList lines = report.remarkLines();
    if (lines.isEmpty())
        return;
    QString list;
    for (const QString &line : lines.first(std::min<qsizetype>(lines.size(), kMostLines)))
        list += u"    "_s + line + u'\n';
    if (lines.size() > kMostLines)
        list += tarnwick::format(messages::kMoreRemarks.text, int(lines.size() - kMostLines));
    prompts.information(messages::kJetRemarks, QDir::toNativeSeparators(path), list);
}

/// Brings views, aliases and statistics up to date, so that the next connection has nothing to write.
void updateLabelsAndStatistics(DatabaseSession &session, const brannock::Project *project)
{
    refreshLabels(session, project);
    completeStatistics(session.database());
}

/// Converts another copy of the working copy and replaces the file with it. Returns false after reporting the reason;
/// the file is then unchanged.
bool replaceByConverted(DatabaseSession &session, ConversionRequest &request, JetFile &file,
                        const ConnectContext &context, BringUpToDate bringUpToDate)
{
    tarnwick::UserPrompts &prompts = session.prompts();
    bool isReplaced = false;
    const auto replace = [&] {
        file.lock(context.progress);
        if (!request.backUp())
            return;
        UnfinishedFile converted(file.resolvedPath());
        const QString writing = tarnwick::format(messages::kCopying.text, QDir::toNativeSeparators(converted.path()));
        const qint64 size = QFileInfo(file.workingCopy()).size();
        writeContent(converted.path(), watched(contentOf(file.workingCopy()), size, writing, context.progress),
                     file.resolvedPath());
        session.openCopy(file.path(), converted.path(), dao::OpenMode::Update);
        const bool isKept = bringUpToDate(session, request, context);
        if (isKept)
            updateLabelsAndStatistics(session, context.project);
        session.close();
        if (!isKept)
            return;
        file.requireUnused();
        if (file.isChanged()) // by a program that does not use locks
            throw dao::DaoException(
                dao::error::FileInUse, u"DAO.Workspace"_s,
                u"Another program has changed the file '%1' while it was being converted. Connect again."_s.arg(
                    QDir::toNativeSeparators(file.path())));
        converted.replace();
        isReplaced = true;
    };
    const QString shown = QDir::toNativeSeparators(file.path());
    if (attemptCancellable(prompts, replace, messages::kConvertJet, shown) == tarnwick::Outcome::Cancelled)
        session.conversion.cancelled = true;
    return isReplaced;
}

/// Waits for a program that has locked the file, such as another conversion, and reports if the wait was in vain. A
/// program with a lock file keeps the file open as long as its user works, so it is not waited for.
bool isUsedByOthers(tarnwick::UserPrompts &prompts, const JetFile &file, tarnwick::Progress *progress)
{
    // What was seen last is reported. A second look could find the next program at work.
    JetUse use = file.currentUse();
    const auto isFree = [&] {
        use = file.currentUse();
        return !use.isLocked || !use.lockFile.isEmpty();
    };
    waitUntil(isFree, progress);
    const QString shown = QDir::toNativeSeparators(file.path());
    if (use.isLocked)
        prompts.information(messages::kJetLocked, shown);
    else if (use.isInUse())
        prompts.information(messages::kJetLockFile, shown, QDir::toNativeSeparators(use.lockFile));
    return use.isInUse();
}

/// Asks the user. Returns false after reporting the reason why the file is not converted; the steps it would need are
/// then listed.
bool isConversionWanted(DatabaseSession &session, ConversionRequest &request, const JetFile &file,
                        tarnwick::Progress *progress)
{
    try {
        // Outside of a project nothing is converted, whether or not the file is locked.
        if (request.isInProject() && isUsedByOthers(session.prompts(), file, progress))
            return false;
        if (request.request(QString::fromUtf16(messages::kStepJetFile.text)))
            return true;
    } catch (const tarnwick::Cancelled &) {
        session.conversion.cancelled = true;
    }
    if (session.conversion.asked)
        listRevisionSteps(session, request);
    return false;
}

/// Reads a file that other programs may be changing.
JetImportReport readFile(const JetFile &file, tarnwick::Progress *progress)
{
    try {
        return importJetFile(file.path(), file.workingCopy(), progress);
    } catch (const dao::DaoException &) {
        // Another program may have converted it before its state was noted.
        if (!jet::isJetFile(file.path()))
            throw ChangedMeanwhile();
        file.requireUnchanged();
        throw;
    }
}

void openThroughCopy(DatabaseSession &session, const QString &path, const ConnectContext &context,
                     BringUpToDate bringUpToDate)
{
    session.prompts().status(messages::kReadingJet, QDir::toNativeSeparators(path));
    JetFile file(path);
    const JetImportReport report = readFile(file, context.progress);
    file.open(session, dao::OpenMode::Update);
    refreshLabels(session, context.project);
    file.open(session);
    tellRemarks(session.prompts(), path, report);
    if (context.onlyReads || !file.mayBeReplaced())
        return;
    const FileContent content = [&](const std::function<void(QByteArrayView)> &take) { file.read(take); };
    const QString reading = tarnwick::format(messages::kReadingJet.text, QDir::toNativeSeparators(path));
    ConversionRequest request(session, context.project, watched(content, file.size(), reading, context.progress));
    if (!isConversionWanted(session, request, file, context.progress))
        return;
    if (replaceByConverted(session, request, file, context, bringUpToDate)) {
        session.open(path);
        announceConversion(session);
        return;
    }
    file.open(session);
    session.conversion.approved = false;
}

} // namespace

bool openJetFile(DatabaseSession &session, const QString &path, const ConnectContext &context,
                 BringUpToDate bringUpToDate)
{
    constexpr int kMostReadings = 3;
    for (int readings = 0; jet::isJetFile(path); ++readings) {
        if (readings == kMostReadings)
            throw dao::DaoException(dao::error::FileInUse, u"DAO.Workspace"_s,
                                    u"Another program keeps changing the file '%1'. Connect again later."_s.arg(
                                        QDir::toNativeSeparators(path)));
        try {
            openThroughCopy(session, path, context, bringUpToDate);
            return true;
        } catch (const ChangedMeanwhile &) {
            session.close();
            forgetSteps(session);
        }
    }
    return false;
}

} // namespace db
