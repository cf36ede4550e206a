#pragma once
#include "ConversionPass.h"

/// The steps of the revision conversion that change tables. Databases do not store their revision, so each step checks
/// the structure it finds. A step with nothing to do neither asks nor writes. Throws the engine's exception if a change
/// fails.
namespace db {

/// Removes the table of display formats; they are files now.
void deleteDisplayFormat(ConversionPass &pass);
void createRepairs(ConversionPass &pass);
/// Adds util1, util2 and plan to report.
void convertReport(ConversionPass &pass);
/// Landmarks were numbered in one set; now each has a name within one of several sets.
void convertLandmarks(ConversionPass &pass);
/// Adds numbers, colours and symbols to the entries of tube sets.
void convertTubeSetEntry(ConversionPass &pass);
/// Adds the map position to the tubes.
void convertTubes(ConversionPass &pass);

} // namespace db
