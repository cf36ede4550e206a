// Names of tubes: conversion between numbers and labels of rows, columns, sections and legs.
#include "SteamGen.h"

#include <tarnwick/StringToValue.h>

using namespace Qt::StringLiterals;

namespace ellery {

namespace {

constexpr Axis kAddressAxes[] = {Axis::Sec, Axis::Row, Axis::Col};

QList<QStringView> splitWords(QStringView text, QStringView separators)
{
    QList<QStringView> words;
    qsizetype from = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !text[i].isSpace() && !separators.contains(text[i]))
            continue;
        if (i > from)
            words.append(text.sliced(from, i - from));
        from = i + 1;
    }
    return words;
}

} // namespace

const QStringList &SteamGen::axisLabels(Axis axis) const
{
    static const QStringList legs = {u"OUTLET"_s, u"INLET"_s, u"UBEND"_s};
    const QStringList &own = labels[int(axis)];
    return axis == Axis::Leg && own.isEmpty() ? legs : own;
}

QString SteamGen::tubeLabel(Axis axis, int number) const
{
    const QStringList &list = axisLabels(axis);
    if (list.isEmpty())
        return number < 0 ? QString() : QString::number(number);
    return list.value(number);
}

QStringList SteamGen::labelList(Axis axis) const
{
    // Even without tubes there is one section.
    const int highest = axis == Axis::Sec ? m_numSection - 1 : maxNumber(axis);
    QStringList list;
    for (int number = 0; number <= highest; ++number)
        list.append(tubeLabel(axis, number));
    return list;
}

int SteamGen::stringToNumber(Axis axis, QStringView text) const
{
    const QStringView word = text.trimmed();
    if (word.isEmpty())
        return -1;
    const QStringList &list = axisLabels(axis);
    if (list.isEmpty()) {
        const std::optional<qint16> number = tarnwick::string_to_value<qint16>(word);
        return number && *number >= 0 ? *number : -1;
    }
    QHash<QString, int> &numbers = m_numbers[int(axis)];
    if (m_numberedLabels[int(axis)] != list) {
        m_numberedLabels[int(axis)] = list;
        numbers.clear();
        for (int i = int(list.size()) - 1; i >= 0; --i) {
            if (!list[i].isEmpty())
                numbers.insert(list[i].toLower(), i);
        }
    }
    return numbers.value(word.toString().toLower(), -1);
}

QString SteamGen::tubeName(const TubeAddress &address) const
{
    QString text;
    const int numbers[] = {address.sec, address.row, address.col};
    for (int i = hasSections() ? 0 : 1; i < 3; ++i) {
        if (!text.isEmpty())
            text += u' ';
        text += axisNames[int(kAddressAxes[i])] + u' ' + tubeLabel(kAddressAxes[i], numbers[i]);
    }
    return text;
}

int SteamGen::parseTube(QStringView text) const
{
    // Labels may contain dashes or slashes, so these are separators only if the text cannot be parsed otherwise.
    for (const QStringView separators : {QStringView(u",;=:"), QStringView(u",;=:-/")}) {
        const QList<QStringView> words = splitWords(text, separators);
        const int inOrder = parseInOrder(words);
        const int tube = inOrder >= 0 ? inOrder : parseNamed(words);
        if (tube >= 0)
            return tube;
    }
    return -1;
}

int SteamGen::parseInOrder(const QList<QStringView> &words) const
{
    const int first = hasSections() ? 0 : 1;
    if (words.size() != 3 - first)
        return -1;
    // If the only section of a component is not 0, its tubes are still addressed by row and column.
    int numbers[] = {m_tubes.isEmpty() ? 0 : m_tubes[0].address.sec, -1, -1};
    for (int i = first; i < 3; ++i)
        numbers[i] = stringToNumber(kAddressAxes[i], words[i - first]);
    return findTube(TubeAddress::of(numbers[0], numbers[1], numbers[2]));
}

bool SteamGen::isAxisWord(Axis axis, QStringView word) const
{
    const QString &axisName = axisNames[int(axis)];
    return word.compare(axisName, Qt::CaseInsensitive) == 0 ||
           (word.size() == 1 && word.compare(QStringView(axisName).left(1), Qt::CaseInsensitive) == 0);
}

int SteamGen::parseNamed(const QList<QStringView> &words) const
{
    int numbers[] = {hasSections() || m_tubes.isEmpty() ? -1 : m_tubes[0].address.sec, -1, -1};
    for (qsizetype w = 0; w < words.size(); ++w) {
        bool known = false;
        for (int i = 0; i < 3 && !known; ++i) {
            const Axis axis = kAddressAxes[i];
            const QString &axisName = axisNames[int(axis)];
            if (isAxisWord(axis, words[w]) && w + 1 < words.size()) {
                numbers[i] = stringToNumber(axis, words[++w]);
                known = true;
                continue;
            }
            for (const QStringView prefix : {QStringView(axisName), QStringView(axisName).left(1)}) {
                const int number = !prefix.isEmpty() && words[w].startsWith(prefix, Qt::CaseInsensitive)
                                       ? stringToNumber(axis, words[w].sliced(prefix.size()))
                                       : -1;
                if (number >= 0 && !known) {
                    numbers[i] = number;
                    known = true;
                }
            }
        }
        if (!known)
            return -1;
    }
    return findTube(TubeAddress::of(numbers[0], numbers[1], numbers[2]));
}

} // namespace ellery
