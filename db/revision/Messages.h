#pragma once
#include <db/Messages.h>

/// Texts of the conversion of older databases, the import of foreign ones, and the upload of the component. Users know
/// the program by these texts: do not change them.
namespace db::messages {

// Foreign import. 1021 is db::messages::kUploadEntry.
inline constexpr Message kConvertRepairs{1022, u"Could not convert ISIS REPRDATA."};
inline constexpr Message kConvertTubes{1023, u"Could not convert ISIS TUBEDATA."};
inline constexpr Message kConvertingRecord{0, u"Converting ISIS record %5D ..."};
inline constexpr Message kConvertingRecords{0, u"Converting ISIS records ..."};
inline constexpr Message kImportDone{0, u"Done"};
inline constexpr Message kImportUndone{0, u"The import failed. The database is as it was."};
inline constexpr Message kNotImported{0, u"The foreign tables were not imported: %S"};

// Steps of the revision conversion
inline constexpr Message kModifyReport{1024, u"Could not modify 'report' table."};
inline constexpr Message kModifyLandmarks{1025, u"Could not modify 'landmarks' table."};
inline constexpr Message kModifyTubeSetEntry{1026, u"Could not modify 'tube_set_entry' table."};
inline constexpr Message kModifyTubes{1027, u"Could not modify 'tubes' table."};
inline constexpr Message kModifyPlans{1028, u"Could not modify 'plans' table."};
inline constexpr Message kDeleteDisplayFormat{1040, u"Could not delete 'display_format' table."};

// Descriptions of the steps in lists
inline constexpr Message kStepJetFile{0, u"Converted Jet database file."};
inline constexpr Message kStepDisplayFormat{0, u"Deleted display_format table."};
inline constexpr Message kStepRepairs{0, u"Created repairs table."};
inline constexpr Message kStepReport{0, u"Modified report table."};
inline constexpr Message kStepLandmarks{0, u"Modified landmarks table."};
inline constexpr Message kStepTubeSets{0, u"Modified tube_sets table."};
inline constexpr Message kStepPlans{0, u"Modified plans and plan_entry tables."};
inline constexpr Message kStepTubes{0, u"Modified tubes table."};
inline constexpr Message kStepAlias{0, u"Created %U table."};

// The request
inline constexpr Message kNotInProject{
    0, u"Database %U\nwill not be converted to rev %U format\nsince it is not in the current project."};
inline constexpr Message kAskConversion{
    0, u"Do you wish to convert:\n\n\t\"%U\"\n\nto %U format?\n\nWarning:\n\n"
       u"    Choosing NO  will cause some operations to fail.\n\n"
       u"    Choosing YES will cause modifications to the database.\n    A backup will be made to \"%U\""};
inline constexpr Message kJetBackupKept{0, u"\n    The Jet file \"%U\", an earlier backup, is kept."};
inline constexpr Message kBackingUp{0, u"Backing up \"%S\" to \"%U\" ..."};
inline constexpr Message kBackUp{1033, u"Could not back up \"%S\" to \"%U\".\nThe database is not converted."};
inline constexpr Message kLockForConversion{
    1093, u"Could not lock \"%U\" for the conversion.\nThe database is not converted."};
inline constexpr Message kLockForRefresh{1044, u"Could not lock \"%U\".\nIts views and labels are as they were."};
inline constexpr Message kConverting{0, u"Converting database ..."};
inline constexpr Message kRefreshing{0, u"Checking tables, views and labels ..."};
inline constexpr Message kConversionComplete{0, u"Conversion complete."};
inline constexpr Message kConversions{0, u"Conversions:\n%S"};
inline constexpr Message kNothingConverted{0, u"Nothing was converted:\n%S"};
inline constexpr Message kConvertedElsewhere{0, u"Another program has converted the database meanwhile."};
inline constexpr Message kLinkedDatabase{0, u"Database %U\nis a link to %U,\nwhich is not in the current project. "
                                            u"It is opened for reading only."};
inline constexpr Message kConversionCancelled{0, u"Conversion cancelled."};
inline constexpr Message kRefreshCancelled{0, u"Cancelled. Views and labels of the database are as they were."};
inline constexpr Message kImportedElsewhere{0, u"Another program has imported the foreign tables meanwhile."};
inline constexpr Message kConversionUndone{0, u"The conversion failed. The database is as it was."};

// Jet files
inline constexpr Message kReadingJet{0, u"Reading \"%S\" ..."};
inline constexpr Message kCopying{0, u"Writing \"%S\" ..."};
inline constexpr Message kConvertJet{1042, u"Could not convert \"%S\".\nIt is open as it was."};
inline constexpr Message kJetRemarks{0, u"Of \"%U\", the following could not be carried over as it is:\n\n%S"};
inline constexpr Message kJetLocked{0, u"Database %U\nwill not be converted since another program has it open."};
inline constexpr Message kJetLockFile{
    0, u"Database %U\nwill not be converted since its lock file %U\nsays that another program has it open.\n"
       u"If none has, remove the lock file and connect again."};
inline constexpr Message kMoreRemarks{0, u"    and %D more\n"};

// Upload of the component
inline constexpr Message kUploadModel{1031, u"Could not upload model."};
inline constexpr Message kAskUploadModel{0, u"Are you sure you wish to upload the component to the database?"};
inline constexpr Message kUploadingModel{0, u"Uploading model ..."};
inline constexpr Message kUploadingLandmarks{0, u"Uploading landmarks ..."};
inline constexpr Message kUploadedModel{0, u"Successfully uploaded model."};
inline constexpr Message kUploadModelCancelled{0, u"Upload of the model cancelled."};

} // namespace db::messages
