#include "ReaderProcess.h"

#include "Messages.h"

#include <csignal>
#include <QFileInfo>
#include <tarnwick/base/Installation.h>

using namespace Qt::StringLiterals;

namespace jet {
namespace {

constexpr int kAskEvery = 100;     // milliseconds
constexpr int kStartTime = 10'000; // milliseconds
constexpr int kEndTime = 5'000;    // milliseconds
constexpr qsizetype kCompactAt = 1 << 20;
// A frame holds one row, which cannot be larger than its file: twice that for text, plus room for schema and headers.
constexpr quint64 kFrameRoom = 16 * 1024 * 1024;
constexpr quint64 kFramePerByte = 4;

QString programPath(const QString &asked)
{
    if (!asked.isEmpty())
        return asked;
    const QString named = qEnvironmentVariable("ARVO_JET_READER");
    return named.isEmpty() ? tarnwick::Installation::helperProgram(u"arvo-jet-reader"_s) : named;
}

} // namespace

ReaderProcess::ReaderProcess(const QString &path, const ReadOptions &options, bool schemaOnly,
                             tarnwick::Progress *progress)
    : m_path(path)
    , m_patience(options.patience)
    , m_progress(progress)
    , m_longestFrame(kFrameRoom + kFramePerByte * quint64(QFileInfo(path).size()))
{
    const QString program = programPath(options.program);
    QStringList arguments;
    if (schemaOnly)
        arguments.append(u"--schema"_s);
    arguments.append(QFileInfo(path).absoluteFilePath());
    m_process.setStandardInputFile(QProcess::nullDevice());
    // Standard error holds nothing for users. It is discarded, since an endless output there would keep
    // waitForReadyRead() from returning.
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(program, arguments, QIODevice::ReadOnly);
    if (!m_process.waitForStarted(kStartTime))
        throw errorFor(path, JetError::Reason::ReaderMissing, program);
}

ReaderProcess::~ReaderProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(kEndTime);
    }
}

void ReaderProcess::checkCancelled()
{
    if (!m_progress || (m_sinceAsked.isValid() && m_sinceAsked.elapsed() < kAskEvery))
        return;
    m_sinceAsked.start();
    if (m_progress->cancelled())
        throw tarnwick::Cancelled();
}

bool ReaderProcess::readMore()
{
    QElapsedTimer waiting;
    waiting.start();
    while (m_process.bytesAvailable() == 0) {
        checkCancelled();
        const bool running = m_process.state() != QProcess::NotRunning;
        const bool ready = running && m_process.waitForReadyRead(kAskEvery);
        if (!ready && !running && m_process.bytesAvailable() == 0)
            return false;
        if (waiting.elapsed() > qint64(m_patience) * 1000)
            throw errorFor(m_path, JetError::Reason::ReaderStuck, QString::number(m_patience));
    }
    const qint64 ready = m_process.bytesAvailable();
    const qsizetype at = m_buffer.size();
    m_buffer.resize(at + ready);
    const qint64 got = m_process.read(m_buffer.data() + at, ready);
    m_buffer.resize(at + qMax<qint64>(got, 0));
    return got > 0;
}

std::span<const uchar> ReaderProcess::take(size_t length)
{
    while (size_t(m_buffer.size() - m_used) < length) {
        if (!readMore())
            throw endedEarly();
    }
    const auto *from = reinterpret_cast<const uchar *>(m_buffer.constData()) + m_used;
    m_used += qsizetype(length);
    return {from, length};
}

ReaderProcess::Frame ReaderProcess::next()
{
    checkCancelled();
    if (m_used == m_buffer.size() || m_used > kCompactAt) {
        m_buffer.remove(0, m_used);
        m_used = 0;
    }
    wire::WireReader head(take(wire::kFrameHeader));
    const auto kind = wire::Frame(head.u8());
    const quint32 length = head.u32();
    if (kind < wire::Frame::File || kind > wire::Frame::End || length > m_longestFrame)
        throw failure(u"a frame of its stream is invalid"_s);
    return {kind, take(length)};
}

void ReaderProcess::finish()
{
    if (m_used != m_buffer.size() || readMore())
        throw failure(u"its stream does not end where it should"_s);
    if (m_process.exitStatus() != QProcess::NormalExit || m_process.exitCode() != 0)
        throw endedEarly();
}

JetError ReaderProcess::endedEarly() const
{
    if (m_process.exitStatus() == QProcess::CrashExit) {
        const int signal = m_process.exitCode();
        if (signal == SIGXCPU || signal == SIGKILL)
            return failure(u"it used up its processor time"_s);
        return failure(u"it was ended by signal "_s + QString::number(signal));
    }
    if (m_process.exitCode() == wire::kNotConfined)
        return failure(u"the system does not allow it to give up its rights"_s);
    return failure(u"its stream broke off, exit code "_s + QString::number(m_process.exitCode()));
}

JetError ReaderProcess::failure(const QString &detail) const
{
    return errorFor(m_path, JetError::Reason::ReaderFailed, detail);
}

} // namespace jet
