#pragma once
#include "ConversionPass.h"

namespace db {

/// Creates those of the alias tables that are missing, when the user agrees.
void createAliasTables(ConversionPass &pass);

/// Brings the alias tables that there are in line with the labels of the steam generator: a row for each label that is
/// not empty, under its number, and for legs also -1, "NONE". A table whose rows are right is left alone; nothing is
/// asked.
void fillAliasTables(ConversionPass &pass, const ellery::SteamGen &steamGen);

} // namespace db
