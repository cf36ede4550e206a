#include "Figures.h"

#include <bench/ReportTable.h>

#include <QCryptographicHash>

namespace bench {

using namespace Qt::StringLiterals;

const QString kHistorySql = u"SELECT *\nFROM report\n"
                            u"ORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC"_s;
const QString kCalListSql = u"SELECT COUNT(*), site_code, comp, outage, cal_num, oper_type, sec\nFROM report\n"
                            u"GROUP BY site_code, comp, outage, cal_num, oper_type, sec\n"
                            u"ORDER BY site_code, comp, outage, cal_num, oper_type, sec"_s;

Opened::Opened(qint64 rows)
    : Opened(reportDatabase(rows))
{
}

Opened::Opened(const QString &path)
    : plain(path)
{
    database.open(path, dao::OpenMode::ReadOnly);
}

qint64 readRow(const dao::Recordset &rows)
{
    qint64 sum = 0;
    const int fields = rows.fieldCount();
    for (int i = 0; i < fields; ++i) {
        const dao::Value value = rows.value(i);
        sum += value.type() == dao::Value::Type::Text ? value.text().size() : qint64(value.real());
    }
    return sum;
}

namespace {

// Cells are parted by the length of texts and by the kind.
void addText(QByteArray &cells, const QByteArray &utf8)
{
    cells += 't' + QByteArray::number(utf8.size()) + ':' + utf8;
}

void addNumber(QByteArray &cells, double number)
{
    constexpr int kDigits = 10;
    cells += 'n' + QByteArray::number(number == 0 ? 0.0 : number, 'g', kDigits); // no minus before zero
}

} // namespace

void Checksum::addRow(const QByteArray &cells)
{
    const QByteArray hash = QCryptographicHash::hash(cells, QCryptographicHash::Md5);
    quint64 number = 0;
    memcpy(&number, hash.constData(), sizeof(number));
    m_sum += number;
    ++m_rows;
}

void Checksum::add(const dao::Recordset &row)
{
    QByteArray cells;
    for (int i = 0; i < row.fieldCount(); ++i) {
        const dao::Value value = row.value(i);
        if (value.isNull())
            cells += '-';
        else if (value.type() == dao::Value::Type::Text)
            addText(cells, value.text().toUtf8());
        else
            addNumber(cells, value.real());
    }
    addRow(cells);
}

void Checksum::add(const PlainStatement &row)
{
    QByteArray cells;
    for (int i = 0; i < sqlite3_column_count(row.handle()); ++i) {
        const int type = sqlite3_column_type(row.handle(), i);
        if (type == SQLITE_NULL)
            cells += '-';
        else if (type == SQLITE_TEXT)
            addText(cells, reinterpret_cast<const char *>(sqlite3_column_text(row.handle(), i)));
        else
            addNumber(cells, sqlite3_column_double(row.handle(), i));
    }
    addRow(cells);
}

} // namespace bench
