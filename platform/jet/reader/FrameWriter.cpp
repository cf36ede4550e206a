#include "FrameWriter.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

namespace jet::reader {
namespace {

constexpr int kPipeSize = 1024 * 1024;
constexpr int kReaderGone = 3;

void writeAll(const char *data, size_t size)
{
    while (size > 0) {
        const ssize_t written = write(STDOUT_FILENO, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            std::_Exit(kReaderGone);
        data += written;
        size -= size_t(written);
    }
}

} // namespace

FrameWriter::FrameWriter()
{
#ifdef F_SETPIPE_SZ
    fcntl(STDOUT_FILENO, F_SETPIPE_SZ, kPipeSize); // reduces task switches between the two processes; optional
#endif
}

void FrameWriter::frame(wire::Frame kind, const wire::WireWriter &payload)
{
    if (payload.size() > qsizetype(std::numeric_limits<quint32>::max()))
        throw std::bad_alloc();
    wire::WireWriter head;
    head.u8(quint8(kind));
    head.u32(quint32(payload.size()));
    writeAll(head.bytes().constData(), size_t(head.size()));
    writeAll(payload.bytes().constData(), size_t(payload.size()));
}

} // namespace jet::reader
