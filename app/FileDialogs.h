#pragma once
#include <tarnwick/FileChoice.h>

#include <QHash>

class QWidget;

namespace app {

/// Asks for files and folders. Each chooser goes on in the folder where it was last used. Tests put their own in its
/// place.
class FileDialogs : public tarnwick::FileChoice
{
public:
    explicit FileDialogs(QWidget *parent = nullptr)
        : m_parent(parent)
    {
    }
    FileDialogs(const FileDialogs &) = delete;
    FileDialogs &operator=(const FileDialogs &) = delete;

    QString openFile(const tarnwick::FileChooserInfo &chooser, const QString &title,
                     const tarnwick::PathRoots &roots) override;
    QString saveFile(const tarnwick::FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots,
                     const QString &name = {}) override;
    /// Like saveFile, for a file that is to be made and must not exist yet.
    virtual QString newFile(const tarnwick::FileChooserInfo &chooser, const QString &title,
                            const tarnwick::PathRoots &roots);
    virtual QString openFolder(const QString &title, const QString &start);
    /// The path, ended by the suffix unless it ends in one of those known: a dot within a name ("R11.2") is no suffix.
    static QString withSuffix(const QString &path, const QString &suffix, const QStringList &known);
    /// Another project: choosers start in its folders.
    void forgetFolders() { m_folders.clear(); }

private:
    QString startFolder(const tarnwick::FileChooserInfo &chooser, const tarnwick::PathRoots &roots) const;
    QString remember(const tarnwick::FileChooserInfo &chooser, const QString &path);
    QString askForName(const tarnwick::FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots,
                       const QString &name, bool mayReplace);

    QWidget *m_parent;
    QHash<QString, QString> m_folders; ///< by the chooser's own folder
};

} // namespace app
