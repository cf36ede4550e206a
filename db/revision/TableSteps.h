#pragma once
#include "ConversionPass.h"

/// The steps of the revision conversion that change tables, each by itself: what is to be done follows from the
/// structure that is found, as no database says of which revision it is. A step that finds nothing to do neither asks
/// nor writes. What cannot be done is thrown as the engine's exception.
namespace db {

/// Display formats were kept in a table once; they are files now.
void deleteDisplayFormat(ConversionPass &pass);
void createRepairs(ConversionPass &pass);
/// Adds util1, util2 and plan to report.
void convertReport(ConversionPass &pass);
/// Landmarks were numbered in one set; now they are named within several.
void convertLandmarks(ConversionPass &pass);
/// The entries of tube sets get numbers, colours and symbols.
void convertTubeSetEntry(ConversionPass &pass);
/// Tubes get their place on the map.
void convertTubes(ConversionPass &pass);

} // namespace db
