#pragma once
#include "ConversionPass.h"

#include <db/Schema.h>

namespace db {

/// Requests the creation of missing alias tables. Returns the ones that the user agrees to create.
QList<const AliasSpec *> requestAliasTables(ConversionPass &pass);
/// Creates each table; a failure does not affect the others.
void createAliasTables(ConversionPass &pass, const QList<const AliasSpec *> &requested);

} // namespace db
