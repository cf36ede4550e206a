#pragma once
#include "JetReader.h"

#include <jet/wire/Protocol.h>
#include <jet/wire/WireReader.h>

#include <QElapsedTimer>
#include <QProcess>

namespace jet {

/// The reading process and the frames it sends. Destroying it ends the process.
class ReaderProcess
{
public:
    /// JetError when the program cannot be started.
    ReaderProcess(const QString &path, const ReadOptions &options, bool schemaOnly, dao::Progress *progress);
    ~ReaderProcess();

    struct Frame
    {
        wire::Frame kind;
        std::span<const uchar> payload; ///< lives until the next call
    };
    /// JetError when there is none before the stream ends, JetCancelled.
    Frame next();
    /// After the last frame: JetError unless the stream ends here and the process ended well.
    void finish();
    /// Of the last frame, for a fault in it.
    JetError failure(const QString &detail) const;

    /// For work on a frame that takes long: JetCancelled when the user stops.
    void checkCancelled();

private:
    std::span<const uchar> take(size_t length);
    bool readMore();
    JetError endedEarly() const;

    QString m_path;
    int m_patience;
    dao::Progress *m_progress;
    QElapsedTimer m_sinceAsked;
    quint64 m_longestFrame;
    QProcess m_process;
    QByteArray m_buffer;
    qsizetype m_used = 0;
};

} // namespace jet
