#pragma once
#include <app/logic/FileChoosers.h>

#include <tarnwick/Paths.h>

#include <QHash>

class QWidget;

namespace app {

/// Asks for files and folders. Each chooser goes on in the folder where it was last used. Tests put their own in its
/// place.
class FileDialogs
{
public:
    explicit FileDialogs(QWidget *parent = nullptr)
        : m_parent(parent)
    {
    }
    virtual ~FileDialogs() = default;
    FileDialogs(const FileDialogs &) = delete;
    FileDialogs &operator=(const FileDialogs &) = delete;

    // Paths of the machine; empty when nothing was chosen.
    virtual QString openFile(const FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots);
    /// Adds the chooser's extension to a name without one, and asks before an existing file is chosen.
    virtual QString saveFile(const FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots);
    virtual QString openFolder(const QString &title, const QString &start);
    /// For a file that is to be made and must not exist yet. Adds the extension to a name without one.
    virtual QString newFile(const FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots);
    /// Another project: choosers start in its folders.
    void forgetFolders() { m_folders.clear(); }

private:
    QString startFolder(const FileChooserInfo &chooser, const tarnwick::PathRoots &roots) const;
    QString remember(const FileChooserInfo &chooser, const QString &path);

    QWidget *m_parent;
    QHash<QString, QString> m_folders; ///< by filter
};

} // namespace app
