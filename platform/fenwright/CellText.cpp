#include "CellText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <QDate>

namespace fenwright {

namespace {

QByteArrayView numberPart(QByteArrayView cell)
{
    cell = cell.trimmed();
    // Some spreadsheets quote every cell.
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"')
        cell = cell.sliced(1, cell.size() - 2).trimmed();
    if (cell.size() > 1 && cell.front() == '+' && cell[1] != '-')
        cell = cell.sliced(1);
    return cell;
}

template <typename T>
std::optional<T> parse(QByteArrayView cell)
{
    cell = numberPart(cell);
    T value{};
    const auto [end, error] = std::from_chars(cell.begin(), cell.end(), value);
    if (error != std::errc() || end != cell.end() || cell.isEmpty())
        return std::nullopt;
    return value;
}

template <typename T>
void appendNumber(QByteArray &out, T value)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr - buffer);
}

bool isPlain(QChar c)
{
    return c.unicode() >= 0x20 && c.unicode() < 0x7F && c != u'\\';
}

void appendEscaped(QByteArray &out, QStringView text)
{
    qsizetype from = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        const char16_t c = i < text.size() ? text[i].unicode() : u'\0';
        const char letter = c == u'\t' ? 't' : c == u'\n' ? 'n' : c == u'\r' ? 'r' : c == u'\\' ? '\\' : '\0';
        if (i < text.size() && letter == '\0')
            continue;
        out.append(text.sliced(from, i - from).toUtf8());
        if (letter != '\0')
            out.append('\\').append(letter);
        from = i + 1;
    }
}

QString unescaped(QString text)
{
    qsizetype to = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        QChar c = text[i];
        if (c == u'\\' && i + 1 < text.size()) {
            const QChar letter = text[++i];
            c = letter == u't' ? u'\t' : letter == u'n' ? u'\n' : letter == u'r' ? u'\r' : letter;
        }
        text[to++] = c;
    }
    text.truncate(to);
    return text;
}

/// Removes digits from the front: exactly count digits, or one or two if count is 0.
std::optional<int> takeDigits(QByteArrayView &text, int count)
{
    int value = 0;
    int taken = 0;
    while (taken < (count == 0 ? 2 : count) && taken < text.size() && text[taken] >= '0' && text[taken] <= '9')
        value = value * 10 + (text[taken++] - '0');
    if (taken == 0 || (count != 0 && taken != count))
        return std::nullopt;
    text = text.sliced(taken);
    return value;
}

bool takeOne(QByteArrayView &text, char wanted)
{
    if (!text.startsWith(wanted))
        return false;
    text = text.sliced(1);
    return true;
}

struct Day
{
    int year, month, day;
};

std::optional<Day> takeDay(QByteArrayView &text)
{
    const bool iso = text.size() > 4 && text[4] == '-';
    const char separator = iso ? '-' : '/';
    const auto first = takeDigits(text, iso ? 4 : 0);
    const bool firstEnds = first && takeOne(text, separator);
    const auto second = firstEnds ? takeDigits(text, iso ? 2 : 0) : std::nullopt;
    const bool secondEnds = second && takeOne(text, separator);
    const auto third = secondEnds ? takeDigits(text, iso ? 2 : 4) : std::nullopt;
    if (!third)
        return std::nullopt;
    const Day day = iso ? Day{*first, *second, *third} : Day{*third, *first, *second};
    if (!QDate::isValid(day.year, day.month, day.day))
        return std::nullopt;
    return day;
}

} // namespace

std::optional<tarnwick::JDateTime> cellTime(QByteArrayView cell)
{
    QByteArrayView text = cell.trimmed();
    const std::optional<Day> day = takeDay(text);
    if (!day)
        return std::nullopt;
    int clock[3] = {0, 0, 0};
    if (!text.isEmpty()) {
        if (!takeOne(text, 'T') && !takeOne(text, ' '))
            return std::nullopt;
        for (int i = 0; i < 3 && (i < 2 || !text.isEmpty()); ++i) {
            if (i > 0 && !takeOne(text, ':'))
                return std::nullopt;
            const auto part = takeDigits(text, 2);
            if (!part || *part > (i == 0 ? 23 : 59))
                return std::nullopt;
            clock[i] = *part;
        }
        if (!text.isEmpty())
            return std::nullopt;
    }
    return tarnwick::JDateTime::fromLocal(day->year, day->month, day->day, clock[0], clock[1], clock[2]);
}

std::optional<qint64> cellInteger(QByteArrayView cell)
{
    return parse<qint64>(cell);
}

std::optional<double> cellNumber(QByteArrayView cell)
{
    const std::optional<double> value = parse<double>(cell);
    // from_chars() accepts "inf" and "nan", which are not measurements.
    return value && std::isfinite(*value) ? value : std::nullopt;
}

void appendCell(QByteArray &out, QStringView text)
{
    if (text.isEmpty())
        return;
    if (text.front() == u'"' || text.front() == u'#' || text.front() == u'!')
        out.append('\\');
    if (std::all_of(text.begin(), text.end(), isPlain)) {
        for (const QChar c : text)
            out.append(char(c.unicode()));
        return;
    }
    appendEscaped(out, text);
}

void appendCell(QByteArray &out, double value)
{
    appendNumber(out, value);
}

void appendCell(QByteArray &out, float value)
{
    appendNumber(out, value);
}

QString cellText(QByteArrayView cell)
{
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"') {
        QString text = QString::fromUtf8(cell.sliced(1, cell.size() - 2));
        return text.replace(QLatin1String("\"\""), QLatin1String("\""));
    }
    QString text = QString::fromUtf8(cell);
    return cell.contains('\\') ? unescaped(std::move(text)) : text;
}

} // namespace fenwright
