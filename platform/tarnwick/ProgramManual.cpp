#include "ProgramManual.h"

#include "base/Installation.h"

#include <QRegularExpression>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(const CommandText &text)
{
    return QString::fromUtf16(text.name);
}

/// A text for roff: nothing in it is taken for a request.
QString roff(QString text)
{
    text.replace(u'\\', u"\\e"_s).replace(u'-', u"\\-"_s);
    if (text.startsWith(u'.') || text.startsWith(u'\''))
        text.prepend(u"\\&"_s);
    return text;
}

QString roff(const char16_t *text)
{
    return roff(QString::fromUtf16(text));
}

/// An argument of a roff macro.
QString roffArgument(const QString &text)
{
    return u'"' + roff(text).replace(u'"', u"\\(dq"_s) + u'"';
}

QString asSentence(const char16_t *summary)
{
    QString text = QString::fromUtf16(summary);
    text[0] = text[0].toUpper();
    return text + u'.';
}

QString roffOptions(std::span<const OptionSpec> options)
{
    QString text;
    for (const OptionSpec &option : options) {
        text += u".TP\n.BI "_s + roffArgument(u"--"_s + QStringView(option.name));
        if (option.placeholder)
            text += u' ' + roffArgument(u' ' + QStringView(option.placeholder).toString());
        text += u'\n' + roff(option.help) + u'\n';
    }
    return text;
}

/// The standard options, except those that the command has in a meaning of its own.
QList<OptionSpec> standardOptions(const CommandText &text)
{
    QList<OptionSpec> options;
    for (const OptionSpec &standard : kStandardOptions) {
        const auto isSame = [&](const OptionSpec &own) { return QStringView(own.name) == QStringView(standard.name); };
        if (std::none_of(text.options.begin(), text.options.end(), isSame))
            options.append(standard);
    }
    return options;
}

QString roffParagraphs(const QString &text)
{
    QString result;
    for (const QString &paragraph : text.split(u"\n\n"_s, Qt::SkipEmptyParts))
        result += u".PP\n"_s + roff(paragraph.simplified()) + u'\n';
    return result;
}

/// What completion offers for a word of a usage or the placeholder of an option.
struct Offer
{
    bool isFile = false;
    QStringList endings; ///< of the files; empty: any
    QStringList words;
};

Offer offerFor(const QString &word)
{
    static const QHash<QString, QStringList> kKnown{
        {u"DIR"_s, {u"mdb"_s}}, {u"DB"_s, {u"mdb"_s}}, {u"REP"_s, {u"rep"_s}}, {u"FMT"_s, {u"fmt"_s}}};
    static const QRegularExpression kFile(u"^(?:F|FILE|FOLDER|TEXT\\.\\.\\.|[A-Z]+\\.([a-z]+))$"_s);
    static const QRegularExpression kWord(u"^[a-z][a-z-]+$"_s);
    Offer offer;
    for (QString part : word.split(u'|')) {
        // One TEXT is no file, several are.
        if (part.endsWith(u"..."_s) && part != u"TEXT..."_s)
            part.chop(3);
        if (const auto known = kKnown.constFind(part); known != kKnown.constEnd()) {
            offer.isFile = true;
            offer.endings += *known;
        } else if (const auto file = kFile.match(part); file.hasMatch()) {
            offer.isFile = true;
            if (file.hasCaptured(1))
                offer.endings.append(file.captured(1));
        } else if (kWord.match(part).hasMatch()) {
            offer.words.append(part);
        }
    }
    return offer;
}

QString bashWords(const QStringList &words)
{
    return u"COMPREPLY=($(compgen -W '%1' -- \"$cur\"))"_s.arg(words.join(u' '));
}

QString bashFiles(const Offer &offer)
{
    return offer.endings.isEmpty() ? u"_filedir"_s : u"_filedir '@(%1)'"_s.arg(offer.endings.join(u'|'));
}

QString bashValue(const OptionSpec &option)
{
    if (option.values)
        return bashWords(QString::fromUtf16(option.values).split(u'|'));
    const Offer offer = offerFor(QString::fromUtf16(option.placeholder));
    return offer.isFile ? bashFiles(offer) : u":"_s; // nothing can be offered
}

/// What follows a command, or a program without commands. indent: of the lines.
QString bashArguments(const CommandText &text, const QString &indent)
{
    QStringList options;
    QString values;
    for (const OptionSpec &option : text.options) {
        const QString name = u"--"_s + QStringView(option.name);
        if (options.contains(name))
            continue; // in two meanings
        options.append(name);
        if (option.placeholder)
            values += indent + u"    "_s + name + u") "_s + bashValue(option) + u"; return ;;\n"_s;
    }
    for (const OptionSpec &option : standardOptions(text))
        options.append(u"--"_s + QStringView(option.name));
    // Files of all kinds that the usage names are offered in every place, since options may stand between them.
    Offer all;
    bool isAnyFile = false;
    bool isValue = false;
    for (QString word : QString::fromUtf16(text.usage).split(u' ', Qt::SkipEmptyParts)) {
        const bool isOfOption = std::exchange(isValue, word.contains(u"--"_s));
        const Offer offer = isOfOption ? Offer() : offerFor(word.remove(u'[').remove(u']'));
        isAnyFile = isAnyFile || (offer.isFile && offer.endings.isEmpty());
        all.isFile = all.isFile || offer.isFile;
        all.endings += offer.endings;
        all.words += offer.words;
    }
    all.words.removeAll(u"options"_s);
    if (isAnyFile)
        all.endings.clear();
    all.endings.removeDuplicates();
    QString code;
    if (!values.isEmpty())
        code += indent + u"case $prev in\n"_s + values + indent + u"esac\n"_s;
    code += indent + u"if [[ $cur == -* ]]; then "_s + bashWords(options) + u"; return; fi\n"_s;
    if (!all.words.isEmpty())
        code += indent + bashWords(all.words) + u'\n';
    if (all.isFile)
        code += indent + bashFiles(all) + u'\n';
    return code;
}

} // namespace

