#pragma once
#include <tarnwick/FileChoice.h>

#include <QHash>

class QWidget;

namespace app {

/// Asks for files and folders by dialogs. Each chooser starts in the folder where it was last used. Tests override it.
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
    /// As saveFile(), for a file that must not exist yet.
    virtual QString newFile(const tarnwick::FileChooserInfo &chooser, const QString &title,
                            const tarnwick::PathRoots &roots);
    virtual QString openFolder(const QString &title, const QString &start);
    /// Adds the suffix unless the path ends with a known one: a dot within a name ("R11.2") does not start a suffix.
    static QString withSuffix(const QString &path, const QString &suffix, const QStringList &known);
    /// Call after another project was opened: choosers start in its folders.
    void forgetFolders() { m_folders.clear(); }

private:
    QString startFolder(const tarnwick::FileChooserInfo &chooser, const tarnwick::PathRoots &roots) const;
    QString remember(const tarnwick::FileChooserInfo &chooser, const QString &path);
    QString askForName(const tarnwick::FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots,
                       const QString &name, bool mayReplace);

    QWidget *m_parent;
    QHash<QString, QString> m_folders; ///< last folder, by the start folder of the chooser
};

} // namespace app
