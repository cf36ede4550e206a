#include "SqlOutput.h"

#include "Console.h"

#include <dao/values/OleDate.h>
#include <db/FieldDefinition.h>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

namespace cli {

using namespace Qt::StringLiterals;
using dao::Value;

namespace {

// The parts as they are stored: a way through local time would move moments that a clock change skips.
QString dateText(double days, QStringView form)
{
    const dao::DateParts parts = dao::datePartsOf(days);
    const QDateTime moment(QDate(parts.year, parts.month, parts.day), QTime(parts.hour, parts.minute, parts.second),
                           Qt::UTC);
    return moment.toString(form);
}

/// Text padded to columns: widths are those of the first rows, which are held back until they are known.
class TableWriter : public RowWriter
{
public:
    void begin(const dao::Recordset &rows) override
    {
        m_numeric.clear();
        QStringList titles;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            titles.append(rows.field(i).name);
            m_numeric.append(dao::isNumericType(rows.field(i).type));
        }
        m_held = {titles};
        m_rows = 0;
    }

    void row(const dao::Recordset &rows) override
    {
        QStringList cells;
        cells.reserve(rows.fieldCount());
        for (int i = 0; i < rows.fieldCount(); ++i)
            cells.append(plainText(rows.value(i)));
        ++m_rows;
        if (m_rows > kRowsHeld)
            printCells(cells);
        else
            m_held.append(cells);
        if (m_rows == kRowsHeld)
            release();
    }

    void end() override
    {
        release();
        print(u"(%1 row%2)\n"_s.arg(m_rows).arg(m_rows == 1 ? u""_s : u"s"_s));
    }

    void affected(int count) override { print(u"%1 row%2 affected\n"_s.arg(count).arg(count == 1 ? u""_s : u"s"_s)); }

private:
    static constexpr int kRowsHeld = 1000;

    void release()
    {
        if (m_held.isEmpty())
            return;
        m_widths = QList<qsizetype>(m_numeric.size(), 0);
        for (const QStringList &cells : std::as_const(m_held))
            for (qsizetype i = 0; i < cells.size(); ++i)
                m_widths[i] = std::max(m_widths[i], cells[i].size());
        printCells(m_held.first());
        QStringList rules;
        for (const qsizetype width : std::as_const(m_widths))
            rules.append(QString(width, u'-'));
        print(rules.join(u"  "_s) + u'\n');
        for (qsizetype i = 1; i < m_held.size(); ++i)
            printCells(m_held[i]);
        m_held.clear();
    }

    void printCells(const QStringList &cells)
    {
        QString line;
        for (qsizetype i = 0; i < cells.size(); ++i) {
            QString cell = cells[i];
            // A line end inside a text would break the table.
            cell.replace(u'\n', u' ').remove(u'\r');
            const bool last = i + 1 == cells.size();
            line += m_numeric[i] ? cell.rightJustified(m_widths[i]) : last ? cell : cell.leftJustified(m_widths[i]);
            if (!last)
                line += u"  "_s;
        }
        print(line + u'\n');
    }

    QList<bool> m_numeric;
    QList<QStringList> m_held;
    QList<qsizetype> m_widths;
    qint64 m_rows = 0;
};

class CsvWriter : public RowWriter
{
public:
    void begin(const dao::Recordset &rows) override
    {
        QStringList titles;
        for (int i = 0; i < rows.fieldCount(); ++i)
            titles.append(quoted(rows.field(i).name));
        print(titles.join(u',') + u"\r\n"_s);
    }

    void row(const dao::Recordset &rows) override
    {
        QString line;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            if (i > 0)
                line += u',';
            line += quoted(plainText(rows.value(i)));
        }
        print(line + u"\r\n"_s);
    }

    void end() override {}
    void affected(int count) override { print(u"affected\r\n%1\r\n"_s.arg(count)); }

private:
    static QString quoted(QString cell)
    {
        static constexpr QStringView special = u",\"\r\n";
        const bool quotes = std::any_of(cell.cbegin(), cell.cend(), [](QChar c) { return special.contains(c); });
        return quotes ? u'"' + cell.replace(u'"', u"\"\""_s) + u'"' : cell;
    }
};

/// One object, written as it comes, so that a million rows need no memory.
class JsonWriter : public RowWriter
{
public:
    void begin(const dao::Recordset &rows) override
    {
        QString text = u"{\"columns\":["_s;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            const dao::FieldInfo &field = rows.field(i);
            text += (i > 0 ? u",{\"name\":"_s : u"{\"name\":"_s) + string(field.name) + u",\"type\":"_s +
                    string(db::daoTypeName(field.type)) + u'}';
        }
        print(text + u"],\"rows\":["_s);
        m_first = true;
    }

    void row(const dao::Recordset &rows) override
    {
        QString text = m_first ? u"\n["_s : u",\n["_s;
        m_first = false;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            if (i > 0)
                text += u',';
            text += json(rows.value(i));
        }
        print(text + u']');
    }

    void end() override { print(u"]}\n"); }
    void affected(int count) override { print(u"{\"affected\":%1}\n"_s.arg(count)); }

private:
    static QString string(const QString &text)
    {
        // The library's escaping, taken from an array of the one text.
        const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
        return QString::fromUtf8(array.mid(1, array.size() - 2));
    }

    static QString json(const Value &value)
    {
        switch (value.type()) {
        case Value::Type::Empty:
        case Value::Type::Null:
            return u"null"_s;
        case Value::Type::Boolean:
            return value.boolean() ? u"true"_s : u"false"_s;
        case Value::Type::Date:
            return string(dateText(value.real(), u"yyyy-MM-ddTHH:mm:ss"));
        case Value::Type::Text:
            return string(value.text());
        case Value::Type::Binary:
            return string(QString::fromLatin1(value.binary().toBase64()));
        default:
            return plainText(value);
        }
    }

    bool m_first = true;
};

} // namespace

QString plainText(const Value &value)
{
    switch (value.type()) {
    case Value::Type::Empty:
    case Value::Type::Null:
        return {};
    case Value::Type::Boolean:
        return value.boolean() ? u"True"_s : u"False"_s;
    case Value::Type::Float:
        return QString::number(value.real(), 'g', 7);
    case Value::Type::Double:
    case Value::Type::Currency:
        return QString::number(value.real(), 'g', QLocale::FloatingPointShortest);
    case Value::Type::Date:
        return dateText(value.real(), u"MM/dd/yyyy HH:mm:ss");
    case Value::Type::Text:
        return value.text();
    case Value::Type::Binary:
        return u"(%1 bytes)"_s.arg(value.binary().size());
    default:
        return QString::number(value.integer());
    }
}

std::unique_ptr<RowWriter> makeRowWriter(QStringView form)
{
    if (form == u"table")
        return std::make_unique<TableWriter>();
    if (form == u"csv")
        return std::make_unique<CsvWriter>();
    if (form == u"json")
        return std::make_unique<JsonWriter>();
    return nullptr;
}

} // namespace cli
