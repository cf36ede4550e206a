#pragma once
#include <dao/values/Schema.h>

/// Parses, prints, parses and prints again: both prints must be equal, and compile to the same SQL, parameters and
/// columns as the statement, or fail with the same number. A statement that does not parse passes.
void expectRoundTrip(const dao::SchemaView &schema, const QString &sql);
