#include "FormatPattern.h"

#include <dao/values/OleDate.h>

namespace dao::functions {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kLongestRun = 6; // "dddddd"

QString twoDigits(int number)
{
    return QString::number(number).rightJustified(2, u'0');
}

class DateWriter
{
public:
    DateWriter(double date, QStringView pattern, const WeekRule &rule)
        : m_date(date)
        , m_parts(datePartsOf(date))
        , m_pattern(pattern)
        , m_rule(rule)
    {
    }

    QString write()
    {
        m_twelveHours = !halfDayMarks().isEmpty();
        for (qsizetype i = 0; i < m_pattern.size();) {
            const qsizetype behind = takeLiteral(m_pattern, i, m_result);
            if (behind != i) {
                i = behind;
            } else if (const qsizetype mark = halfDayMarkAt(i)) {
                i += mark;
            } else {
                const QChar letter = m_pattern[i].toLower();
                // The search is limited to the longest placeholder; otherwise thousands of equal letters take quadratic
                // time.
                const qsizetype last = std::min(m_pattern.size(), i + kLongestRun);
                qsizetype end = i + 1;
                while (end < last && m_pattern[end].toLower() == letter)
                    ++end;
                i += letter.isLetter() ? writeRun(letter, int(end - i)) : writePlain(m_pattern[i]);
            }
        }
        return m_result;
    }

private:
    // The placeholders of the 12-hour clock, longest first.
    static QList<QStringView> allMarks() { return {u"AM/PM", u"am/pm", u"AMPM", u"ampm", u"A/P", u"a/p"}; }

    QStringView halfDayMarks() const
    {
        for (const QStringView mark : allMarks())
            if (m_pattern.contains(mark))
                return mark;
        return {};
    }

    qsizetype halfDayMarkAt(qsizetype index)
    {
        for (const QStringView mark : allMarks()) {
            if (!m_pattern.mid(index).startsWith(mark))
                continue;
            const qsizetype slash = mark.indexOf(u'/');
            const QStringView morning = slash < 0 ? mark.left(2) : mark.left(slash);
            const QStringView evening = slash < 0 ? mark.mid(2) : mark.mid(slash + 1);
            m_result += m_parts.hour < 12 ? morning : evening;
            m_lastWasHour = false;
            return mark.size();
        }
        return 0;
    }

    qsizetype writePlain(QChar c)
    {
        m_result += c;
        return 1;
    }

    // Writes the longest placeholder that a run of one letter starts with; returns its length.
    qsizetype writeRun(QChar letter, int run)
    {
        const bool afterHour = std::exchange(m_lastWasHour, false);
        switch (letter.unicode()) {
        case u'd':
            return writeDay(std::min(run, 6));
        case u'w':
            m_result += QString::number(run > 1 ? datePart(Interval::Week, m_date, m_rule) : weekdayOf(m_date, m_rule));
            return std::min(run, 2);
        case u'm':
            if (afterHour && run <= 2)
                return writeNumber(m_parts.minute, run);
            return writeMonth(std::min(run, 4));
        case u'q':
            m_result += QString::number(datePart(Interval::Quarter, m_date, m_rule));
            return 1;
        case u'y':
            return writeYear(run);
        case u'h': {
            m_lastWasHour = true;
            const int hour = m_twelveHours ? (m_parts.hour + 11) % 12 + 1 : m_parts.hour;
            return writeNumber(hour, run);
        }
        case u'n':
            return writeNumber(m_parts.minute, run);
        case u's':
            return writeNumber(m_parts.second, run);
        case u't':
            if (run >= 5) {
                m_result += longTimeText(m_date);
                return 5;
            }
            break;
        case u'c':
            m_result += generalDateText(m_date);
            return 1;
        default:
            break;
        }
        return writePlain(letter);
    }

    qsizetype writeNumber(int number, int run)
    {
        m_result += run > 1 ? twoDigits(number) : QString::number(number);
        return std::min(run, 2);
    }

    qsizetype writeDay(int run)
    {
        if (run <= 2)
            return writeNumber(m_parts.day, run);
        if (run <= 4)
            m_result += weekdayName(m_parts.weekday, run == 3);
        else
            m_result += run == 5 ? shortDateText(m_date) : formatDate(m_date, namedDatePattern(u"long date"), m_rule);
        return run;
    }

    qsizetype writeMonth(int run)
    {
        if (run <= 2)
            return writeNumber(m_parts.month, run);
        m_result += monthName(m_parts.month, run == 3);
        return run;
    }

    qsizetype writeYear(int run)
    {
        if (run == 1)
            m_result += QString::number(m_parts.dayOfYear);
        else if (run == 2)
            m_result += twoDigits(m_parts.year % 100);
        else
            m_result += QString::number(m_parts.year).rightJustified(4, u'0');
        return std::min(run, 4);
    }

    double m_date;
    DateParts m_parts;
    QStringView m_pattern;
    WeekRule m_rule;
    QString m_result;
    bool m_twelveHours = false;
    bool m_lastWasHour = false; ///< a following "m" means minutes
};

} // namespace

QString formatDate(double date, QStringView pattern, const WeekRule &rule)
{
    return DateWriter(date, pattern, rule).write();
}

} // namespace dao::functions
