#include "JetConnection.h"

#include "JetImport.h"
#include "Messages.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dao/values/Errors.h>
#include <fcntl.h>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>
#include <unistd.h>

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

void copyFile(const QString &from, const QString &to)
{
    constexpr qint64 kPiece = qint64(1) << 20;
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly))
        failWriting(source, from);
    if (!target.open(QIODevice::WriteOnly))
        failWriting(target, to);
    while (!source.atEnd()) {
        const QByteArray piece = source.read(kPiece);
        if (piece.isEmpty())
            failWriting(source, from);
        errno = 0;
        if (target.write(piece) != piece.size())
            failWriting(target, to, errno);
    }
    if (!target.commit())
        failWriting(target, to);
}

/// Puts the finished file in the place of the other in one step.
void replaceFile(const QString &finished, const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(finished).constData(), O_RDONLY | O_CLOEXEC);
    bool done = descriptor >= 0 && ::fsync(descriptor) == 0;
    if (descriptor >= 0)
        ::close(descriptor);
    done = done && std::rename(QFile::encodeName(finished).constData(), QFile::encodeName(path).constData()) == 0;
    if (!done)
        throw dao::DaoException(dao::error::CannotOpenFile, u"DAO.Workspace"_s,
                                u"The file '%1' cannot be replaced."_s.arg(QDir::toNativeSeparators(path)));
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

/// A file beside the database while it is being made; removed unless it took its place.
class UnfinishedConversion
{
public:
    explicit UnfinishedConversion(const QString &path)
        : m_path(path + u".convert"_s)
    {
        remove();
    }
    ~UnfinishedConversion() { remove(); }
    UnfinishedConversion(const UnfinishedConversion &) = delete;
    UnfinishedConversion &operator=(const UnfinishedConversion &) = delete;
    const QString &path() const { return m_path; }

private:
    void remove()
    {
        QFile::remove(m_path);
        QFile::remove(m_path + u"-journal"_s);
    }

    QString m_path;
};

/// Converts the file that the session has a working copy of, in a further copy beside it. False when that was not kept.
/// The conversion state goes on through the session's reopenings.
bool convert(DatabaseSession &session, ConversionRequest &request, const QString &path, const QString &workingCopy,
             const ConnectContext &context, BringUpToDate bringUpToDate)
{
    const UnfinishedConversion unfinished(path);
    copyFile(workingCopy, unfinished.path());
    ConversionState state = session.conversion;
    session.openCopy(path, unfinished.path(), dao::OpenMode::Update);
    session.conversion = state;
    const bool isKept = bringUpToDate(session, request, context);
    state = session.conversion;
    session.close();
    if (!isKept)
        return false;
    replaceFile(unfinished.path(), path);
    session.open(path);
    session.conversion = state;
    return true;
}

} // namespace

void openJetFile(DatabaseSession &session, const QString &path, const ConnectContext &context,
                 BringUpToDate bringUpToDate)
{
    session.prompts().status(messages::kReadingJet, QDir::toNativeSeparators(path));
    const auto folder = std::make_shared<QTemporaryDir>();
    const QString workingCopy = folder->filePath(u"copy.mdb"_s);
    const JetImportReport report = importJetFile(path, workingCopy, context.progress);
    session.openCopy(path, workingCopy, dao::OpenMode::ReadOnly, folder);
    resetConversion(session);
    tellRemarks(session.prompts(), path, report);
    if (!mayReplace(path))
        return;
    ConversionRequest request(session, context.project, [&](const QString &backup) { copyFile(path, backup); });
    if (!request(messages::kStepJetFile))
        return;
    if (convert(session, request, path, workingCopy, context, bringUpToDate))
        announceConversion(session);
    else
        session.openCopy(path, workingCopy, dao::OpenMode::ReadOnly, folder);
}

} // namespace db
