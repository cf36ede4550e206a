#include "TubeGroups.h"

#include "Messages.h"

#include <algorithm>

namespace plans {

using namespace Qt::StringLiterals;
using ellery::TubeAddress;

TubeGroup::TubeGroup(const QList<TubeAddress> &addresses)
    : m_addresses(addresses.begin(), addresses.end())
{
    std::sort(m_addresses.begin(), m_addresses.end());
    m_addresses.erase(std::unique(m_addresses.begin(), m_addresses.end()), m_addresses.end());
}

bool TubeGroup::contains(const TubeAddress &address) const
{
    return std::binary_search(m_addresses.begin(), m_addresses.end(), address);
}

QList<TubeAddress> missingFrom(const QList<TubeAddress> &own, const QList<TubeAddress> &others)
{
    const TubeGroup present(own);
    QList<qsizetype> places;
    for (qsizetype i = 0; i < others.size(); ++i) {
        if (!present.contains(others[i]))
            places.append(i);
    }
    // Of equal addresses the first.
    std::stable_sort(places.begin(), places.end(), [&](qsizetype a, qsizetype b) { return others[a] < others[b]; });
    places.erase(
        std::unique(places.begin(), places.end(), [&](qsizetype a, qsizetype b) { return others[a] == others[b]; }),
        places.end());
    std::sort(places.begin(), places.end());
    QList<TubeAddress> missing;
    missing.reserve(places.size());
    for (const qsizetype place : std::as_const(places))
        missing.append(others[place]);
    return missing;
}

namespace {

/// In a component with sections a line may name row and column only, if one section alone has such a tube.
int tubeInAnySection(const ellery::SteamGen &component, const QString &line)
{
    int found = -1;
    for (int section = 0; section < component.numSection(); ++section) {
        const QString label = component.tubeLabel(ellery::Axis::Sec, section);
        const int tube = label.isEmpty() ? -1 : component.parseTube(QString(label + u' ' + line));
        if (tube < 0)
            continue;
        if (found >= 0)
            return -1;
        found = tube;
    }
    return found;
}

/// A component without sections: a list may still name the section of all tubes.
int tubeWithSection(const ellery::SteamGen &component, const QString &line)
{
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const bool isNamed =
        words.size() == 3 && component.numTube() > 0 && words[0] == QString::number(component[0].address.sec);
    return isNamed ? component.parseTube(words.sliced(1).join(u' ')) : -1;
}

} // namespace

AddressText parseAddresses(const QString &text, const ellery::SteamGen &component)
{
    AddressText result;
    int number = 0;
    for (const QStringView raw : QStringView(text).split(u'\n')) {
        ++number;
        const QString line = raw.toString().simplified();
        if (line.isEmpty())
            continue;
        int tube = component.parseTube(line);
        if (tube < 0)
            tube = component.hasSections() ? tubeInAnySection(component, line) : tubeWithSection(component, line);
        if (tube >= 0)
            result.tubes.append(component[tube].address);
        else
            result.notUnderstood.append({number, line});
    }
    return result;
}

void AddressText::report(tarnwick::UserPrompts &prompts, int added) const
{
    const int known = int(tubes.size()) - added;
    const QString result = known == 0 ? tarnwick::format(messages::kTubesPasted.text, added)
                                      : tarnwick::format(messages::kTubesPastedAgain.text, added, known);
    if (notUnderstood.isEmpty())
        prompts.showStatus(result);
    else
        prompts.information(messages::kNotUnderstood, result, int(notUnderstood.size()), problems());
}

QString AddressText::problems() const
{
    constexpr qsizetype kMostLines = 20;
    constexpr int kMostCharacters = 60;
    QString text;
    for (const Line &line : notUnderstood.first(std::min(kMostLines, notUnderstood.size()))) {
        const bool isLong = line.text.size() > kMostCharacters;
        text += tarnwick::format(messages::kNotUnderstoodLine.text, line.line,
                                 isLong ? line.text.left(kMostCharacters) + u" ..."_s : line.text);
    }
    if (notUnderstood.size() > kMostLines)
        text += tarnwick::format(messages::kMoreNotUnderstood.text, notUnderstood.size() - kMostLines);
    return text;
}

} // namespace plans
