#pragma once

namespace dao {

/// Consulted about ten times a second while a statement runs.
class Progress
{
public:
    virtual ~Progress() = default;
    /// True stops the statement: it is undone and DaoCancelled is thrown.
    virtual bool cancelled() = 0;
};

} // namespace dao
