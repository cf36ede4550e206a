#pragma once

namespace dao::sql::generate::rank {

/// Precedence of SQLite's operators, lowest first.
enum Rank : int {
    Lowest,
    Or,
    And,
    Not,
    Equality,
    Relation,
    Additive,
    Multiplicative,
    Concatenation,
    Collation,
    Sign,
    Primary
};

} // namespace dao::sql::generate::rank
