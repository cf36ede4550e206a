#include "FileDialogs.h"

#include "StateKeeper.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QUrl>
#include <tarnwick/base/Error.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

Q_LOGGING_CATEGORY(lcFileDialogs, "arvo.session", QtWarningMsg)

constexpr int kMostFolders = 8;

QStringList filters(const FileChooserInfo &chooser)
{
    QStringList all{QString::fromUtf16(chooser.filter)};
    if (chooser.moreFilters)
        all += QString::fromUtf16(chooser.moreFilters).split(u";;"_s);
    return all;
}

/// "emf" of "Metafiles (*.emf)"; empty for "All Files (*.*)".
QString suffixOf(const QString &filter)
{
    static const QRegularExpression pattern(u"\\(\\*\\.(\\w+)"_s);
    return pattern.match(filter).captured(1);
}

bool isBelow(const QString &folder, const QString &root)
{
    return folder == root || folder.startsWith(root + u'/');
}

} // namespace

QString FileDialogs::keyOf(const FileChooserInfo &chooser)
{
    return u"files/"_s + QString::fromUtf16(chooser.folder) + u'/' + QString::fromUtf16(chooser.extension);
}

FileDialogs::Record FileDialogs::record(const FileChooserInfo &chooser)
{
    const QJsonObject kept = StateKeeper::sessionFile().values()[keyOf(chooser)].toObject();
    Record record{{}, kept[u"filter"].toString()};
    for (const QJsonValue &folder : kept[u"folders"].toArray())
        record.folders.append(folder.toString());
    return record;
}

void FileDialogs::remember(const FileChooserInfo &chooser, const QFileDialog &dialog, const QString &path)
{
    QStringList folders = record(chooser).folders;
    const QString folder = QFileInfo(path).absolutePath();
    folders.removeAll(folder);
    folders.prepend(folder);
    const QJsonObject kept{
        {u"folders"_s, QJsonArray::fromStringList(folders.first(qMin(folders.size(), kMostFolders)))},
        {u"filter"_s, dialog.selectedNameFilter()}};
    try {
        StateKeeper::sessionFile().store({{keyOf(chooser), kept}});
    } catch (const FileError &error) {
        qCWarning(lcFileDialogs).noquote() << error.text(); // the next session starts in the chooser's own folder
    }
}

void FileDialogs::prepare(QFileDialog &dialog, const FileChooserInfo &chooser, const PathRoots &roots) const
{
    const Record last = record(chooser);
    const QString own = QDir::cleanPath(SuitePath(QString::fromUtf16(chooser.folder)).machinePath(roots));
    const QString root = QDir::cleanPath(roots.projectDir);
    QString start = own;
    QStringList existing;
    for (const QString &folder : last.folders) {
        if (!QFileInfo(folder).isDir())
            continue;
        // The first remembered folder decides, unless it is one of another project.
        if (existing.isEmpty() && (!isBelow(own, root) || isBelow(folder, root)))
            start = folder;
        existing.append(folder);
    }
    dialog.setNameFilters(filters(chooser));
    const QString wanted = chooser.filterIndex ? dialog.nameFilters().value(*chooser.filterIndex) : QString();
    if (!wanted.isEmpty())
        dialog.selectNameFilter(wanted);
    else if (dialog.nameFilters().contains(last.filter))
        dialog.selectNameFilter(last.filter);
    dialog.setDirectory(start);
    dialog.setHistory(existing);
    QList<QUrl> places{QUrl::fromLocalFile(own), QUrl::fromLocalFile(QDir::homePath())};
    for (const QString &folder : existing) {
        if (!places.contains(QUrl::fromLocalFile(folder)))
            places.append(QUrl::fromLocalFile(folder));
    }
    dialog.setSidebarUrls(places);
}

QStringList FileDialogs::open(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots,
                              bool isMany) const
{
    QFileDialog dialog(m_parent, title);
    dialog.setFileMode(isMany ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    prepare(dialog, chooser, roots);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    remember(chooser, dialog, dialog.selectedFiles().constFirst());
    if (chooser.filterIndex)
        *chooser.filterIndex = int(std::max<qsizetype>(0, dialog.nameFilters().indexOf(dialog.selectedNameFilter())));
    return dialog.selectedFiles();
}

QString FileDialogs::openFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots)
{
    return open(chooser, title, roots, false).value(0);
}

QStringList FileDialogs::openFiles(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots)
{
    return open(chooser, title, roots, true);
}

QString FileDialogs::saveFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots,
                              const QString &name)
{
    return askForName(chooser, title, roots, name, true);
}

QString FileDialogs::newFile(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots)
{
    return askForName(chooser, title, roots, {}, false);
}

QString FileDialogs::askForName(const FileChooserInfo &chooser, const QString &title, const PathRoots &roots,
                                const QString &name, bool mayReplace) const
{
    // If the folder cannot be made, the dialog starts elsewhere.
    QDir().mkpath(SuitePath(QString::fromUtf16(chooser.folder)).machinePath(roots));
    QFileDialog dialog(m_parent, title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // A caller that must not replace a file refuses it; the dialog's question would mislead.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !mayReplace);
    prepare(dialog, chooser, roots);
    const QString own = QString::fromUtf16(chooser.extension).mid(1);
    const auto setSuffix = [&dialog, own](const QString &filter) {
        const QString suffix = suffixOf(filter);
        dialog.setDefaultSuffix(suffix.isEmpty() ? own : suffix);
    };
    setSuffix(dialog.selectedNameFilter());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, setSuffix);
    if (!name.isEmpty())
        dialog.selectFile(name);
    QStringList known{own};
    for (const QString &filter : dialog.nameFilters())
        known.append(suffixOf(filter));
    known.removeAll(QString());
    while (dialog.exec() == QDialog::Accepted) {
        const QString chosen = dialog.selectedFiles().value(0);
        const QString path = withSuffix(chosen, dialog.defaultSuffix(), known);
        // The dialog asks about files that exist only by the name as typed.
        if (path == chosen || !mayReplace || !QFileInfo::exists(path)) {
            remember(chooser, dialog, path);
            return path;
        }
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

} // namespace tarnwick
