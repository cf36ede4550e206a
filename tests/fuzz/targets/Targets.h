#pragma once
#include <cstdint>
#include <span>
#include <stdexcept>

/// What must hold of any bytes whatever. The functions are the same for the fuzzer, which makes up bytes, and for the
/// test that replays those which were worth keeping.
namespace fuzz {

using Bytes = std::span<const uint8_t>;

/// Thrown where the engine did what it must not do.
class Finding : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A text as a statement: lexer, parser, printer and parser again, binder and generator over a small schema. What
/// compiles must be accepted by the inner engine, and read to its end with errors of our own at most; the printed text
/// must compile to the same. Bytes are UTF-8, or UTF-16 behind a byte 255, or decisions of a StatementMaker behind a
/// 254.
void compileText(Bytes bytes);

/// A database file with bytes exchanged, or with rows of its catalog changed: it is refused or read, with errors of our
/// own at most.
void openCatalog(Bytes bytes);

/// A call of an expression function with values of any kind: a value, or an error of our own, in good time. Besides,
/// what must hold of dates, numbers and patterns as texts.
void callFunction(Bytes bytes);

} // namespace fuzz
