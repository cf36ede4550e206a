#pragma once
#include <map/Messages.h>

/// Messages of the application and its main window. Numbers are unique in the program.
namespace app::messages {

using tarnwick::Message;

// Database.
inline constexpr Message kCreateDatabase{0, u"Create database ..."};
inline constexpr Message kConnectDatabase{0, u"Connect to a database ..."};
inline constexpr Message kDisconnectDatabase{0, u"Disconnect from database"};
inline constexpr Message kAskConnectAgain{
    0, u"Database \"%S\" was closed before connecting to the other one.\n\nDo you wish to connect to it again?"};
inline constexpr Message kDatabaseFailed{0, u"The command failed in the database."};

// Map files.
inline constexpr Message kOpenedMap{0, u"Opened map \"%S\"."};
inline constexpr Message kStoredMap{0, u"Stored map \"%S\"."};
inline constexpr Message kNewMap{0, u"New map."};

// Printing and pictures; each way has its own number.
inline constexpr Message kBitmapPrinterFailed{1016, u"Could not open printer."};
inline constexpr Message kPreviewPrinterFailed{1017, u"Could not open printer."};
inline constexpr Message kPrinterFailed{1018, u"Could not open printer."};
inline constexpr Message kStorePictureFailed{0, u"Could not store the picture."};
inline constexpr Message kStoredPicture{0, u"Stored picture \"%S\"."};
inline constexpr Message kPrinted{0, u"Printed the map."};
inline constexpr Message kPrintedTo{0, u"Printed the map to \"%S\"."};

// Map and legend.
inline constexpr Message kAskSaveMap{0, u"Do you wish to save changes to the map?"};
inline constexpr Message kAskClearRecent{0, u"Are you sure?"};
inline constexpr Message kUndone{0, u"Undone: %S."};
inline constexpr Message kRedone{0, u"Redone: %S."};
inline constexpr Message kUndoneSeveral{0, u"Undone: %D changes."};
inline constexpr Message kRedoneSeveral{0, u"Redone: %D changes."};
inline constexpr Message kSymbolsDeleted{0, u"%D map symbols were deleted!"};
inline constexpr Message kNoSuchTube{0, u"There is no tube \"%S\". %S"};
inline constexpr Message kTubeFound{0, u"%S"};
inline constexpr Message kCopiedTubes{0, u"Copied %S."};
inline constexpr Message kNothingToCopy{0, u"There are no tubes to copy."};
inline constexpr Message kNoFillDialog{0, u"\"%S\" cannot be edited in this version."};

// Projects, files, programs. The suite has no numbers for them.
inline constexpr Message kProjectNotThere{0, u"\"%S\" is not a project folder."};
inline constexpr Message kProjectUnreadable{0, u"Could not open project \"%S\"."};
inline constexpr Message kDemoNotMade{0, u"Could not make the demo project."};
inline constexpr Message kComponentUnreadable{0, u"Could not read the changed component."};
inline constexpr Message kRecentNotThere{0, u"\"%S\" does not exist any more."};
inline constexpr Message kCouldNotOpenFiles{0, u"Could not open files.\n\n%S"};
inline constexpr Message kNoSuchFile{0, u"There is no file \"%S\"."};
inline constexpr Message kUnknownFile{0, u"\"%S\" is of no kind that ARVO opens."};
inline constexpr Message kNoProjectForFile{0, u"\"%S\" is not in the folder of a project.\n\nOpen a project first."};
inline constexpr Message kToolNotThere{0, u"The program \"%S\" is not in \"%S\"."};
inline constexpr Message kToolNotStarted{0, u"The program \"%S\" could not be started.\n\n%S"};
inline constexpr Message kToolLeftOpen{0,
                                       u"\"%S\" is still open. Its changes are read when the project is opened again."};
inline constexpr Message kShortcutCreated{0, u"Created the desktop shortcut \"%S\"."};
inline constexpr Message kShortcutFailed{0, u"Could not create the desktop shortcut."};

} // namespace app::messages
