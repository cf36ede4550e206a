#include "MapUpdate.h"

#include "Messages.h"
#include <QSet>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::format;

namespace map {

namespace {

/// A message box with more lines does not fit on a small screen.
constexpr qsizetype kMostLines = 12;
/// Up to this number, tubes are named; more are counted.
constexpr qsizetype kMostNames = 4;

QString boundedLines(const QStringList &lines)
{
    if (lines.size() <= kMostLines)
        return lines.join(u'\n');
    const QString more = format(u"    and %D more", lines.size() - kMostLines);
    return lines.first(kMostLines).join(u'\n') + u'\n' + more;
}

QString entryName(const MapDocument &document, int index)
{
    return format(u"    %d  %S", index + 1, document.entry(index).label.trimmed());
}

QString entryNames(const MapDocument &document, const QList<int> &entries)
{
    QStringList lines;
    for (const int index : entries)
        lines.append(entryName(document, index));
    return boundedLines(lines);
}

/// Tubes of one list that are not in the other, each once.
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

/// While it exists, queries use known parameters without asking and can be cancelled.
class QuietQueries
{
public:
    QuietQueries(plans::QuerySource &source, tarnwick::Progress *progress)
        : m_source(source)
    {
        m_source.setQuiet(true);
        m_source.setProgress(progress);
    }
    ~QuietQueries()
    {
        m_source.setProgress(nullptr);
        m_source.setQuiet(false);
    }
    QuietQueries(const QuietQueries &) = delete;
    QuietQueries &operator=(const QuietQueries &) = delete;

private:
    plans::QuerySource &m_source;
};

QString countText(const ellery::SteamGen &steamGen, const QList<qint32> &tubes, QStringView what)
{
    const QString count = format(u"%D tube%s %S", tubes.size(), tubes.size() == 1 ? u""_s : u"s"_s, what);
    if (tubes.size() > kMostNames)
        return count;
    QStringList names;
    for (const qint32 tube : tubes)
        names.append(steamGen.tubeName(steamGen[tube].address));
    return count + u" ("_s + names.join(u", "_s) + u')';
}

} // namespace

bool MapUpdate::confirm()
{
    QList<int> losing;
    QList<int> keeping;
    for (int i = 0; i < m_document.count(); ++i) {
        const plans::MapFill &fill = m_document.entry(i);
        if (fill.need() == plans::MapFill::Need::Selection && m_document.tubes().selectedCount() == 0 &&
            !fill.tubes.isEmpty())
            losing.append(i);
        else if (fill.need() == plans::MapFill::Need::Database && !m_runner.queries().isReady())
            keeping.append(i);
    }
    m_excluded = keeping;
    if (losing.isEmpty() && keeping.isEmpty())
        return true;
    QString text;
    if (!losing.isEmpty())
        text += format(messages::kEntriesLoseTubes.text, entryNames(m_document, losing));
    if (!keeping.isEmpty())
        text += format(messages::kEntriesNotComputed.text, entryNames(m_document, keeping));
    text += QString::fromUtf16(losing.isEmpty() ? messages::kAskUpdate.text : messages::kAskLeaveEntries.text);
    const Answer answer = prompts().ask(losing.isEmpty() ? Buttons::YesNo : Buttons::YesNoCancel, text);
    if (answer == Answer::Cancel || (losing.isEmpty() && answer == Answer::No)) {
        prompts().status(messages::kUpdateCancelled);
        return false;
    }
    if (answer == Answer::Yes)
        m_excluded += losing;
    return true;
}

Entries MapUpdate::compute(tarnwick::Progress *progress) const
{
    const QuietQueries quiet(m_runner.queries(), progress);
    const ellery::SteamGen &component = m_document.component();
    ellery::TubeStates marked = m_document.tubes();
    marked.clearMarks();
    Entries entries = m_document.entries();
    for (int i = 0; i < int(entries.size()); ++i) {
        Entry &entry = entries[size_t(i)];
        const QString status = format(messages::kUpdatingEntry.text, i + 1, entry->label);
        prompts().showStatus(status);
        if (progress) {
            progress->report(i, qint64(entries.size()), status);
            if (progress->cancelled())
                throw tarnwick::Cancelled();
        }
        if (!m_excluded.contains(i)) {
            const std::shared_ptr<plans::MapFill> computed = entry->clone();
            m_runner.compute(*computed, component, marked);
            entry = computed;
        }
        entry->paint(component, marked);
    }
    return entries;
}

bool MapUpdate::run(tarnwick::Progress *progress)
{
    m_before = m_document.entries();
    prompts().status(messages::kUpdateBegins);
    Entries entries;
    try {
        entries = compute(progress);
    } catch (const tarnwick::Cancelled &) {
        prompts().status(messages::kUpdateCancelled);
        return false;
    }
    m_document.change(u"Update Map"_s, [&entries](MapEdit &edit) { edit.setEntries(entries); });
    prompts().status(messages::kUpdateDone);
    return true;
}

QString MapUpdate::changes(int place) const
{
    const QList<qint32> &before = m_before[size_t(place)]->tubes;
    const QList<qint32> &now = m_document.entry(place).tubes;
    const QList<qint32> added = without(now, before);
    const QList<qint32> removed = without(before, now);
    QStringList parts;
    if (!added.isEmpty())
        parts.append(countText(m_document.component(), added, u"added"));
    if (!removed.isEmpty())
        parts.append(countText(m_document.component(), removed, u"removed"));
    return parts.join(u", "_s);
}

void MapUpdate::report()
{
    QStringList lines;
    for (int i = 0; i < m_document.count() && i < int(m_before.size()); ++i) {
        if (const QString text = changes(i); !text.isEmpty())
            lines.append(entryName(m_document, i) + u": "_s + text);
    }
    if (!lines.isEmpty())
        prompts().information(messages::kUpdateChanged, boundedLines(lines));
}

} // namespace map
