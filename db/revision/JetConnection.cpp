#include "JetConnection.h"

#include "JetImport.h"
#include "Messages.h"
#include "RevisionConversion.h"

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

[[noreturn]] void failWriting(const QFileDevice &file, const QString &path)
{
    const bool isFull = file.error() == QFileDevice::ResourceError;
    throw dao::DaoException(
        isFull ? dao::error::DiskFull : dao::error::CannotOpenFile, u"DAO.Workspace"_s,
        u"The file '%1' cannot be written: %2"_s.arg(QDir::toNativeSeparators(path), file.errorString()));
}

/// For a working copy, and for the backup of a file that no session has open. progress may be null.
void copyFile(const QString &from, const QString &to, tarnwick::Progress *progress)
{
    constexpr qint64 kPiece = qint64(1) << 20;
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly))
        failWriting(source, from);
    if (!target.open(QIODevice::WriteOnly))
        failWriting(target, to);
    tarnwick::ProgressLoop loop(progress, source.size(),
                                tarnwick::format(messages::kCopying.text, QDir::toNativeSeparators(to)));
    while (!source.atEnd()) {
        const QByteArray piece = source.read(kPiece);
        if (piece.isEmpty())
            failWriting(source, from);
        if (target.write(piece) != piece.size())
            failWriting(target, to);
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

/// Others may work on the file while the question waits for its answer. What they wrote must not be lost.
void refuseChanged(const QString &path, const FileStamp &asRead)
{
    if (!(FileStamp(path) == asRead))
        throw dao::DaoException(dao::error::FileInUse, u"DAO.Workspace"_s,
                                dao::errorText(dao::error::FileInUse, {QDir::toNativeSeparators(path)}));
}

bool mayReplace(const QString &path)
{
    const QFileInfo file(path);
    return file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

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
bool replaceByConverted(DatabaseSession &session, ConversionRequest &request, const QString &path,
                        const FileStamp &asRead, const QString &workingCopy, const ConnectContext &context,
                        BringUpToDate bringUpToDate)
{
    tarnwick::UserPrompts &prompts = session.prompts();
    try {
        UnfinishedFile converted(path);
        copyFile(workingCopy, converted.path(), context.progress);
        session.openCopy(path, converted.path(), dao::OpenMode::Update);
        const bool isKept = bringUpToDate(session, request, context);
        session.close();
        if (!isKept)
            return false;
        refuseChanged(path, asRead);
        converted.replace();
        return true;
    } catch (const dao::DaoException &exception) {
        showDaoError(prompts, exception, messages::kConvertJet, QDir::toNativeSeparators(path));
    } catch (const dao::DaoCancelled &) {
        prompts.status(messages::kConversionCancelled);
    } catch (const tarnwick::Cancelled &) {
        prompts.status(messages::kConversionCancelled);
    }
    return false;
}

} // namespace

void openJetFile(DatabaseSession &session, const QString &path, const ConnectContext &context,
                 BringUpToDate bringUpToDate)
{
    session.prompts().status(messages::kReadingJet, QDir::toNativeSeparators(path));
    const auto folder = std::make_shared<QTemporaryDir>();
    const QString workingCopy = folder->filePath(u"copy.mdb"_s);
    const FileStamp asRead(path);
    const JetImportReport report = importJetFile(path, workingCopy, context.progress);
    session.openCopy(path, workingCopy, dao::OpenMode::ReadOnly, folder);
    tellRemarks(session.prompts(), path, report);
    if (!mayReplace(path))
        return;
    ConversionRequest request(session, context.project,
                              [&](const QString &backup) { copyFile(path, backup, context.progress); });
    if (!request(messages::kStepJetFile)) {
        listRevisionSteps(session, request);
        return;
    }
    if (replaceByConverted(session, request, path, asRead, workingCopy, context, bringUpToDate)) {
        session.open(path);
        announceConversion(session);
        return;
    }
    session.openCopy(path, workingCopy, dao::OpenMode::ReadOnly, folder);
    session.conversion.approved = false;
}

} // namespace db
