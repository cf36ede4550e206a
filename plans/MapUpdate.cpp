#include "MapUpdate.h"

#include "Messages.h"
#include "QuerySource.h"

#include <QSet>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::format;

namespace plans {

namespace {

/// A box with more lines does not fit on a small screen.
constexpr qsizetype kMostLines = 12;
/// So few tubes are named; more are counted.
constexpr qsizetype kMostNames = 4;

QString boundedLines(const QStringList &lines)
{
    if (lines.size() <= kMostLines)
        return lines.join(u'\n');
    const QString more = format(u"    and %D more", lines.size() - kMostLines);
    return lines.first(kMostLines).join(u'\n') + u'\n' + more;
}

QString entryName(const MapLegend &legend, int index)
{
    return format(u"    %d  %S", index + 1, legend.entry(index).label.trimmed());
}

QString entryNames(const MapLegend &legend, const QList<int> &entries)
{
    QStringList lines;
    for (const int index : entries)
        lines.append(entryName(legend, index));
    return boundedLines(lines);
}

/// The tubes of one list that the other does not hold, each once.
QList<qint32> without(const QList<qint32> &tubes, const QList<qint32> &others)
{
    QSet<qint32> seen(others.begin(), others.end());
    QList<qint32> left;
    for (const qint32 tube : tubes) {
        if (!seen.contains(tube)) {
            seen.insert(tube);
            left.append(tube);
        }
    }
    return left;
}

QString countText(const ellery::SteamGen &steamGen, const QList<qint32> &tubes, QStringView what)
{
    const QString count = format(u"%D tube%s %S", tubes.size(), tubes.size() == 1 ? u""_s : u"s"_s, what);
    if (tubes.size() > kMostNames)
        return count;
    QStringList names;
    for (const qint32 tube : tubes) {
        const ellery::TubeAddress address = steamGen[tube].address;
        names.append(steamGen.tubeName(address.row, address.col, address.sec));
    }
    return count + u" ("_s + names.join(u", "_s) + u')';
}

} // namespace

bool MapUpdate::confirm()
{
    const MapLegend &legend = m_host.legend();
    QList<int> losing;
    QList<int> keeping;
    for (int i = 0; i < legend.count(); ++i) {
        const MapFill &fill = legend.entry(i);
        if (fill.need() == MapFill::Need::Selection && m_host.tubes().selectedCount() == 0 && !fill.tubes.isEmpty())
            losing.append(i);
        else if (fill.need() == MapFill::Need::Database && !m_host.queries().isReady())
            keeping.append(i);
    }
    m_left = keeping;
    if (losing.isEmpty() && keeping.isEmpty())
        return true;
    QString text;
    if (!losing.isEmpty())
        text += format(messages::kEntriesLoseTubes.text, entryNames(legend, losing));
    if (!keeping.isEmpty())
        text += format(messages::kEntriesNotComputed.text, entryNames(legend, keeping));
    text += QString::fromUtf16(losing.isEmpty() ? messages::kAskUpdate.text : messages::kAskLeaveEntries.text);
    const Answer answer = m_host.prompts().ask(losing.isEmpty() ? Buttons::YesNo : Buttons::YesNoCancel, text);
    if (answer == Answer::Cancel || (losing.isEmpty() && answer == Answer::No)) {
        m_host.prompts().status(messages::kUpdateCancelled);
        return false;
    }
    if (answer == Answer::Yes)
        m_left += losing;
    return true;
}

bool MapUpdate::run(tarnwick::Progress *progress)
{
    m_before = m_host.legend().copyEntries();
    return m_host.legend().updateAll(m_host, progress, m_left);
}

QString MapUpdate::changes(int index) const
{
    const QList<qint32> &before = m_before[size_t(index)]->tubes;
    const QList<qint32> &now = m_host.legend().entry(index).tubes;
    const QList<qint32> added = without(now, before);
    const QList<qint32> removed = without(before, now);
    QStringList parts;
    if (!added.isEmpty())
        parts.append(countText(m_host.steamGen(), added, u"added"));
    if (!removed.isEmpty())
        parts.append(countText(m_host.steamGen(), removed, u"removed"));
    return parts.join(u", "_s);
}

void MapUpdate::tell()
{
    const MapLegend &legend = m_host.legend();
    QStringList lines;
    for (int i = 0; i < legend.count() && i < int(m_before.size()); ++i) {
        if (const QString text = changes(i); !text.isEmpty())
            lines.append(entryName(legend, i) + u": "_s + text);
    }
    if (!lines.isEmpty())
        m_host.prompts().information(messages::kUpdateChanged, boundedLines(lines));
}

} // namespace plans
