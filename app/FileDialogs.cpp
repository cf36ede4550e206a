#include "FileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>

namespace app {

QString FileDialogs::startFolder(const FileChooserInfo &chooser, const tarnwick::PathRoots &roots) const
{
    const auto last = m_folders.constFind(QString::fromUtf16(chooser.filter));
    return last != m_folders.constEnd() ? *last
                                        : tarnwick::SuitePath(QString::fromUtf16(chooser.folder)).machinePath(roots);
}

QString FileDialogs::remember(const FileChooserInfo &chooser, const QString &path)
{
    if (!path.isEmpty())
        m_folders.insert(QString::fromUtf16(chooser.filter), QFileInfo(path).absolutePath());
    return path;
}

QString FileDialogs::openFile(const FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots)
{
    return remember(chooser, QFileDialog::getOpenFileName(m_parent, title, startFolder(chooser, roots),
                                                          QString::fromUtf16(chooser.filter)));
}

QString FileDialogs::saveFile(const FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots)
{
    QFileDialog dialog(m_parent, title, startFolder(chooser, roots), QString::fromUtf16(chooser.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromUtf16(chooser.extension).mid(1));
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return remember(chooser, dialog.selectedFiles().value(0));
}

QString FileDialogs::openFolder(const QString &title, const QString &start)
{
    return QFileDialog::getExistingDirectory(m_parent, title, start);
}

QString FileDialogs::newFile(const FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots)
{
    QFileDialog dialog(m_parent, title, startFolder(chooser, roots), QString::fromUtf16(chooser.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // What makes the file says itself that there is one; a question whether to replace it would mislead.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix(QString::fromUtf16(chooser.extension).mid(1));
    return dialog.exec() == QDialog::Accepted ? remember(chooser, dialog.selectedFiles().value(0)) : QString();
}

} // namespace app
