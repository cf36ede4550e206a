#pragma once
#include <fenwright/TableScanner.h>
#include <optional>
#include <QString>
#include <QStringList>
#include <tarnwick/JDateTime.h>
#include <vector>

namespace brannock {

/// Range of whole numbers that a column accepts.
struct IntRange
{
    int minimum;
    int maximum;
};
constexpr IntRange kSigned16 = {-0x8000, 0x7FFF};
constexpr IntRange kUnsigned16 = {0, 0xFFFF};
constexpr IntRange kSigned32 = {-0x7FFFFFFF, 0x7FFFFFFF};

// Each results file defines its columns once, in a function that passes every field of an entry to a visitor, in order:
//     template <typename Entry, typename Visitor> void visitFields(Entry &entry, Visitor &visit);
// The three visitors below collect the names, read a row and write a row.

enum class StoredWhen; // ReportFields.h

/// Collects the column names.
class FieldNames
{
public:
    void stored(StoredWhen) {}
    template <typename T>
    void field(QStringView name, const T &)
    {
        names.append(name.toString());
    }
    template <typename T>
    void field(QStringView name, const T &value, IntRange)
    {
        field(name, value);
    }
    template <typename T>
    void sparse(QStringView name, const T &value)
    {
        field(name, value);
    }
    template <typename T>
    void sparse(QStringView name, const T &value, IntRange)
    {
        field(name, value);
    }
    QStringList names;
};

/// Reads the cells of the scanner's row into the fields of an entry. An empty cell does not change the field. Equal
/// texts share their memory as far as they are still known, so large files are read quickly and need little memory.
class RowReader
{
public:
    RowReader(const fenwright::TableScanner &scanner, const QStringList &fieldNames);

    void startRow() { m_next = 0; }
    void stored(StoredWhen) {}
    void field(QStringView, QString &value);
    void field(QStringView, int &value, IntRange range);
    void field(QStringView, qint16 &value, IntRange range);
    void field(QStringView, double &value);
    void field(QStringView, float &value);
    void field(QStringView, tarnwick::JDateTime &value);
    void field(QStringView, bool &value);
    template <typename T>
    void sparse(QStringView name, T &value)
    {
        field(name, value);
    }
    void sparse(QStringView name, int &value, IntRange range) { field(name, value, range); }

private:
    /// A text that was converted before.
    struct Text
    {
        QByteArrayView raw; ///< valid as long as the scanner
        QString text;
    };
    struct Column
    {
        int index = -1;
        Text last;
    };
    const Text &knownText(QByteArrayView raw);
    /// An hour that was converted before.
    struct Hour
    {
        QByteArrayView text; ///< "yyyy-mm-ddThh"; valid as long as the scanner
        qint64 seconds = 0;
    };
    Hour &knownHour(QByteArrayView hour);
    std::optional<tarnwick::JDateTime> timeInKnownHour(QByteArrayView cell);

    const fenwright::TableScanner &m_scanner;
    std::vector<Column> m_columns;
    size_t m_next = 0;
    // By a hash of the bytes.
    std::vector<Hour> m_hours;
    std::vector<Text> m_texts;
};

/// Writes the fields of an entry as the cells of a row.
class RowWriter
{
public:
    explicit RowWriter(fenwright::TableWriter &table)
        : m_table(table)
    {
    }

    void stored(StoredWhen) {}
    void field(QStringView, const QString &value) { m_table.cell(value); }
    void field(QStringView, int value, IntRange) { m_table.cell(value); }
    void field(QStringView, double value) { m_table.cell(value); }
    void field(QStringView, float value) { m_table.cell(value); }
    void field(QStringView, const tarnwick::JDateTime &value);
    void field(QStringView, bool value) { m_table.cell(value ? QStringView(u"1") : QStringView()); }
    /// Zero is not written: in results files an empty number means "not measured".
    template <typename T>
    void sparse(QStringView, T value)
    {
        if (value == 0)
            m_table.cell(QStringView());
        else
            m_table.cell(value);
    }
    void sparse(QStringView name, int value, IntRange) { sparse(name, value); }

private:
    fenwright::TableWriter &m_table;
};

} // namespace brannock
