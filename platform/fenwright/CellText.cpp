#include "CellText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

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

} // namespace

std::optional<qint64> cellInteger(QByteArrayView cell)
{
    return parse<qint64>(cell);
}

std::optional<double> cellNumber(QByteArrayView cell)
{
    const std::optional<double> value = parse<double>(cell);
    // The words "inf" and "nan" are numbers to the library, but no measurement.
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
