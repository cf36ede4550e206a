#include "JFile.h"

#include "FileWriter.h"

#include <bit>
#include <QStringDecoder>
#include <QtEndian>
#include <type_traits>

namespace tarnwick {

using namespace Qt::StringLiterals;

JFileError::JFileError(const QString &file, qint64 offset, const QString &reason)
    : FileError(file, 0, u"%1 (at byte %2)"_s.arg(reason, QString::number(offset)))
    , m_offset(offset)
{
}

JFile::JFile(const QString &name, const QByteArray &bytes, bool reading)
    : m_name(name)
    , m_bytes(bytes)
    , m_reading(reading)
{
}

JFile JFile::openForReading(const QString &path)
{
    return JFile(path, readFile(path), true);
}

JFile JFile::fromBytes(const QByteArray &bytes, const QString &name)
{
    return JFile(name, bytes, true);
}

JFile JFile::forWriting(const QString &path)
{
    return JFile(path, {}, false);
}

void JFile::fail(const QString &reason) const
{
    throw JFileError(m_name, m_offset, reason);
}

void JFile::need(qint64 bytes) const
{
    if (bytes > bytesLeft())
        fail(u"the file ends too early: %1 bytes are needed, %2 are left"_s.arg(bytes).arg(bytesLeft()));
}

template <typename T>
void JFile::plain(T &value)
{
    if (m_reading) {
        need(sizeof(T));
        value = qFromLittleEndian<T>(m_bytes.constData() + m_offset);
    } else {
        char buffer[sizeof(T)];
        qToLittleEndian<T>(value, buffer);
        m_bytes.append(buffer, sizeof(T));
    }
    m_offset += sizeof(T);
}

void JFile::serialize(qint32 &value)
{
    plain(value);
}
void JFile::serialize(quint32 &value)
{
    plain(value);
}
void JFile::serialize(qint16 &value)
{
    plain(value);
}
void JFile::serialize(quint16 &value)
{
    plain(value);
}
void JFile::serialize(quint8 &value)
{
    plain(value);
}
void JFile::serialize(double &value)
{
    plain(value);
}
void JFile::serialize(float &value)
{
    plain(value);
}

void JFile::serialize(char16_t &value)
{
    quint16 unit = value;
    plain(unit);
    value = unit;
}

void JFile::serialize(ColourRef &value)
{
    quint32 number = value.value();
    plain(number);
    value = ColourRef(number);
}

void JFile::serialize(bool &value)
{
    qint32 number = value ? 1 : 0;
    plain(number);
    value = number != 0;
}

void JFile::serializeByte(bool &value)
{
    quint8 number = value ? 1 : 0;
    plain(number);
    value = number != 0;
}

void JFile::serialize(QString &value)
{
    if (!m_reading) {
        const QByteArray utf8 = value.toUtf8();
        auto size = quint32(utf8.size());
        plain(size);
        m_bytes.append(utf8);
        m_offset += utf8.size();
        return;
    }
    quint32 size = 0;
    plain(size);
    need(size);
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decode(QByteArrayView(m_bytes).sliced(m_offset, size));
    if (decode.hasError())
        fail(u"the text here is not UTF-8"_s);
    value = std::move(text);
    m_offset += size;
}

void JFile::serialize(QStringList &value)
{
    list(value, sizeof(quint32), [](JFile &file, QString &text) { file.serialize(text); });
}

void JFile::serialize(QList<qint32> &value)
{
    list(value, sizeof(qint32), [](JFile &file, qint32 &number) { file.serialize(number); });
}

int JFile::version(int newest)
{
    qint32 number = newest;
    const qint64 place = m_offset;
    plain(number);
    if (number < 1 || number > newest) {
        m_offset = place;
        if (number < 1)
            fail(u"%1 is not a record version"_s.arg(number));
        fail(u"the record is of version %1, newer than the newest known, %2"_s.arg(number).arg(newest));
    }
    return number;
}

qint32 JFile::count(qint64 elements, int minimumBytesEach)
{
    Q_ASSERT(minimumBytesEach > 0);
    if (!m_reading && elements > std::numeric_limits<qint32>::max())
        fail(u"a list of %1 elements is too long for the file"_s.arg(elements));
    auto number = qint32(elements);
    const qint64 place = m_offset;
    plain(number);
    if (m_reading && (number < 0 || qint64(number) * minimumBytesEach > bytesLeft())) {
        const qint64 left = bytesLeft();
        m_offset = place;
        fail(u"a count of %1 is more than the %2 bytes left can hold"_s.arg(number).arg(left));
    }
    return number;
}

bool JFile::startsWithMagic() const
{
    return m_bytes.size() >= qsizetype(sizeof(kMagic)) && qFromLittleEndian<quint32>(m_bytes.constData()) == kMagic;
}

int JFile::header(const QString &identifier, int version)
{
    quint32 magic = kMagic;
    const qint64 start = m_offset;
    plain(magic);
    if (magic != kMagic) {
        m_offset = start;
        fail(u"this is not a record file"_s);
    }
    QString found = identifier;
    const qint64 identifierPlace = m_offset;
    serialize(found);
    if (found != identifier) {
        m_offset = identifierPlace;
        fail(u"this is a file of '%1', not of '%2'"_s.arg(found, identifier));
    }
    return this->version(version);
}

void JFile::commit()
{
    Q_ASSERT(!m_reading);
    writeFileAtomically(m_name, m_bytes);
}

} // namespace tarnwick
