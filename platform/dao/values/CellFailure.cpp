#include "CellFailure.h"

#include "Errors.h"

#include <QStringList>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

// No picture or document starts with these bytes, and none is that short.
constexpr QByteArrayView kMark = "\xffjet cell\xfe\x01";
constexpr qsizetype kDigits = 5;

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
    return kMark + QByteArray::number(number).rightJustified(kDigits, '0');
}

int failureIn(QByteArrayView bytes)
{
    const bool failed = bytes.size() == kMark.size() + kDigits && bytes.startsWith(kMark);
    return failed ? bytes.sliced(kMark.size()).toInt() : 0;
}

} // namespace dao
