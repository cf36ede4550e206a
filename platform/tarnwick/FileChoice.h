#pragma once
#include "Paths.h"

namespace tarnwick {

/// How a file is chosen: where the chooser starts, and what it lists.
struct FileChooserInfo
{
    const char16_t *folder; ///< in the suite's form of paths; the chooser's folder and filter are remembered by it
    const char16_t *filter;
    const char16_t *extension; ///< with its dot; added to a name without a known one
    /// Filters of further kinds of files, separated by ";;"; null for none.
    const char16_t *moreFilters = nullptr;
    /// Number of the filter, from 0, that is selected at first; receives that of the chosen file. Null: the one that
    /// was used last.
    int *filterIndex = nullptr;
};

/// Asks the user for files. Windows use FileDialogs, tests a script. Paths are machine paths; empty if nothing was
/// chosen.
class FileChoice
{
public:
    virtual ~FileChoice() = default;
    virtual QString openFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots) = 0;
    /// Any number of files, in the order in which the dialog lists them.
    virtual QStringList openFiles(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots) = 0;
    /// Adds the extension of the chosen kind to a name without one, and asks before an existing file is chosen. name:
    /// offered to the user, without a folder; may be empty.
    virtual QString saveFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots,
                             const QString &name = {}) = 0;
};

} // namespace tarnwick
