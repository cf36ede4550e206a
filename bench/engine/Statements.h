#pragma once
#include <span>

namespace bench {

/// A statement as a user writes it, and what someone who knows the inner engine well writes for the same rows.
struct StatementPair
{
    const char *name;
    const char *access;
    const char *expert;
};

std::span<const StatementPair> statementPairs();

} // namespace bench
