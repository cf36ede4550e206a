#pragma once
#include "base/Error.h"
#include "ColourRef.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// An error in a record file, with the file's name and the offset in bytes.
class JFileError : public FileError
{
public:
    JFileError(const QString &file, qint64 offset, const QString &reason);
    qint64 offset() const { return m_offset; }

private:
    qint64 m_offset;
};

/// The toolkit's record files: 32-bit little-endian integers, 16-bit characters, 8-byte doubles, text as a 32-bit byte
/// count and UTF-8. One object either reads or writes; serialize() works in both directions, so each record defines its
/// layout once. Input is not trusted: every count is checked against the remaining bytes before memory is allocated.
class JFile
{
public:
    static constexpr quint32 kMagic = 0x12345678;

    /// Reads the whole file. Throws FileError.
    static JFile openForReading(const QString &path);
    static JFile fromBytes(const QByteArray &bytes, const QString &name);
    /// Collects the output; nothing is written to the disk before commit().
    static JFile forWriting(const QString &path);

    bool isReading() const { return m_reading; }
    const QString &fileName() const { return m_name; }
    qint64 offset() const { return m_offset; }
    qint64 bytesLeft() const { return m_reading ? m_bytes.size() - m_offset : 0; }
    const QByteArray &bytes() const { return m_bytes; }

    /// Magic number, identifier, header version. When reading, throws JFileError if magic number or identifier differ
    /// or the version is newer than the given one. Returns the version read.
    int header(const QString &identifier, int version);
    /// Returns true if the first four bytes are the magic number; does not change the position.
    bool startsWithMagic() const;

    // Each reads or writes the value.
    void serialize(qint32 &value);
    void serialize(quint32 &value);
    void serialize(qint16 &value);
    void serialize(quint16 &value);
    void serialize(char16_t &value);
    void serialize(ColourRef &value);
    void serialize(quint8 &value);
    /// As a 32-bit integer 0/1.
    void serialize(bool &value);
    void serialize(double &value);
    void serialize(float &value);
    void serialize(QString &value);
    void serialize(QStringList &value);
    void serialize(QList<qint32> &value);
    /// A flag of one byte.
    void serializeByte(bool &value);
    /// A 32-bit record version. Writes the newest; when reading, throws if it is below 1 or above the newest. Returns
    /// it.
    int version(int newest);
    /// A 32-bit element count. When reading, throws if the file cannot contain so many elements of at least
    /// minimumBytesEach bytes.
    qint32 count(qint64 elements, int minimumBytesEach);

    /// A list of records: the count, then each element through element(file, record).
    template <typename T, typename Function>
    void list(QList<T> &records, int minimumBytesEach, Function element)
    {
        const qint32 n = count(records.size(), minimumBytesEach);
        if (m_reading) {
            records.clear();
            records.reserve(qMin(n, kMostReserved));
            for (qint32 i = 0; i < n; ++i) {
                T record{};
                element(*this, record);
                records.append(std::move(record));
            }
        } else {
            for (T &record : records)
                element(*this, record);
        }
    }

    [[noreturn]] void fail(const QString &reason) const;
    /// Writes the file atomically. Throws FileError.
    void commit();

private:
    /// In memory a record is larger than its shortest form on the disk, so a wrong count must not allocate all elements
    /// at once.
    static constexpr qint32 kMostReserved = 4096;

    JFile(const QString &name, const QByteArray &bytes, bool reading);
    void need(qint64 bytes) const;
    template <typename T>
    void plain(T &value);

    QString m_name;
    QByteArray m_bytes;
    qint64 m_offset = 0;
    bool m_reading;
};

} // namespace tarnwick
