#pragma once
#include <tarnwick/Prompts.h>

/// What the application and its main window say. Numbers are unique in the program.
namespace app::messages {

using tarnwick::Message;

// Database and component.
inline constexpr Message kUploadModelFailed{1031, u"Could not upload model."};
inline constexpr Message kCreateDatabase{0, u"Create database ..."};
inline constexpr Message kConnectDatabase{0, u"Connect to a database ..."};
inline constexpr Message kDisconnectDatabase{0, u"Disconnect from database"};
inline constexpr Message kAskUploadModel{0, u"Are you sure you wish to upload the component to the database?"};
inline constexpr Message kUploadingModel{0, u"Uploading model ..."};
inline constexpr Message kUploadingLandmarks{0, u"Uploading landmarks ..."};
inline constexpr Message kUploadedModel{0, u"Successfully uploaded model."};

// Map and legend.
inline constexpr Message kAskDeleteAllEntries{0, u"Are you sure you want to delete all entries?"};
inline constexpr Message kAskSaveMap{0, u"Do you wish to save changes to the map?"};
inline constexpr Message kAskClearRecent{0, u"Are you sure?"};
inline constexpr Message kSymbolsDeleted{0, u"%D map symbols were deleted!"};
inline constexpr Message kNoSuchTube{0, u"There is no tube \"%S\"."};
inline constexpr Message kTubeFound{0, u"%S"};
inline constexpr Message kNoFillDialog{0, u"\"%S\" cannot be edited in this version."};
inline constexpr Message kSelected{0, u"%D tubes selected."};

// Projects, files, programs. These have no numbers of the suite.
inline constexpr Message kProjectNotThere{0, u"\"%S\" is not a project folder."};
inline constexpr Message kProjectUnreadable{0, u"Could not open project \"%S\".\n\n%S"};
inline constexpr Message kRecentNotThere{0, u"\"%S\" is not there any more."};
inline constexpr Message kToolNotThere{0, u"The program \"%S\" is not in \"%S\"."};
inline constexpr Message kToolNotStarted{0, u"The program \"%S\" could not be started.\n\n%S"};
inline constexpr Message kShortcutCreated{0, u"Created the desktop shortcut \"%S\"."};
inline constexpr Message kShortcutFailed{0, u"Could not create the desktop shortcut.\n\n%S"};

} // namespace app::messages
