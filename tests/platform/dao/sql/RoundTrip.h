#pragma once
#include <dao/values/Schema.h>

/// Parses, prints and parses again: the second text must be the first, and compile to the same inner SQL, parameters
/// and columns as the statement itself, or fail with the same number. A statement that does not parse passes.
void expectRoundTrip(const dao::SchemaView &schema, const QString &sql);
