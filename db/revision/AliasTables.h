#pragma once
#include "ConversionPass.h"

#include <db/Schema.h>

namespace db {

/// Those of the alias tables that are missing and that the user agrees to create.
QList<const AliasSpec *> requestAliasTables(ConversionPass &pass);
/// Creates them, each by itself.
void createAliasTables(ConversionPass &pass, const QList<const AliasSpec *> &requested);

} // namespace db
