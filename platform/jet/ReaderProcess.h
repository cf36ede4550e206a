#pragma once
#include "JetContent.h"
#include "JetError.h"

#include <jet/wire/Protocol.h>
#include <jet/wire/WireReader.h>
#include <tarnwick/base/Progress.h>

#include <QElapsedTimer>
#include <QProcess>

namespace jet {

/// The reading process and the frames that it sends. The destructor ends the process.
class ReaderProcess
{
public:
    /// Throws JetError if the program cannot be started.
    ReaderProcess(const QString &path, const ReadOptions &options, bool schemaOnly, tarnwick::Progress *progress);
    ~ReaderProcess();

    struct Frame
    {
        wire::Frame kind;
        std::span<const uchar> payload; ///< valid until the next call
    };
    /// Returns the next frame. Throws JetError if the stream ends, and tarnwick::Cancelled.
    Frame next();
    /// Call after the last frame: throws JetError unless the stream ends here and the process succeeded.
    void finish();
    /// Error for a fault in the last frame.
    JetError failure(const QString &detail) const;

    /// Call during long work on one frame: throws tarnwick::Cancelled if the user stops it.
    void checkCancelled();

private:
    std::span<const uchar> take(size_t length);
    bool readMore();
    JetError endedEarly() const;

    QString m_path;
    int m_patience;
    tarnwick::Progress *m_progress;
    QElapsedTimer m_sinceAsked;
    quint64 m_longestFrame;
    QProcess m_process;
    QByteArray m_buffer;
    qsizetype m_used = 0;
};

} // namespace jet
