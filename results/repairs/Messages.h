#pragma once
#include <tarnwick/Prompts.h>

/// Every text of the repairs. Number 0: the message has none.
namespace results::messages {

using tarnwick::Message;

inline constexpr Message kFetchRepairs{0, u"Could not fetch repairs."};
inline constexpr Message kRemoveRepairs{0, u"Could not remove selected repairs."};
inline constexpr Message kUpdateRepairs{0, u"Could not update repairs in database."};
inline constexpr Message kRollbackRepairs{0, u"Could not rollback repair transaction."};
inline constexpr Message kSaveRepairs{0, u"Do you wish to save changes?"};
inline constexpr Message kDeleteRepairs{0, u"Are you sure you wish to delete these repairs?"};
inline constexpr Message kOneDuplicate{0, u"Found %D duplicate."};
inline constexpr Message kDuplicates{0, u"Found %D duplicates."};
inline constexpr Message kNoDuplicates{0, u"No duplicates."};
inline constexpr Message kDuplicatesExist{0, u"There are %D duplicate repairs."};
inline constexpr Message kRepairsAdded{0, u"Added %D new repairs."};
inline constexpr Message kRepairsCompleted{0, u"Completed %D repairs."};
inline constexpr Message kRepairsCancelled{0, u"Writing repairs was cancelled."};
inline constexpr Message kNoRepairs{0, u"No repairs to edit."};
inline constexpr Message kSelectRepairType{0, u"Please select a repair type."};
inline constexpr Message kTubeMissing{0, u"Tube %S does not exist."};
inline constexpr Message kMoreTubesMissing{0, u"... and %D more tubes."};
inline constexpr Message kLimitTo{0, u"Limit to %S."};
inline constexpr Message kHeatLines{
    0, u"There are %D lines of heat numbers, but %D selected repairs. Nothing was changed."};
inline constexpr Message kShownInMap{0, u"%D tubes with repairs are shown in the map."};
inline constexpr Message kSelectedOfTubes{0, u"Selected %D repairs of the tubes that are selected on the map."};
inline constexpr Message kHeatsSet{0, u"Set heat numbers of %D repairs."};
inline constexpr Message kChangedByOther{
    0, u"Another program has changed repair \"%S\" of tube %S since it was fetched.\nOverwrite it?"};
inline constexpr Message kRemovedByOther{
    0, u"Another program has deleted repair \"%S\" of tube %S since it was fetched.\nAdd it again?"};
inline constexpr Message kDeleteChangedByOther{
    0, u"Another program has changed %D of these repairs since they were fetched.\nDelete them anyway?"};
inline constexpr Message kNotDeletedAgain{
    0,
    u"%D repairs that you had deleted were changed or deleted by another program meanwhile; they were not restored as "
    u"deleted."};
inline constexpr Message kRepairCaption{0, u"Repair %S"};
inline constexpr Message kRepairPage{0, u"%5D of %5D"};
inline constexpr Message kRepairListTitle{0, u"Repair List"};
inline constexpr Message kRepairPrintHeader{0, u"REPAIRS %t"};
inline constexpr Message kRepairCounts{0, u"Total     %5d\nSelected  %5d\nScheduled %5d\nNew       %5d\nVisible   %5d"};
inline constexpr Message kDateScheduledMissing{0, u"Every repair needs a scheduled date."};

} // namespace results::messages
