#pragma once
#include <tarnwick/Prompts.h>

/// Every text of plans, tube sets and tube lists. Numbers are unique in the program; 0: the message has none.
namespace plans::messages {

using tarnwick::Message;

// Plans in the database
inline constexpr Message kCheckPlanExists{1043, u"Could not check for existing plan."};
inline constexpr Message kPlanExists{0, u"A Plan %S already exists\nHit OK to replace it with the current plan.\n"
                                        u"Hit CANCEL to stop upload."};
inline constexpr Message kUploadPlanCancelled{0, u"Upload cancelled."};
inline constexpr Message kPlanUploaded{0, u"Successfully uploaded \"%S\" in %.2f sec."};
inline constexpr Message kUploadPlan{0, u"Could not upload plan '%S'."};
inline constexpr Message kPlanFetched{0, u"Done fetching plan \"%S\"."};
inline constexpr Message kFetchPlan{0, u"Could not fetch plan '%S'."};
inline constexpr Message kAskDeletePlan{0, u"Are you sure you wish to\ndelete this plan from the database?"};
inline constexpr Message kPlanDeleted{0, u"Plan was successfully deleted."};
inline constexpr Message kDeletePlan{1046, u"Could not delete plan '%S'."};
inline constexpr Message kListPlans{0, u"Could not list the plans."};
inline constexpr Message kUploadingEntries{0, u"Uploading entries"};

// The plan of the dialog
inline constexpr Message kSelectedDuplicates{1047, u"%D duplicate tubes were not added to the plan."};
inline constexpr Message kSymbolDuplicates{1048, u"%D duplicate tubes were not added to the plan."};
inline constexpr Message kPlanNotStored{1049, u"Plan was not stored to file \"%S\"."};
inline constexpr Message kPlanStored{0, u"Stored \"%S\"."};
inline constexpr Message kOpenPlan{0, u"Could not open plan file \"%S\"."};
inline constexpr Message kPlanOpened{0, u"Opened \"%S\"."};
inline constexpr Message kEnterValid{0, u"Please enter a valid:\n%S"};
inline constexpr Message kPlanChanged{0, u"Plan \"%S\" has changed.\nDo you wish to save changes?"};
inline constexpr Message kFilePlanCaption{0, u"File Plan - %S"};
inline constexpr Message kDatabasePlanCaption{0, u"ARVO Plan - %S"};
inline constexpr Message kAskClearTubes{0, u"Are you sure you wish to clear the tubes of the plan?"};
inline constexpr Message kAskClearPlan{0, u"Are you sure you wish to clear the whole plan?"};
inline constexpr Message kNotALabel{0, u"\"%S\" is no %S of the component."};
inline constexpr Message kPlanTubesMissing{0, u"%D tubes of the plan do not exist in the current component."};

// Is the plan analyzed?
inline constexpr Message kPercent{0, u"%d%%"};
inline constexpr Message kPlanChecked{0, u"Successfully checked if plan is done in %.2f sec."};
inline constexpr Message kCheckPlan{0, u"Could not check if plan is done."};
inline constexpr Message kCheckPlanCancelled{0, u"The check was cancelled."};
inline constexpr Message kCheckingPlan{0, u"Looking for results"};
inline constexpr Message kOutageCounts{0, u"Tubes of the plan with results, by outage:\n\n%S"};
inline constexpr Message kOutageLine{0, u"\t%S\t%D of %D\n"};
inline constexpr Message kNoResults{0, u"The database holds no results."};
inline constexpr Message kNoResultsOf{0, u"The database holds no results of outage \"%S\"."};
inline constexpr Message kCompareOutages{0, u"Could not compare the plan with the results."};

// Tube sets in the database
inline constexpr Message kAskReplaceSet{0, u"Replace existing tube set?"};
inline constexpr Message kAreYouSure{0, u"Are you sure?"};
inline constexpr Message kUploadSetCancelled{0, u"Upload cancelled"};
inline constexpr Message kCheckSetExists{0, u"Could not check for existing Cals."};
inline constexpr Message kUploadingSet{0, u"Uploading \"%S\" ..."};
inline constexpr Message kSetUploaded{0, u"Upload successful."};
inline constexpr Message kUploadSet{0, u"Could not upload tube set '%S'."};
inline constexpr Message kSetFetched{0, u"Fetch successful."};
inline constexpr Message kFetchSet{0, u"Fetch \"%S\" failed."};
inline constexpr Message kAskDeleteSet{0, u"Are you sure you wish to\ndelete this tube set from the database?"};
inline constexpr Message kSetDeleted{0, u"List deleted."};
inline constexpr Message kDeleteSet{0, u"Could not delete tube set '%S'."};
inline constexpr Message kListSets{0, u"Could not list the tube sets."};
inline constexpr Message kFetchCancelled{0, u"Fetch cancelled."};

// List files
inline constexpr Message kStoreList{0, u"Could not store tube list to file."};
inline constexpr Message kListStored{0, u"Stored \"%S\"."};
inline constexpr Message kReadList{0, u"Could not read tube list \"%S\"."};
inline constexpr Message kListOpened{0, u"Opened \"%S\"."};
inline constexpr Message kListErrors{
    0, u"Could not parse %d line(s).\n\nSelect \"Util | View Parsed File\" menu to see the errors."};
inline constexpr Message kLinesCut{0, u"%D lines are longer than %d characters; the rest of them was not read."};
inline constexpr Message kUnreadNumbers{
    0, u"The heading says that the lines begin with entry numbers, but they were read without. In a file that does not "
       u"end in .lst, set \"File Has Entry Numbers\" (--entry-numbers)."};
inline constexpr Message kLastLineOpen{0,
                                       u"The last line does not end with a line end. The file may be cut off there."};

// The list of the dialog
inline constexpr Message kListChanged{0, u"List \"%S\" has changed.\nDo you wish to save changes?"};
inline constexpr Message kFileListCaption{0, u"File List - %S"};
inline constexpr Message kDatabaseListCaption{0, u"ARVO List - %S"};
inline constexpr Message kAskClearList{0, u"Are you sure you wish to clear the list?"};
inline constexpr Message kSorting{0, u"Sort list ..."};
inline constexpr Message kSorted{0, u"Done sorting list."};
inline constexpr Message kOpenFileFirst{0, u"Open a file first."};
inline constexpr Message kNoEditor{0, u"No program of the desktop opens \"%S\"."};
inline constexpr Message kListIsNoFile{0, u"List is not a file."};

// Pasted tubes, and sets of tubes
inline constexpr Message kTubesPasted{0, u"Added %D tubes."};
inline constexpr Message kTubesPastedAgain{0, u"Added %D tubes; %D were there already."};
inline constexpr Message kNotUnderstood{0, u"%S %D lines were not understood:\n%S"};
inline constexpr Message kNotUnderstoodLine{0, u"\tline %D: %S\n"};
inline constexpr Message kMoreNotUnderstood{0, u"\t... and %D more\n"};
inline constexpr Message kReadSource{0, u"Could not read the tubes of \"%S\"."};
inline constexpr Message kSourceErrors{0, u"%D lines of \"%S\" name no tube of the component. They are left out."};
inline constexpr Message kTubesCombined{0, u"%D tubes before, %D now."};

} // namespace plans::messages
