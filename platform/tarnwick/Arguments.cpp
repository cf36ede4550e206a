#include "Arguments.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const OptionSpec *findOption(std::span<const OptionSpec> options, QStringView name)
{
    for (const OptionSpec &option : options)
        if (name == QStringView(option.name))
            return &option;
    return nullptr;
}

} // namespace

bool asksFor(const QStringList &arguments, QStringView name)
{
    for (const QString &argument : arguments) {
        if (argument == "--"_L1)
            return false;
        if (argument.startsWith(u"--"_s) && QStringView(argument).sliced(2) == name)
            return true;
    }
    return false;
}

Arguments::Arguments(const QStringList &arguments, std::span<const OptionSpec> options)
    : m_options(options)
{
    bool optionsEnded = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (optionsEnded || !argument.startsWith(u"--"_s)) {
            m_positional.append(argument);
            continue;
        }
        if (argument == "--"_L1) {
            optionsEnded = true;
            continue;
        }
        const qsizetype equals = argument.indexOf(u'=');
        const QString name = argument.mid(2, equals < 0 ? -1 : equals - 2);
        const OptionSpec *option = findOption(options, name);
        if (!option)
            throw UsageError(u"Unknown option --"_s + name + u'.');
        QString value;
        if (option->placeholder) {
            if (equals >= 0)
                value = argument.mid(equals + 1);
            else if (i + 1 < arguments.size())
                value = arguments[++i];
            else
                throw UsageError(u"Option --"_s + name + u" needs a value."_s);
        } else if (equals >= 0) {
            throw UsageError(u"Option --"_s + name + u" takes no value."_s);
        }
        if (m_values.contains(name) && !option->repeatable)
            throw UsageError(u"Option --"_s + name + u" is given twice."_s);
        m_values[name].append(value);
    }
}

bool Arguments::knows(QStringView name) const
{
    return findOption(m_options, name) != nullptr;
}

QString Arguments::positional(int index, const QString &what) const
{
    if (index >= m_positional.size())
        throw UsageError(what + u" is missing."_s);
    return m_positional[index];
}

void Arguments::atMost(int count) const
{
    if (m_positional.size() > count)
        throw UsageError(u"Unexpected argument \""_s + m_positional[count] + u"\"."_s);
}

QString Arguments::value(QStringView name, const QString &whenMissing) const
{
    const auto found = m_values.constFind(name.toString());
    return found == m_values.constEnd() ? whenMissing : found->last();
}

qint64 Arguments::integer(QStringView name, qint64 whenMissing, qint64 minimum, qint64 maximum) const
{
    if (!has(name))
        return whenMissing;
    bool ok = false;
    const qint64 number = value(name).toLongLong(&ok);
    if (!ok || number < minimum || number > maximum)
        throw UsageError(u"--%1 needs a whole number from %2 to %3."_s.arg(name).arg(minimum).arg(maximum));
    return number;
}

} // namespace tarnwick
