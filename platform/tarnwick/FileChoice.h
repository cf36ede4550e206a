#pragma once
#include "Paths.h"

#include <QString>

namespace tarnwick {

/// A file chooser: its start folder, in the suite's form of paths, and the files that it lists.
struct FileChooserInfo
{
    const char16_t *folder;
    const char16_t *filter;
    const char16_t *extension;
    /// Filters of other kinds of files, separated by ";;"; null for none.
    const char16_t *moreFilters = nullptr;
};

/// Asks the user for files: by dialogs in the window, by a script in tests. Paths are those of the machine; empty if
/// the user cancels.
class FileChoice
{
public:
    virtual ~FileChoice() = default;
    virtual QString openFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots) = 0;
    /// Adds the extension of the chosen kind to a name without extension, and asks before it returns an existing file.
    /// name: the suggested file name without folder; may be empty.
    virtual QString saveFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots,
                             const QString &name = {}) = 0;
};

} // namespace tarnwick
