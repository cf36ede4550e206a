#pragma once
#include "base/Error.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <span>

namespace tarnwick {

/// An option of a program or command: "--name VALUE", or a switch if it has no placeholder.
struct OptionSpec
{
    const char16_t *name;        ///< without the leading dashes
    const char16_t *placeholder; ///< shown for the value in the help, as FILE.map for a map file; nullptr for a switch
    const char16_t *help;
    bool repeatable = false;
    const char16_t *values = nullptr; ///< what is possible, separated by "|"; nullptr if that is no short list
};

/// Understood by every program and by each of its commands, unless a command has an option of that name.
inline constexpr OptionSpec kStandardOptions[] = {{u"help", nullptr, u"explain the program or command"},
                                                  {u"version", nullptr, u"print the version"}};

/// Returns true if one of the arguments before "--" is this option.
bool asksFor(const QStringList &arguments, QStringView name);

/// The arguments are not valid for the command. The program then exits with status 2.
class UsageError : public Error
{
public:
    using Error::Error;
};

/// The parsed arguments of a program or command. Options may be anywhere; "--" ends them.
class Arguments
{
public:
    /// Throws UsageError for an unknown option, a missing value, or a repeated option that may be given only once.
    Arguments(const QStringList &arguments, std::span<const OptionSpec> options);

    const QStringList &positional() const { return m_positional; }
    /// The positional argument at index. Throws UsageError, which names it, if it is missing.
    QString positional(int index, const QString &what) const;
    /// Throws UsageError if there are more positional arguments.
    void atMost(int count) const;

    bool has(QStringView name) const { return m_values.contains(name.toString()); }
    /// Returns true if the command has this option at all.
    bool knows(QStringView name) const;
    QString value(QStringView name, const QString &whenMissing = {}) const;
    QStringList values(QStringView name) const { return m_values.value(name.toString()); }
    /// Throws UsageError if the value is not a whole number in the range.
    qint64 integer(QStringView name, qint64 whenMissing, qint64 minimum, qint64 maximum) const;

private:
    std::span<const OptionSpec> m_options;
    QStringList m_positional;
    QHash<QString, QStringList> m_values;
};

} // namespace tarnwick
