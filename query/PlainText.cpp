#include "PlainText.h"

#include <dao/values/CellFailure.h>
#include <dao/values/Decimal.h>
#include <dao/values/OleDate.h>
#include <QDateTime>

namespace query {

using namespace Qt::StringLiterals;
using dao::Value;

// Uses the stored parts directly: a conversion through local time would move times that a clock change skips.
QString plainDate(double days, QStringView form)
{
    const dao::DateParts parts = dao::datePartsOf(days);
    const QDateTime moment(QDate(parts.year, parts.month, parts.day), QTime(parts.hour, parts.minute, parts.second),
                           Qt::UTC);
    return moment.toString(form);
}

/// plainDate() in the form "MM/dd/yyyy HH:mm:ss", in a tenth of its time.
static QString dateText(double days)
{
    const dao::DateParts parts = dao::datePartsOf(days);
    QString text = u"00/00/0000 00:00:00"_s;
    const auto put = [&text](qsizetype place, int digits, int number) {
        for (qsizetype i = place + digits - 1; i >= place; --i, number /= 10)
            text[i] = QChar(u'0' + number % 10);
    };
    put(0, 2, parts.month);
    put(3, 2, parts.day);
    put(6, 4, parts.year);
    put(11, 2, parts.hour);
    put(14, 2, parts.minute);
    put(17, 2, parts.second);
    return text;
}

QString plainText(const Value &value)
{
    switch (value.type()) {
    case Value::Type::Empty:
    case Value::Type::Null:
        return {};
    case Value::Type::Boolean:
        return value.boolean() ? u"True"_s : u"False"_s;
    case Value::Type::Float:
        return dao::singleText(value.real());
    case Value::Type::Double:
        return dao::numberText(value.real());
    case Value::Type::Currency:
        return dao::currencyText(value.integer());
    case Value::Type::Date:
        return dateText(value.real());
    case Value::Type::Text:
        return value.text();
    case Value::Type::Error:
        return dao::failureWord(int(value.integer()));
    case Value::Type::Binary:
        return u"(%1 bytes)"_s.arg(value.binary().size());
    default:
        return QString::number(value.integer());
    }
}

} // namespace query
