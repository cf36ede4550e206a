// The edits of a HistoryList that are not stored yet, kept for the case of a crash.
#include "HistoryList.h"
#include "Messages.h"

#include <brannock/HistoryFields.h>
#include <QScopeGuard>
#include <QSet>
#include <tarnwick/TimeInFile.h>

namespace results {

using namespace Qt::StringLiterals;
using brannock::HistoryEntry;
using tarnwick::JFile;

namespace {

/// Reads or writes the fields of an entry.
class EntryFields
{
public:
    explicit EntryFields(JFile &file)
        : m_file(file)
    {
    }
    template <typename T, typename... Range>
    void field(QStringView, T &value, Range...)
    {
        m_file.serialize(value);
    }
    template <typename T, typename... Range>
    void sparse(QStringView, T &value, Range...)
    {
        m_file.serialize(value);
    }
    void field(QStringView, tarnwick::JDateTime &time) { tarnwick::serializeTime(m_file, time); }

private:
    JFile &m_file;
};

void serializeEntry(JFile &file, HistoryEntry &entry)
{
    EntryFields fields(file);
    brannock::visitHistoryFields(entry, fields);
}

bool isEqual(HistoryEntry left, HistoryEntry right)
{
    left.edited = right.edited; // that only tells that there was a change
    JFile one = JFile::forWriting({});
    serializeEntry(one, left);
    JFile other = JFile::forWriting({});
    serializeEntry(other, right);
    return one.bytes() == other.bytes();
}

} // namespace

/// One entry that was edited.
struct HistoryList::Edit
{
    qint32 index = 0; ///< in the order of fetch or file
    bool keep = false;
    HistoryEntry before;
    HistoryEntry after;

    bool concerns(const HistoryEntry &entry) const { return isEqual(entry, before) || isEqual(entry, after); }
};

/// What a copy for recovery contains, in both directions. The entries themselves are read again.
struct HistoryList::Draft
{
    QString file; ///< empty: entries of the database
    bool isFiltered = true;
    HistoryFilter filter;
    QList<Edit> edits;

    void serialize(JFile &copy)
    {
        constexpr int kVersion = 1;
        constexpr int kSmallestEdit = 100; // numbers, and the byte counts of the texts
        copy.header(u"HistoryDraft"_s, kVersion);
        copy.serialize(file);
        copy.serialize(isFiltered);
        filter.serialize(copy);
        copy.list(edits, kSmallestEdit, [](JFile &f, Edit &edit) {
            f.serialize(edit.index);
            f.serialize(edit.keep);
            serializeEntry(f, edit.before);
            serializeEntry(f, edit.after);
        });
    }
};

QByteArray HistoryList::draft() const
{
    // A list that was only fetched or filtered is no work that would be lost.
    if (!m_changed || m_undo.empty())
        return {};
    Draft draft;
    draft.file = m_file;
    draft.isFiltered = m_isFiltered;
    draft.filter = m_options->filter;
    QSet<quint32> known;
    for (const Change &change : m_undo) {
        if (known.contains(change.index))
            continue;
        known.insert(change.index);
        draft.edits.append({qint32(change.index), m_rows[change.index].keep, m_rows.entry(change.before),
                            m_rows.entry(m_rows[change.index])});
    }
    JFile copy = JFile::forWriting({});
    draft.serialize(copy);
    return copy.bytes();
}

void HistoryList::restoreDraft(const QByteArray &content)
{
    JFile copy = JFile::fromBytes(content, u"the copy"_s);
    Draft draft;
    draft.serialize(copy);
    auto restoring = qScopeGuard([this, before = choices()] { choices() = before; });
    choices() = draft.filter;
    const bool isRead = draft.file.isEmpty() ? fetchFilters() && fetch() == tarnwick::Outcome::Done : open(draft.file);
    if (!isRead)
        throw tarnwick::Cancelled();
    restoring.dismiss();
    m_isFiltered = draft.isFiltered;
    applyEdits(draft);
}

void HistoryList::applyEdits(const Draft &draft)
{
    // Usually each entry is where it was. If not, those of its tube are looked at.
    QMultiHash<quint64, const Edit *> missing;
    QSet<size_t> taken;
    for (const Edit &edit : draft.edits) {
        const auto index = size_t(edit.index);
        if (edit.index >= 0 && index < m_rows.count() && edit.concerns(m_rows.entry(m_rows[index]))) {
            taken.insert(index);
            applyEdit(index, edit);
        } else {
            missing.insert(addressKey(edit.before.sec, edit.before.row, edit.before.col), &edit);
        }
    }
    for (size_t i = 0; i < m_rows.count() && !missing.isEmpty(); ++i) {
        auto [found, end] = missing.equal_range(addressKey(m_rows[i].sec, m_rows[i].row, m_rows[i].col));
        while (found != end && (taken.contains(i) || !(*found)->concerns(m_rows.entry(m_rows[i]))))
            ++found;
        if (found == end)
            continue;
        applyEdit(i, **found);
        missing.erase(found);
    }
    m_rows.numberInAnyOrder();
    m_isSorted = false;
    m_changed = true;
    countKept();
    if (missing.isEmpty())
        return;
    constexpr int kMostNamed = 20;
    QStringList lines;
    for (const Edit *edit : std::as_const(missing)) {
        const HistoryEntry &entry = edit->after;
        if (lines.size() < kMostNamed)
            lines.append(u"\t%1 %2 %3"_s.arg(m_project->steamGen.tubeName({entry.sec, entry.row, entry.col}),
                                             entry.outage, entry.defect));
    }
    m_session->prompts().information(messages::kEditsNotRestored, missing.size(), draft.edits.size(),
                                     lines.join(u'\n'));
}

void HistoryList::applyEdit(size_t index, const Edit &edit)
{
    HistoryRow row = m_rows[index];
    m_undo.push_back({quint32(index), row});
    if (!isEqual(edit.before, edit.after))
        row = m_rows.packed(edit.after);
    row.keep = edit.keep;
    row.edited = true;
    m_rows[index] = row;
}

} // namespace results
