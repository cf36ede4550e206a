#include "FieldCutter.h"

namespace conversion {

QStringView cutColumns(QStringView line, qint64 first, qint64 last)
{
    const qsizetype start = qMax<qint64>(0, first);
    const qsizetype end = qMin<qint64>(last + 1, line.size());
    if (end <= start)
        return {};
    return line.sliced(start, end - start).trimmed();
}

// Reads a quoted value at the beginning of the line. i is set behind its closing quote.
static QString quotedValue(QStringView line, qsizetype &i)
{
    QString value;
    for (++i; i < line.size(); ++i) {
        if (line[i] != u'"') {
            value += line[i];
        } else if (i + 1 < line.size() && line[i + 1] == u'"') {
            value += u'"';
            ++i;
        } else {
            ++i;
            break;
        }
    }
    return value;
}

QList<DelimitedValue> splitCommaDelimited(QStringView line)
{
    QList<DelimitedValue> values;
    qsizetype i = 0;
    for (;;) {
        const qsizetype start = i;
        while (i < line.size() && line[i].isSpace())
            ++i;
        QString value;
        if (i < line.size() && line[i] == u'"')
            value = quotedValue(line, i);
        const qsizetype comma = line.indexOf(u',', i);
        const qsizetype end = comma < 0 ? line.size() : comma;
        value += line.sliced(i, end - i); // text between the closing quote and the next comma: not valid, but kept
        values.append({value.trimmed(), start, end});
        if (comma < 0)
            return values;
        i = comma + 1;
    }
}

int valueAt(QStringView line, qsizetype column)
{
    const QList<DelimitedValue> values = splitCommaDelimited(line);
    const auto found = std::find_if(values.begin(), values.end(), [column](const auto &v) { return column <= v.end; });
    return int(std::min(found - values.begin(), values.size() - 1));
}

// Most values repeat from line to line. If the old text is kept, all entries share its memory.
static void setValue(ConvField &field, QStringView value)
{
    if (field.value != value)
        field.value = value.toString();
}

void FieldCutter::cut(QStringView line)
{
    m_missed.clear();
    if (m_spec.isCommaDelimited())
        cutDelimited(line);
    else
        cutFixed(line);
}

void FieldCutter::cutFixed(QStringView line)
{
    for (int i = 0; i < m_spec.reportFields.size(); ++i) {
        ConvField &field = m_spec.reportFields[i];
        if (field.lastColumn < line.size())
            setValue(field, cutColumns(line, field.firstColumn, field.lastColumn));
        else
            m_missed.append(i);
    }
}

void FieldCutter::cutDelimited(QStringView line)
{
    const QList<DelimitedValue> values = splitCommaDelimited(line);
    for (int i = 0; i < m_spec.reportFields.size(); ++i) {
        ConvField &field = m_spec.reportFields[i];
        if (field.firstColumn >= 0 && field.firstColumn < values.size())
            setValue(field, values[field.firstColumn].text);
        else
            m_missed.append(i);
    }
}

} // namespace conversion