ProgramManual::Section environmentSection()
{
    return {
        u"ENVIRONMENT"_s,
        u"PALOMINE_DIR: the folder of the suite's installation, with option files and the user's templates. Without "
        u"it: palomine in the user's data folder.\n\n"
        u"XDG_DATA_HOME, XDG_CONFIG_HOME, XDG_STATE_HOME: the user's folders for data, settings and logs."_s};
}

ProgramManual::Section filesSection()
{
    return {u"FILES"_s,
            u"~/.local/state/arvo/failures.log: the failures that were reported, with their times.\n\n"
            u"~/.local/share/palomine: option files and templates, if PALOMINE_DIR is not set.\n\n"
            u"~/.config/Palomine/ARVO/session.json: positions and sizes of windows, settings of the look."_s};
}

QString optionLines(std::span<const OptionSpec> options)
{
    constexpr int kColumn = 24;
    QString text;
    for (const OptionSpec &option : options) {
        QString left = u"  --"_s + QStringView(option.name);
        if (option.placeholder)
            left += u' ' + QStringView(option.placeholder);
        text += left.leftJustified(kColumn) + u' ' + QStringView(option.help) + u'\n';
    }
    return text;
}

QString commandHelp(const QString &program, const CommandText &command)
{
    const QString name = program == nameOf(command) ? program : QString(program + u' ' + nameOf(command));
    QString text = u"Usage: %1 %2\n\n%3\n"_s.arg(name, QStringView(command.usage), QStringView(command.summary));
    if (*command.details)
        text += u'\n' + QStringView(command.details) + u'\n';
    return text + u'\n' + optionLines(command.options) + optionLines(standardOptions(command));
}

QByteArray manualPage(const ProgramManual &manual)
{
    const CommandText &program = manual.program;
    const QString name = roff(program.name);
    QString text = u".TH "_s + nameOf(program).toUpper() + u" 1 \"\" \"ARVO "_s + programVersion() + u"\" ARVO\n"_s +
                   u".SH NAME\n"_s + name + u" \\- "_s + roff(program.summary) + u"\n.SH SYNOPSIS\n.B "_s + name +
                   u"\n.I "_s + roffArgument(QString::fromUtf16(program.usage)) + u"\n.SH DESCRIPTION\n"_s +
                   roffParagraphs(QString::fromUtf16(program.details)) + u".SH OPTIONS\n"_s +
                   roffOptions(program.options) + roffOptions(kStandardOptions);
    if (!manual.commands.isEmpty())
        text += u".SH COMMANDS\n"_s;
    for (const CommandText &command : manual.commands) {
        text += u".SS "_s + roffArgument(nameOf(command)) + u"\n.B "_s +
                roffArgument(nameOf(program) + u' ' + nameOf(command));
        if (*command.usage)
            text += u"\n.I "_s + roffArgument(QString::fromUtf16(command.usage));
        text += u"\n.PP\n"_s + roff(asSentence(command.summary)) + u'\n';
        if (*command.details)
            text += roff(command.details) + u'\n';
        text += roffOptions(command.options);
    }
    for (const ProgramManual::Section &section : manual.sections)
        text += u".SH "_s + roffArgument(section.title) + u'\n' + roffParagraphs(section.text);
    return text.toUtf8();
}

QByteArray bashCompletion(const ProgramManual &manual)
{
    const QString name = nameOf(manual.program);
    const QString function = u'_' + QString(name).replace(u'-', u'_');
    QString code = u"# Completion of the arguments of %1 for bash.\n%2()\n{\n    local cur prev words cword\n"
                   u"    _init_completion || return\n"_s.arg(name, function);
    if (manual.commands.isEmpty()) {
        code += bashArguments(manual.program, u"    "_s);
    } else {
        QStringList names;
        QString cases;
        for (const CommandText &command : manual.commands) {
            names.append(nameOf(command));
            if (names.last() != u"help"_s)
                cases +=
                    u"    "_s + names.last() + u")\n"_s + bashArguments(command, u"        "_s) + u"        ;;\n"_s;
        }
        const QString first = bashWords(names + QStringList{u"--help"_s, u"--version"_s});
        code += u"    if ((cword == 1)); then "_s + first + u"; return; fi\n    case ${words[1]} in\n"_s + cases +
                u"    help) ((cword == 2)) && "_s + bashWords(names) + u" ;;\n    esac\n"_s;
    }
    code += u"} &&\n    complete -F %1 %2\n"_s.arg(function, name);
    return code.toUtf8();
}

} // namespace tarnwick
