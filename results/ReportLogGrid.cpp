#include "ReportLogGrid.h"

#include "UploadRun.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <tarnwick/JDateTime.h>

#include <algorithm>

namespace results {

using namespace Qt::StringLiterals;
using brannock::ReportLog;

namespace {

enum Column { Time, User, Work, File, State, Entries, Stored, Skipped, Problems, Folder, kColumns };

bool isNumber(int column)
{
    return column >= Entries && column <= Problems;
}

int numberIn(const ReportLog::Entry &entry, int column)
{
    switch (column) {
    case Entries:
        return entry.entries;
    case Stored:
        return entry.stored;
    case Skipped:
        return entry.skipped;
    default:
        return entry.problems;
    }
}

} // namespace

ReportLogGrid::ReportLogGrid(const ReportLog &log, dao::Database *database)
    : m_entries(log.entries(&m_damaged))
{
    std::reverse(m_entries.begin(), m_entries.end());
    for (const ReportLog::Entry &entry : std::as_const(m_entries))
        m_states.append(loggedState(entry, database));
}

QString ReportLogGrid::summary() const
{
    if (m_entries.isEmpty() && m_damaged == 0)
        return u"Nothing was uploaded or converted yet."_s;
    QStringList states = m_states;
    states.removeDuplicates();
    QStringList counts;
    for (const QString &state : std::as_const(states))
        counts.append(u"%L1 %2"_s.arg(m_states.count(state)).arg(state));
    if (m_damaged > 0)
        counts.append(u"%L1 lines cannot be read"_s.arg(m_damaged));
    return u"%L1 uploads and conversions: %2."_s.arg(m_entries.size()).arg(counts.join(u"; "_s));
}

int ReportLogGrid::columnCount() const
{
    return kColumns;
}

tarnwick::GridColumn ReportLogGrid::column(int column) const
{
    static constexpr struct
    {
        const char16_t *title;
        int width;
    } kTitles[] = {{u"TIME", 19},   {u"USER", 10},  {u"WORK", 11},   {u"FILE", 24},    {u"STATE", 22},
                   {u"ENTRIES", 8}, {u"STORED", 8}, {u"SKIPPED", 8}, {u"PROBLEMS", 9}, {u"FOLDER", 40}};
    tarnwick::GridColumn result;
    result.title = QString::fromUtf16(kTitles[column].title);
    result.width = kTitles[column].width;
    result.align = isNumber(column) ? tarnwick::ColumnAlign::Right : tarnwick::ColumnAlign::Left;
    return result;
}

QString ReportLogGrid::text(int row, int column) const
{
    const ReportLog::Entry &entry = m_entries[row];
    switch (column) {
    case Time: {
        const QDateTime time = QDateTime::fromString(entry.time, Qt::ISODate);
        return time.isValid() ? tarnwick::JDateTime::fromSeconds(time.toSecsSinceEpoch()).toString() : entry.time;
    }
    case User:
        return entry.user;
    case Work:
        return entry.work;
    case File:
        return QFileInfo(entry.file).fileName();
    case Folder:
        return QDir::toNativeSeparators(QFileInfo(entry.file).path());
    case State:
        return m_states[row];
    default:
        break;
    }
    // Work that was interrupted has no numbers.
    return entry.state == ReportLog::Entry::State::Interrupted ? QString() : QString::number(numberIn(entry, column));
}

QVariant ReportLogGrid::value(int row, int column) const
{
    if (column == Time)
        return QDateTime::fromString(m_entries[row].time, Qt::ISODate);
    const QString shown = text(row, column);
    return isNumber(column) && !shown.isEmpty() ? QVariant(shown.toInt()) : QVariant(shown);
}

tarnwick::RowColours ReportLogGrid::colours(int row) const
{
    constexpr tarnwick::ColourRef kNotStored(0x0000C0);
    const bool isStored = m_entries[row].state == ReportLog::Entry::State::Stored;
    return isStored ? tarnwick::RowColours{} : tarnwick::RowColours{.foreground = kNotStored};
}

} // namespace results
