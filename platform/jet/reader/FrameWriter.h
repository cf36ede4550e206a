#pragma once
#include <jet/wire/Facts.h>
#include <jet/wire/WireWriter.h>

namespace jet::reader {

/// Writes frames to standard output. If the receiver has ended, this process ends too.
class FrameWriter
{
public:
    FrameWriter();

    void frame(wire::Frame kind, const wire::WireWriter &payload);
    template <typename Facts>
    void send(wire::Frame kind, const Facts &facts)
    {
        wire::WireWriter payload;
        put(payload, facts);
        frame(kind, payload);
    }
};

} // namespace jet::reader
