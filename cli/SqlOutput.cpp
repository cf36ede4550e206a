#include "SqlOutput.h"

#include "ColumnPrinter.h"
#include "Console.h"

#include <array>
#include <charconv>
#include <cmath>
#include <dao/values/Decimal.h>
#include <db/FieldDefinition.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <query/PlainDate.h>
#include <query/PlainText.h>

namespace cli {

using namespace Qt::StringLiterals;
using dao::Value;

namespace {

class TableWriter : public RowWriter
{
public:
    void begin(const QList<OutputColumn> &columns) override
    {
        QStringList titles;
        QList<bool> numeric;
        for (const OutputColumn &column : columns) {
            titles.append(column.name);
            numeric.append(dao::isNumericType(column.type));
        }
        m_printer.emplace(titles, numeric);
    }

    void row(const QList<Value> &cells) override
    {
        QStringList texts;
        texts.reserve(cells.size());
        for (const Value &cell : cells)
            texts.append(query::plainText(cell));
        m_printer->row(texts);
    }

    void end() override
    {
        m_printer->end();
        const qint64 rows = m_printer->rows();
        print(u"(%1 row%2)\n"_s.arg(rows).arg(rows == 1 ? u""_s : u"s"_s));
        m_printer.reset();
    }

    void affected(int count) override { print(u"%1 row%2 affected\n"_s.arg(count).arg(count == 1 ? u""_s : u"s"_s)); }

    void fail(const dao::DaoException &) override
    {
        if (!m_printer)
            return;
        m_printer->end();
        const qint64 rows = m_printer->rows();
        print(u"(%1 row%2, incomplete)\n"_s.arg(rows).arg(rows == 1 ? u""_s : u"s"_s));
        m_printer.reset();
    }

private:
    std::optional<ColumnPrinter> m_printer;
};

class CsvWriter : public RowWriter
{
public:
    void begin(const QList<OutputColumn> &columns) override
    {
        QStringList titles;
        for (const OutputColumn &column : columns)
            titles.append(column.name);
        printData(query::csvLine(titles));
    }

    void row(const QList<Value> &cells) override
    {
        QStringList texts;
        texts.reserve(cells.size());
        for (const Value &cell : cells)
            texts.append(query::plainText(cell));
        printData(query::csvLine(texts));
    }

    void end() override {}
    void affected(int count) override { printData(u"affected\r\n%1\r\n"_s.arg(count)); }
    void fail(const dao::DaoException &) override {}
};

/// Writes one JSON object incrementally, so that memory does not depend on the number of rows.
class JsonWriter : public RowWriter
{
public:
    void begin(const QList<OutputColumn> &columns) override
    {
        QString text = u"{\"columns\":["_s;
        for (qsizetype i = 0; i < columns.size(); ++i)
            text += (i > 0 ? u",{\"name\":"_s : u"{\"name\":"_s) + string(columns[i].name) + u",\"type\":"_s +
                    string(db::daoTypeName(columns[i].type)) + u'}';
        printData(text + u"],\"rows\":["_s);
        m_begun = true;
        m_first = true;
    }

    void row(const QList<Value> &cells) override
    {
        QString text = m_first ? u"\n["_s : u",\n["_s;
        m_first = false;
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (i > 0)
                text += u',';
            text += json(cells[i]);
        }
        printData(text + u']');
    }

    void end() override
    {
        printData(u"]}\n"_s);
        m_begun = false;
    }

    void affected(int count) override { printData(u"{\"affected\":%1}\n"_s.arg(count)); }

    void fail(const dao::DaoException &error) override
    {
        QString text = (m_begun ? u"],"_s : u"{"_s) + u"\"error\":{\"number\":"_s + QString::number(error.number()) +
                       u",\"text\":"_s + string(error.description());
        if (error.where().isValid())
            text += u",\"line\":%1,\"column\":%2"_s.arg(error.where().line).arg(error.where().column);
        if (!error.hint().isEmpty())
            text += u",\"hint\":"_s + string(error.hint());
        printData(text + u"}}\n"_s);
        m_begun = false;
    }

private:
    static QString string(const QString &text)
    {
        // Escaping by the JSON library, which only writes arrays and objects: the text is taken out of an array.
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
            return string(query::plainDate(value.real(), u"yyyy-MM-ddTHH:mm:ss"));
        case Value::Type::Text:
            return string(value.text());
        case Value::Type::Binary:
            return string(QString::fromLatin1(value.binary().toBase64()));
        case Value::Type::Float:
            return number(float(value.real()));
        case Value::Type::Double:
            return number(value.real());
        case Value::Type::Currency:
            return dao::currencyText(value.integer());
        case Value::Type::Error:
            return u"{\"error\":%1}"_s.arg(value.integer());
        default:
            return query::plainText(value);
        }
    }

    /// Shortest digits that give the same number when read, with an exponent only for very large or small numbers. JSON
    /// cannot represent infinity and NaN.
    template <typename Number>
    static QString number(Number value)
    {
        if (!std::isfinite(value))
            return u"null"_s;
        constexpr size_t longest = 64;
        std::array<char, longest> digits;
        const double size = std::abs(double(value));
        const bool plain = size >= 1E-5 && size < 1E15;
        const auto format = plain ? std::chars_format::fixed : std::chars_format::general;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, format).ptr;
        return QString::fromLatin1(digits.data(), end - digits.data());
    }

    bool m_begun = false; ///< begin() was called
    bool m_first = true;
};

} // namespace

void RowWriter::begin(const dao::Recordset &rows)
{
    QList<OutputColumn> columns;
    for (int i = 0; i < rows.fieldCount(); ++i)
        columns.append({rows.field(i).name, rows.field(i).type});
    begin(columns);
}

std::unique_ptr<RowWriter> makeRowWriter(const Arguments &arguments)
{
    const QString form = arguments.value(u"format", u"table"_s);
    if (form == u"table")
        return std::make_unique<TableWriter>();
    if (form == u"csv")
        return std::make_unique<CsvWriter>();
    if (form == u"json")
        return std::make_unique<JsonWriter>();
    throw UsageError(u"--format is table, csv or json."_s);
}

} // namespace cli
