#include "CellFailure.h"

#include "Errors.h"

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
