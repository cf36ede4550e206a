#pragma once

namespace dao {

/// Consulted about ten times a second while a statement runs. An exception that it throws stops the statement like
/// cancelled(), and is thrown to the caller of the statement in place of DaoCancelled.
class Progress
{
public:
    virtual ~Progress() = default;
    /// True stops the statement: it is undone and DaoCancelled is thrown.
    virtual bool cancelled() = 0;
    /// Told as often while the engine waits for another program that has the file locked. It goes on when that one is
    /// done, unless cancelled() says to stop. Without a progress object nothing waits for longer than a second.
    virtual void waiting() {}
};

} // namespace dao
