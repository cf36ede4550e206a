#include "XlsxCheck.h"

#include <memory>
#include <minizip/unzip.h>
#include <QFile>
#include <QXmlStreamReader>
#include <tarnwick/base/Error.h>

namespace query {

using namespace Qt::StringLiterals;

namespace {

struct CloseArchive
{
    void operator()(void *archive) const { unzClose(archive); }
};

/// The beginning and the end of a part, so that the memory does not depend on the number of rows.
struct Part
{
    QByteArray head;
    QByteArray tail;
    qint64 size = 0;
};

constexpr unsigned kPiece = 1 << 16;

/// Reads the current part to its end, which checks its check sum. Returns false if it is damaged.
bool readPart(unzFile archive, Part &part, tarnwick::ProgressLoop &loop)
{
    constexpr qsizetype kTail = 4096;
    if (unzOpenCurrentFile(archive) != UNZ_OK)
        return false;
    QByteArray piece(kPiece, Qt::Uninitialized);
    int read = 0;
    while ((read = unzReadCurrentFile(archive, piece.data(), kPiece)) > 0) {
        const QByteArray bytes = piece.first(read);
        if (part.size == 0)
            part.head = bytes;
        part.tail.append(bytes.last(qMin(kTail, bytes.size())));
        part.tail = part.tail.right(kTail);
        part.size += read;
        loop.tick(part.size);
    }
    return unzCloseCurrentFile(archive) == UNZ_OK && read == 0;
}

bool isWhole(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

bool isWholeSheet(const Part &part, qint64 rowBytes)
{
    const QByteArray begin = "<sheetData>";
    const qsizetype rows = part.head.indexOf(begin);
    const qsizetype end = part.tail.lastIndexOf("</sheetData>");
    return rows >= 0 && end >= 0 && part.tail.trimmed().endsWith("</worksheet>") &&
           part.size - (part.tail.size() - end) - (rows + begin.size()) == rowBytes;
}

bool isWholeArchive(unzFile archive, qint64 rowBytes, tarnwick::Progress *progress)
{
    tarnwick::ProgressLoop loop(progress, rowBytes, u"Checking"_s);
    bool hasSheet = false;
    int found = unzGoToFirstFile(archive);
    for (; found == UNZ_OK; found = unzGoToNextFile(archive)) {
        char name[256] = {};
        Part part;
        if (unzGetCurrentFileInfo64(archive, nullptr, name, sizeof name - 1, nullptr, 0, nullptr, 0) != UNZ_OK ||
            !readPart(archive, part, loop))
            return false;
        const bool isSheet = QByteArrayView(name) == "xl/worksheets/sheet1.xml";
        hasSheet = hasSheet || isSheet;
        if (isSheet ? !isWholeSheet(part, rowBytes) : part.size > part.head.size() || !isWhole(part.head))
            return false;
    }
    return found == UNZ_END_OF_LIST_OF_FILE && hasSheet;
}

} // namespace

void checkXlsxFile(const QString &path, qint64 rowBytes, tarnwick::Progress *progress)
{
    const std::unique_ptr<void, CloseArchive> archive(unzOpen64(QFile::encodeName(path).constData()));
    if (!archive || !isWholeArchive(archive.get(), rowBytes, progress))
        throw tarnwick::FileError(path, 0, u"could not be written completely; the disk may be full."_s);
}

} // namespace query
