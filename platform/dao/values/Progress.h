#pragma once

namespace dao {

/// Called about ten times a second while a statement runs.
class Progress
{
public:
    virtual ~Progress() = default;
    /// Returning true cancels the statement: it is undone and DaoCancelled is thrown.
    virtual bool cancelled() = 0;
    /// Called equally often while the engine waits for another program that has locked the file. The statement
    /// continues when the lock is released, unless cancelled() returns true. Without a progress object the engine waits
    /// at most 1 s.
    virtual void waiting() {}
};

} // namespace dao
