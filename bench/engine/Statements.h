#pragma once
#include <span>

namespace bench {

/// A statement as a user writes it, and the equivalent written by an expert for SQLite.
struct StatementPair
{
    const char *name;
    const char *access;
    const char *expert;
};

std::span<const StatementPair> statementPairs();

} // namespace bench
