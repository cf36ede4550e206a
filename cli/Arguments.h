#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <span>

namespace cli {

/// An option of a command: "--name VALUE", or a switch when it has no placeholder.
struct OptionSpec
{
    const char16_t *name;        ///< without the dashes
    const char16_t *placeholder; ///< what stands for its value in the help; nullptr for a switch
    const char16_t *help;
    bool repeatable = false;
};

/// The arguments do not fit the command; the program then ends with status 2.
class UsageError
{
public:
    explicit UsageError(const QString &text)
        : m_text(text)
    {
    }
    const QString &text() const { return m_text; }

private:
    QString m_text;
};

/// The arguments of a command, taken apart by its options. Options may stand anywhere; "--" ends them.
class Arguments
{
public:
    /// Throws UsageError for an unknown option, a missing value, an option given twice that may not be.
    Arguments(const QStringList &arguments, std::span<const OptionSpec> options);

    const QStringList &positional() const { return m_positional; }
    /// The only, or n-th, positional argument; UsageError naming it when it is not there.
    QString positional(int index, const QString &what) const;
    /// UsageError when there are more than that many.
    void atMost(int count) const;

    bool has(QStringView name) const { return m_values.contains(name.toString()); }
    /// Whether the command has that option at all.
    bool knows(QStringView name) const;
    QString value(QStringView name, const QString &whenMissing = {}) const;
    QStringList values(QStringView name) const { return m_values.value(name.toString()); }
    /// UsageError when it is given and is no whole number in the range.
    qint64 integer(QStringView name, qint64 whenMissing, qint64 minimum, qint64 maximum) const;

private:
    std::span<const OptionSpec> m_options;
    QStringList m_positional;
    QHash<QString, QStringList> m_values;
};

} // namespace cli
