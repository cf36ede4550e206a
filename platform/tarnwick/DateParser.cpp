#include "JDateTime.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct TimeOfDay
{
    int hour = 0;
    int minute = 0;
    int second = 0;
};

enum class Order { DayMonthYear, MonthDayYear, YearMonthDay };

} // namespace

// Removes the time of day from the text. Returns false if there is one that is out of range.
static bool takeTime(QString &text, std::optional<TimeOfDay> &time)
{
    static const QRegularExpression pattern(
        uR"((?:^|\s|(?<=\d)T)(\d{1,2})(?::(\d{1,2}))?(?::(\d{1,2}))?\s*([AaPp])?\.?(?:[Mm]\.?)?(?=\s|$))"_s);

    QRegularExpressionMatchIterator matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const bool hasMinutes = match.capturedLength(2) > 0;
        const bool hasHalf = match.capturedLength(4) > 0;
        if (!hasMinutes && !hasHalf)
            continue; // a number alone is not a time
        TimeOfDay found{match.capturedView(1).toInt(), match.capturedView(2).toInt(), match.capturedView(3).toInt()};
        if (hasHalf) {
            if (found.hour < 1 || found.hour > 12)
                return false;
            found.hour = found.hour % 12 + (match.captured(4).toLower() == u"p"_s ? 12 : 0);
        }
        if (found.hour > 23 || found.minute > 59 || found.second > 59)
            return false;
        time = found;
        text.replace(match.capturedStart(), match.capturedLength(), u" "_s);
        break;
    }
    text = text.simplified();
    return true;
}

static int fullYear(QStringView digits)
{
    // Two digits mean 1930 to 2029, as in OLE automation.
    const int year = digits.toInt();
    if (digits.size() > 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

static QDate dateOf(QStringView year, int month, int day)
{
    const QDate date(fullYear(year), month, day);
    return date.year() >= 100 ? date : QDate();
}

struct NumericForm
{
    Order order = Order::MonthDayYear;
    QChar separator = u'/';
};

static NumericForm localeForm()
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return {}; // Qt returns a format with the month's name; the C library's form is mm/dd/yy
    const QString format = locale.dateFormat(QLocale::ShortFormat);
    NumericForm form;
    for (const QChar c : format) {
        if (!c.isLetter()) {
            form.separator = c;
            break;
        }
    }
    const qsizetype day = format.indexOf(u'd');
    const qsizetype month = format.indexOf(u'M');
    const qsizetype year = format.indexOf(u'y');
    if (year < month && month < day)
        form.order = Order::YearMonthDay;
    else if (day < month)
        form.order = Order::DayMonthYear;
    return form;
}

static QDate numericDate(const QString &text)
{
    static const QRegularExpression pattern(uR"(^(\d{1,4})\s*([/.\-])\s*(\d{1,2})\s*\2\s*(\d{1,4})\.?$)"_s);
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return {};
    const QStringView first = match.capturedView(1);
    const QStringView middle = match.capturedView(3);
    const QStringView last = match.capturedView(4);
    if (first.size() > 2)
        return last.size() > 2 ? QDate() : dateOf(first, middle.toInt(), last.toInt());

    const auto inOrder = [&](Order order) {
        switch (order) {
        case Order::YearMonthDay:
            return last.size() > 2 ? QDate() : dateOf(first, middle.toInt(), last.toInt());
        case Order::DayMonthYear:
            return dateOf(last, middle.toInt(), first.toInt());
        case Order::MonthDayYear:
            break;
        }
        return dateOf(last, first.toInt(), middle.toInt());
    };
    // 09/05/2002 is in September in locales with dots between the parts of a date, and in May in locales with slashes
    // and the day first.
    const NumericForm form = localeForm();
    const bool likeLocale = match.capturedView(2) == form.separator;
    const QDate date = inOrder(likeLocale ? form.order : Order::MonthDayYear);
    return date.isValid() ? date : inOrder(likeLocale ? Order::MonthDayYear : form.order);
}

// Number from 1 if the word is a name, or its first three or more letters, in the user's language or in English.
template <typename NameOf>
static int indexOfName(QStringView word, int count, NameOf nameOf)
{
    if (word.size() < 3)
        return 0;
    for (const QLocale &locale : {QLocale(), QLocale::c()}) {
        for (int i = 1; i <= count; ++i) {
            for (const auto form : {QLocale::LongFormat, QLocale::ShortFormat}) {
                QString name = nameOf(locale, i, form);
                if (name.endsWith(u'.'))
                    name.chop(1);
                if (name.startsWith(word, Qt::CaseInsensitive))
                    return i;
            }
        }
    }
    return 0;
}

static bool isWeekday(QStringView word)
{
    return indexOfName(word, 7, [](const QLocale &locale, int day, QLocale::FormatType form) {
               return locale.dayName(day, form);
           }) > 0;
}

// A date with the name of the month: "Sep 12, 2002", "12 September 2002", "12-Sep-02", with or without the day of the
// week before it.
static QDate namedDate(const QString &text)
{
    static const QRegularExpression separators(uR"([\s,.\-/]+)"_s);
    QStringList words = text.split(separators, Qt::SkipEmptyParts);
    if (words.size() == 4 && isWeekday(words.first()))
        words.removeFirst();
    if (words.size() != 3)
        return {};
    const auto monthOf = [](QStringView word) {
        return indexOfName(word, 12, [](const QLocale &locale, int month, QLocale::FormatType form) {
            return locale.monthName(month, form);
        });
    };
    const int monthFirst = monthOf(words[0]);
    const int month = monthFirst > 0 ? monthFirst : monthOf(words[1]);
    const QString &day = monthFirst > 0 ? words[1] : words[0];
    const QString &year = words[2];
    bool dayOk = false;
    bool yearOk = false;
    const int dayNumber = day.toInt(&dayOk);
    year.toUInt(&yearOk);
    if (month == 0 || !dayOk || !yearOk || (year.size() != 2 && year.size() != 4))
        return {};
    return dateOf(year, month, dayNumber);
}

std::optional<JDateTime> JDateTime::parse(QStringView text)
{
    constexpr qsizetype kLongest = 100;
    if (text.size() > kLongest)
        return std::nullopt;
    QString rest = text.toString().simplified();
    std::optional<TimeOfDay> time;
    if (!takeTime(rest, time))
        return std::nullopt;
    QDate date;
    if (rest.isEmpty()) {
        if (!time)
            return std::nullopt;
        date = QDate(1899, 12, 30); // date that a time without a date has
    } else {
        date = numericDate(rest);
        if (!date.isValid())
            date = namedDate(rest);
        if (!date.isValid())
            return std::nullopt;
    }
    const TimeOfDay t = time.value_or(TimeOfDay());
    return fromLocal(date.year(), date.month(), date.day(), t.hour, t.minute, t.second);
}

} // namespace tarnwick
