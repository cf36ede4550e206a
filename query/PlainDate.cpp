#include "PlainDate.h"

#include <dao/values/OleDate.h>
#include <QDateTime>

namespace query {

using namespace Qt::StringLiterals;

// Uses the stored parts directly: a conversion through local time would move times that a clock change skips.
QString plainDate(double days, QStringView form)
{
    const dao::DateParts parts = dao::datePartsOf(days);
    const QDateTime moment(QDate(parts.year, parts.month, parts.day), QTime(parts.hour, parts.minute, parts.second),
                           Qt::UTC);
    return moment.toString(form);
}

// Digit by digit: QDateTime would take ten times as long.
QString plainDate(double days)
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

} // namespace query
