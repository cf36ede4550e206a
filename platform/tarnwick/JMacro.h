#pragma once
#include "JFile.h"

#include <optional>
#include <QList>
#include <QString>

namespace tarnwick {

/// A table of macros: names with brackets ("[MAP NAME]") and values. Names are compared ignoring case.
class JMacro
{
public:
    struct Entry
    {
        QString name;
        QString value;
        bool operator==(const Entry &) const = default;
    };

    const QList<Entry> &entries() const { return m_entries; }
    bool isEmpty() const { return m_entries.isEmpty(); }
    /// Sets or adds a macro. Adds brackets to a name without them.
    void set(const QString &name, const QString &value);
    std::optional<QString> value(QStringView name) const;
    void remove(QStringView name);
    void clear() { m_entries.clear(); }
    void sort();
    /// Adds the entries of the other table. If both have a name, this table's value is kept.
    void merge(const JMacro &other);
    /// Replaces every bracketed name in the table; other bracketed text is kept. Values are not expanded again.
    QString expand(const QString &text) const;
    /// A part of a text.
    struct Span
    {
        qsizetype start;
        qsizetype length;
        bool operator==(const Span &) const = default;
    };
    /// The bracketed parts that expand() would not replace.
    QList<Span> unknownNames(const QString &text) const;
    void serialize(JFile &file);
    bool operator==(const JMacro &) const = default;

private:
    template <typename Visitor>
    void visitNames(const QString &text, Visitor visit) const;

    QList<Entry> m_entries;
};

} // namespace tarnwick
