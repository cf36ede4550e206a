#pragma once
#include <tarnwick/FileChoice.h>

#include <QHash>

class QFileDialog;
class QWidget;

namespace tarnwick {

/// Asks for files with the desktop's dialogs. Each chooser remembers its last folders and its last filter between
/// sessions, and offers the folders in the dialog. It starts in the last one; in a folder of another project it does
/// not start, but in its own folder of the open project.
class FileDialogs : public FileChoice
{
public:
    explicit FileDialogs(QWidget *parent = nullptr)
        : m_parent(parent)
    {
    }
    FileDialogs(const FileDialogs &) = delete;
    FileDialogs &operator=(const FileDialogs &) = delete;

    QString openFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots) override;
    QStringList openFiles(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots) override;
    QString saveFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots,
                     const QString &name = {}) override;
    /// Like saveFile(), but without the question: the caller refuses a file that exists.
    virtual QString newFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots);
    virtual QString openFolder(const QString &title, const QString &start);

    /// The path with the suffix added, unless it ends in one of the known suffixes. A dot within a name ("R11.2") does
    /// not begin a suffix.
    static QString withSuffix(const QString &path, const QString &suffix, const QStringList &known);

private:
    /// What a chooser remembers.
    struct Record
    {
        QStringList folders; ///< machine paths, the last used first
        QString filter;
    };
    static QString keyOf(const FileChooserInfo &chooser);
    static Record record(const FileChooserInfo &chooser);
    static void remember(const FileChooserInfo &chooser, const QFileDialog &dialog, const QString &path);
    void prepare(QFileDialog &dialog, const FileChooserInfo &chooser, const PathRoots &roots) const;
    QStringList open(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots, bool isMany) const;
    QString askForName(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots,
                       const QString &name, bool mayReplace) const;

    QWidget *m_parent;
};

} // namespace tarnwick
