#include "FileDialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace app {

namespace {

QString filters(const tarnwick::FileChooserInfo &chooser)
{
    const QString first = QString::fromUtf16(chooser.filter);
    return chooser.moreFilters ? QString(first + u";;"_s + QString::fromUtf16(chooser.moreFilters)) : first;
}

/// Suffix of a filter: "emf" for "Metafiles (*.emf)".
QString suffixOf(const QString &filter)
{
    static const QRegularExpression pattern(u"\\(\\*\\.(\\w+)"_s);
    return pattern.match(filter).captured(1);
}

} // namespace

QString FileDialogs::startFolder(const tarnwick::FileChooserInfo &chooser, const tarnwick::PathRoots &roots) const
{
    const QString own = QString::fromUtf16(chooser.folder);
    const auto last = m_folders.constFind(own);
    return last != m_folders.constEnd() ? *last : tarnwick::SuitePath(own).machinePath(roots);
}

QString FileDialogs::remember(const tarnwick::FileChooserInfo &chooser, const QString &path)
{
    if (!path.isEmpty())
        m_folders.insert(QString::fromUtf16(chooser.folder), QFileInfo(path).absolutePath());
    return path;
}

QString FileDialogs::openFile(const tarnwick::FileChooserInfo &chooser, const QString &title,
                              const tarnwick::PathRoots &roots)
{
    return remember(chooser,
                    QFileDialog::getOpenFileName(m_parent, title, startFolder(chooser, roots), filters(chooser)));
}

QString FileDialogs::saveFile(const tarnwick::FileChooserInfo &chooser, const QString &title,
                              const tarnwick::PathRoots &roots, const QString &name)
{
    return askForName(chooser, title, roots, name, true);
}

QString FileDialogs::newFile(const tarnwick::FileChooserInfo &chooser, const QString &title,
                             const tarnwick::PathRoots &roots)
{
    return askForName(chooser, title, roots, {}, false);
}

QString FileDialogs::askForName(const tarnwick::FileChooserInfo &chooser, const QString &title,
                                const tarnwick::PathRoots &roots, const QString &name, bool mayReplace)
{
    const QString folder = startFolder(chooser, roots);
    QDir().mkpath(folder); // if this fails, the chooser starts in another folder
    QFileDialog dialog(m_parent, title, folder, filters(chooser));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // The caller refuses existing files itself; a question about replacing them would be misleading.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !mayReplace);
    dialog.setDefaultSuffix(QString::fromUtf16(chooser.extension).mid(1));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&dialog](const QString &filter) { dialog.setDefaultSuffix(suffixOf(filter)); });
    if (!name.isEmpty())
        dialog.selectFile(name);
    QStringList known;
    for (const QString &filter : dialog.nameFilters())
        known.append(suffixOf(filter));
    while (dialog.exec() == QDialog::Accepted) {
        const QString chosen = dialog.selectedFiles().value(0);
        const QString path = withSuffix(chosen, dialog.defaultSuffix(), known);
        // The dialog asks before replacing a file with exactly the entered name.
        if (path == chosen || !mayReplace || !QFileInfo::exists(path))
            return remember(chooser, path);
        dialog.selectFile(QFileInfo(path).fileName());
    }
    return {};
}

QString FileDialogs::withSuffix(const QString &path, const QString &suffix, const QStringList &known)
{
    return known.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive) ? path : path + u'.' + suffix;
}

QString FileDialogs::openFolder(const QString &title, const QString &start)
{
    return QFileDialog::getExistingDirectory(m_parent, title, start);
}

} // namespace app
