#pragma once
#include <jet/wire/Facts.h>
#include <jet/wire/WireWriter.h>

namespace jet::reader {

/// Writes frames to the standard output. A reader that has gone away ends this process.
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
