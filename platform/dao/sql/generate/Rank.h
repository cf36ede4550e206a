#pragma once

namespace dao::sql::generate::rank {

/// Binding strength of the inner engine's operators, weakest first.
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
