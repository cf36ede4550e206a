#pragma once
#include <tarnwick/Prompts.h>

/// Every message of the project database with its number. Numbers are unique in the program: 1005 to 1015 and 1021 to
/// 1059 belong here. Users and support know the program by these texts: do not change them.
namespace db::messages {

using tarnwick::Message;

// Schema
inline constexpr Message kCreateReport{1005, u"Could not create 'report' table."};
inline constexpr Message kCreateRepairs{1006, u"Could not create 'repairs' table."};
inline constexpr Message kCreateLandmarks{1007, u"Could not create 'landmarks' table."};
inline constexpr Message kCreatePlans{1008, u"Could not create 'plans' table."};
inline constexpr Message kCreatePlanEntry{1009, u"Could not create 'plan_entry' table."};
inline constexpr Message kCreateTubeSets{1010, u"Could not create 'tube_sets' table."};
inline constexpr Message kCreateTubeSetEntry{1011, u"Could not create 'tube_set_entry' table."};
inline constexpr Message kCreateTubes{1012, u"Could not create 'tubes' table."};
inline constexpr Message kCreateRelations{1013, u"Could not create relations."};
inline constexpr Message kCreateAlias{1014, u"Could not create '%s' alias table."};

// Creation and connection
inline constexpr Message kCreateDatabase{1015, u"Could not create database."};
inline constexpr Message kModifyAlias{1029, u"Could not modify '%S' table."};
inline constexpr Message kCreateView{1030, u"Could not create view '%U'."};
inline constexpr Message kConnectDatabase{1032, u"Could not connect to database."};
inline constexpr Message kDisconnectDatabase{1034, u"Could not disconnect database."};
inline constexpr Message kDatabaseName{1035, u"Could not get database name."};
inline constexpr Message kCloseDatabase{1036, u"Could not close database."};
inline constexpr Message kCreatingStatus{0, u"Creating database \"%S\"."};
inline constexpr Message kCreatedStatus{0, u"Created database \"%S\"."};
inline constexpr Message kConnectedStatus{0, u"Connected to \"%S\"."};
inline constexpr Message kConnectCancelled{0, u"Connecting was cancelled."};

// Rows of 'report'
inline constexpr Message kUploadEntry{1021, u"Could not upload report entry."};

// Damage
inline constexpr Message kCheckDatabase{0, u"Could not look for damage in the database."};
inline constexpr Message kDatabaseDamaged{0, u"The database \"%S\" is damaged:\n\n%S\n%S"};
inline constexpr Message kReadOnlyAsDamaged{0, u"It is open for reading only. Restore a backup of it."};
inline constexpr Message kNotConvertedAsDamaged{0, u"It is not converted. Restore a backup of it."};
inline constexpr Message kDamageLine{0, u"    %S\n"};
inline constexpr Message kMoreDamage{0, u"    and %D more\n"};
inline constexpr Message kCheckingDatabase{0, u"Looking for damage ..."};

// Access
inline constexpr Message kConnectFirst{1053, u"Connect to a database first."};
inline constexpr Message kBeginTransaction{1054, u"Could not begin transaction."};
inline constexpr Message kCommitTransaction{1055, u"Could not commit transaction."};
inline constexpr Message kRollbackTransaction{1056, u"Could not rollback transaction."};
inline constexpr Message kParseDateTime{1057, u"Could not parse date/time."};
inline constexpr Message kParseCurrency{1058, u"Could not parse currency text '%S'"};
inline constexpr Message kParseDate{1059, u"Could not parse date text '%S'"};
inline constexpr Message kFetchListNames{1061, u"Could not fetch list names."};

} // namespace db::messages
