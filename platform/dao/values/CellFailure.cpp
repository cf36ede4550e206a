#include "CellFailure.h"

#include "Errors.h"

#include <QStringList>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

// No picture or document begins like this, and none is as short.
constexpr QByteArrayView mark = "\xffjet cell\xfe\x01";
constexpr qsizetype digits = 5;

} // namespace

QString failureWord(int number)
{
    switch (number) {
    case error::DivisionByZero:
        return u"#Div/0!"_s;
    case error::Overflow:
        return u"#Num!"_s;
    default:
        return u"#Error"_s;
    }
}

QString failureTip(int number)
{
    return QString::number(number) + u": "_s + errorText(number);
}

QString CellFailures::summary() const
{
    QStringList parts;
    qint64 total = 0;
    for (auto count = m_counts.cbegin(); count != m_counts.cend(); ++count) {
        total += count.value();
        QString text = errorText(count.key());
        while (text.endsWith(u'.'))
            text.chop(1);
        parts.append(u"%1 by [%2] %3"_s.arg(count.value()).arg(count.key()).arg(text));
    }
    const QString cells = total == 1 ? u"1 cell"_s : QString::number(total) + u" cells"_s;
    return cells + u" could not be calculated: "_s + parts.join(u", "_s) + u'.';
}

QByteArray failureBytes(int number)
{
    return mark + QByteArray::number(number).rightJustified(digits, '0');
}

int failureIn(QByteArrayView bytes)
{
    const bool failed = bytes.size() == mark.size() + digits && bytes.startsWith(mark);
    return failed ? bytes.sliced(mark.size()).toInt() : 0;
}

} // namespace dao
