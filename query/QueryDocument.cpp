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

QString decodeText(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace

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
        read.sql = decodeText(file.bytes());
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
