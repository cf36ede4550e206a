#include "FileKinds.h"

#include <brannock/Project.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// Kind by content. Unknown if the first bytes do not tell it.
FileKind kindOfContent(const QString &path)
{
    struct Start
    {
        QByteArray bytes;
        FileKind kind;
    };
    static const Start kStarts[] = {
        {QByteArray("\x78\x56\x34\x12\x07\0\0\0MapFile", 15), FileKind::Map},
        {QByteArray("\x78\x56\x34\x12\x0e\0\0\0Palomine Query", 22), FileKind::Query},
        {"SQLite format 3", FileKind::Database},
        {QByteArray("\0\1\0\0Standard Jet DB", 19), FileKind::Database},
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return FileKind::Unknown;
    constexpr qint64 kMost = 32;
    const QByteArray bytes = file.read(kMost);
    for (const Start &start : kStarts)
        if (bytes.startsWith(start.bytes))
            return start.kind;
    return FileKind::Unknown;
}

FileKind kindOfName(const QFileInfo &file)
{
    static const QHash<QString, FileKind> kEndings{
        {u"map"_s, FileKind::Map},         {u"qry"_s, FileKind::Query},      {u"rep"_s, FileKind::Report},
        {u"pln"_s, FileKind::Plan},        {u"lst"_s, FileKind::TubeList},   {u"mdb"_s, FileKind::Database},
        {u"txt"_s, FileKind::ForeignText}, {u"csv"_s, FileKind::ForeignText}};
    if (file.fileName() == u"project.json"_s)
        return FileKind::Project;
    const FileKind kind = kEndings.value(file.suffix().toLower(), FileKind::Unknown);
    const bool isInLists = file.absoluteDir().dirName().compare(u"tube_lists"_s, Qt::CaseInsensitive) == 0;
    return kind == FileKind::ForeignText && isInLists ? FileKind::TubeList : kind;
}

} // namespace

FileKind fileKind(const QString &path)
{
    const QFileInfo file(path);
    if (file.isDir())
        return FileKind::Project;
    const FileKind kind = kindOfContent(path);
    return kind == FileKind::Unknown ? kindOfName(file) : kind;
}

QString projectOf(const QString &path)
{
    const QFileInfo file(path);
    QDir folder(file.isDir() ? file.absoluteFilePath() : file.absolutePath());
    do {
        if (brannock::Project::isProjectFolder(folder.path()))
            return QDir::cleanPath(folder.path());
    } while (folder.cdUp());
    return {};
}

} // namespace app
