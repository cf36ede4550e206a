#include "JMacro.h"

#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

static QString bracketed(QStringView name)
{
    if (name.startsWith(u'[') && name.endsWith(u']'))
        return name.toString();
    return u'[' + name.toString() + u']';
}

static qsizetype indexOf(const QList<JMacro::Entry> &entries, QStringView bracketedName)
{
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (bracketedName.compare(entries[i].name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

void JMacro::set(const QString &name, const QString &value)
{
    const QString key = bracketed(name);
    const qsizetype i = indexOf(m_entries, key);
    if (i >= 0)
        m_entries[i].value = value;
    else
        m_entries.append({key, value});
}

std::optional<QString> JMacro::value(QStringView name) const
{
    const qsizetype i = indexOf(m_entries, bracketed(name));
    if (i < 0)
        return std::nullopt;
    return m_entries[i].value;
}

void JMacro::remove(QStringView name)
{
    const qsizetype i = indexOf(m_entries, bracketed(name));
    if (i >= 0)
        m_entries.removeAt(i);
}

void JMacro::sort()
{
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry &a, const Entry &b) { return a.name.compare(b.name, Qt::CaseInsensitive) < 0; });
}

void JMacro::merge(const JMacro &other)
{
    for (const Entry &entry : other.m_entries) {
        if (indexOf(m_entries, entry.name) < 0)
            m_entries.append(entry);
    }
}

/// Calls visit with each bracketed part and the index of its entry, -1 if the table has none.
template <typename Visitor>
void JMacro::visitNames(const QString &text, Visitor visit) const
{
    qsizetype open = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'[') {
            open = i; // in "[a [b]" only "[b]" can be a name
        } else if (text[i] == u']' && open >= 0) {
            const Span span{open, i + 1 - open};
            visit(span, indexOf(m_entries, QStringView(text).sliced(span.start, span.length)));
            open = -1;
        }
    }
}

QString JMacro::expand(const QString &text) const
{
    QString expanded;
    qsizetype copied = 0; // everything before this index is in the result
    visitNames(text, [&](const Span &span, qsizetype entry) {
        if (entry < 0)
            return;
        expanded += QStringView(text).sliced(copied, span.start - copied);
        expanded += m_entries[entry].value;
        copied = span.start + span.length;
    });
    return expanded + QStringView(text).sliced(copied);
}

QList<JMacro::Span> JMacro::unknownNames(const QString &text) const
{
    QList<Span> unknown;
    visitNames(text, [&](const Span &span, qsizetype entry) {
        if (entry < 0)
            unknown.append(span);
    });
    return unknown;
}

void JMacro::serialize(JFile &file)
{
    file.version(1);
    file.list(m_entries, 2 * sizeof(quint32), [](JFile &f, Entry &entry) {
        f.serialize(entry.name);
        f.serialize(entry.value);
    });
}

} // namespace tarnwick
