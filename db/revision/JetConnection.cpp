#include "JetConnection.h"

#include "JetImport.h"
#include "JetUse.h"
#include "Messages.h"
#include "RevisionConversion.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/UnfinishedFile.h>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>

namespace db {

using namespace Qt::StringLiterals;

namespace {

/// systemError: what the system said; a file that could be written in part does not remember it.
[[noreturn]] void failWriting(const QFileDevice &file, const QString &path, int systemError = 0)
{
    const bool isFull = systemError == ENOSPC || file.error() == QFileDevice::ResourceError;
    const QString reason = systemError == 0 ? file.errorString() : QString::fromLocal8Bit(std::strerror(systemError));
    throw dao::DaoException(isFull ? dao::error::DiskFull : dao::error::CannotOpenFile, u"DAO.Workspace"_s,
                            u"The file '%1' cannot be written: %2"_s.arg(QDir::toNativeSeparators(path), reason));
}

/// For a working copy, and for the backup of a file that no session has open: who may not read the one may not read the
/// other. progress may be null.
void copyFile(const QString &from, const QString &to, tarnwick::Progress *progress)
{
    constexpr qint64 kPiece = qint64(1) << 20;
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly))
        failWriting(source, from);
    if (!target.open(QIODevice::WriteOnly))
        failWriting(target, to);
    target.setPermissions(source.permissions());
    tarnwick::ProgressLoop loop(progress, source.size(),
                                tarnwick::format(messages::kCopying.text, QDir::toNativeSeparators(to)));
    while (!source.atEnd()) {
        const QByteArray piece = source.read(kPiece);
        if (piece.isEmpty())
            failWriting(source, from);
        errno = 0;
        if (target.write(piece) != piece.size())
            failWriting(target, to, errno);
        loop.tick(source.pos());
    }
    if (!target.commit())
        failWriting(target, to);
}

/// What tells a file that someone has written to from the one that was read.
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

/// A Jet file that is open through its working copy.
class JetFile
{
public:
    explicit JetFile(const QString &path)
        : m_path(path)
        , m_file(QFileInfo(path).canonicalFilePath())
        , m_asRead(m_file)
        , m_folder(std::make_shared<QTemporaryDir>())
    {
        if (!m_folder->isValid())
            throw dao::DaoException(dao::error::DiskError, u"DAO.Workspace"_s,
                                    u"No temporary folder could be made: %1"_s.arg(m_folder->errorString()));
    }

    const QString &path() const { return m_path; } ///< as the user named it
    QString workingCopy() const { return m_folder->filePath(u"copy.mdb"_s); }
    void open(DatabaseSession &session, dao::OpenMode mode = dao::OpenMode::ReadOnly) const
    {
        session.openCopy(m_path, workingCopy(), mode, m_folder);
    }
    bool mayBeReplaced() const
    {
        return QFileInfo(m_file).isWritable() && QFileInfo(QFileInfo(m_file).absolutePath()).isWritable();
    }
    /// Where a finished file takes its place: behind a link, where the link leads to.
    const QString &itself() const { return m_file; }
    /// Others may work on the file while the question waits for its answer. What they wrote, or are about to write,
    /// must not be lost.
    void refuseInUse() const
    {
        if (JetUse(m_file).isInUse() || !(FileStamp(m_file) == m_asRead))
            throw dao::DaoException(dao::error::FileInUse, u"DAO.Workspace"_s,
                                    dao::errorText(dao::error::FileInUse, {QDir::toNativeSeparators(m_path)}));
    }

private:
    QString m_path;
    QString m_file;
    FileStamp m_asRead;
    std::shared_ptr<QTemporaryDir> m_folder;
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

/// Brings a further copy of the working copy up to date and puts it into the place of the file. False when that was not
/// done, for a reason that has been said; the file is then as it was.
bool replaceByConverted(DatabaseSession &session, ConversionRequest &request, const JetFile &file,
                        const ConnectContext &context, BringUpToDate bringUpToDate)
{
    tarnwick::UserPrompts &prompts = session.prompts();
    try {
        UnfinishedFile converted(file.itself());
        copyFile(file.workingCopy(), converted.path(), context.progress);
        session.openCopy(file.path(), converted.path(), dao::OpenMode::Update);
        const bool isKept = bringUpToDate(session, request, context);
        session.close();
        if (!isKept)
            return false;
        file.refuseInUse();
        converted.replace();
        return true;
    } catch (const dao::DaoException &exception) {
        showDaoError(prompts, exception, messages::kConvertJet, QDir::toNativeSeparators(file.path()));
    } catch (const dao::DaoCancelled &) {
        session.conversion.cancelled = true;
    } catch (const tarnwick::Cancelled &) {
        session.conversion.cancelled = true;
    }
    return false;
}

/// Puts the question. False when the file is not to be converted, for a reason that has been said; the steps that it
/// would need are listed then.
bool isConversionWanted(DatabaseSession &session, ConversionRequest &request, const JetFile &file)
{
    tarnwick::UserPrompts &prompts = session.prompts();
    const QString shown = QDir::toNativeSeparators(file.path());
    const JetUse use(file.itself());
    // Elsewhere nothing is converted anyway.
    if (request.isInProject() && use.isLocked) {
        prompts.information(messages::kJetLocked, shown);
        return false;
    }
    if (request.isInProject() && use.isInUse()) {
        prompts.information(messages::kJetLockFile, shown, QDir::toNativeSeparators(use.lockFile));
        return false;
    }
    try {
        if (request(messages::kStepJetFile))
            return true;
    } catch (const dao::DaoCancelled &) {
        session.conversion.cancelled = true;
    } catch (const tarnwick::Cancelled &) {
        session.conversion.cancelled = true;
    }
    listRevisionSteps(session, request);
    return false;
}

} // namespace

void openJetFile(DatabaseSession &session, const QString &path, const ConnectContext &context,
                 BringUpToDate bringUpToDate)
{
    session.prompts().status(messages::kReadingJet, QDir::toNativeSeparators(path));
    const JetFile file(path);
    const JetImportReport report = importJetFile(path, file.workingCopy(), context.progress);
    file.open(session, dao::OpenMode::Update);
    refreshLabels(session, context.project);
    file.open(session);
    tellRemarks(session.prompts(), path, report);
    if (context.onlyReads || !file.mayBeReplaced())
        return;
    ConversionRequest request(session, context.project,
                              [&](const QString &backup) { copyFile(path, backup, context.progress); });
    if (!isConversionWanted(session, request, file))
        return;
    if (replaceByConverted(session, request, file, context, bringUpToDate)) {
        session.open(path);
        announceConversion(session);
        return;
    }
    file.open(session);
    session.conversion.approved = false;
}

} // namespace db
