#include "QueryDocument.h"

#include <QStringDecoder>
#include <tarnwick/FileWriter.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::JFile;

namespace {

const QString kFileIdentifier = u"Palomine Query"_s;
constexpr int kHeaderVersion = 1;
constexpr int kEditorVersion = 1;
constexpr int kRecordVersion = 3;
constexpr int kFirstVersionWithLayout = 3;

// The characters of code page 1252 from 0x80 to 0x9F; the others are those of Latin-1. Five are not defined and stay.
constexpr char16_t kCodePage1252[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                      0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

QString textOfQuery(const QByteArray &bytes)
{
    // Other programs mark their UTF-16 by its first bytes.
    if (const auto marked = QStringConverter::encodingForData(bytes); marked && *marked != QStringConverter::Utf8)
        return QStringDecoder(*marked)(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    text = QString::fromLatin1(bytes);
    for (QChar &c : text)
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0)
            c = QChar(kCodePage1252[c.unicode() - 0x80]);
    return text;
}

bool QueryDocument::isFileName(QStringView name)
{
    return name.endsWith(u".qry", Qt::CaseInsensitive);
}

void QueryDocument::serialize(JFile &file)
{
    const int version = file.version(kRecordVersion);
    file.serialize(name);
    file.serialize(sql);
    if (version >= kFirstVersionWithLayout)
        layout.serialize(file);
}

void readQueryFile(QueryDocument &document, const QString &machinePath, const tarnwick::PathRoots &roots)
{
    QueryDocument read = document;
    JFile file = JFile::openForReading(machinePath);
    if (file.startsWithMagic()) {
        file.header(kFileIdentifier, kHeaderVersion);
        file.version(kEditorVersion);
        read.serialize(file);
    } else {
        read.sql = textOfQuery(file.bytes());
    }
    read.name = tarnwick::SuitePath::fromMachine(machinePath, roots).text();
    document = std::move(read);
}

void writeQueryFile(const QueryDocument &document, const QString &machinePath)
{
    JFile file = JFile::forWriting(machinePath);
    file.header(kFileIdentifier, kHeaderVersion);
    file.version(kEditorVersion);
    QueryDocument(document).serialize(file);
    file.commit();
}

} // namespace query
