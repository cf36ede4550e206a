#pragma once
#include "ArvoHistoryOptions.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <tarnwick/Failures.h>

namespace results {

/// What the history dialog and the command line work on: the entries, the filter, the order, the edits of the user and
/// the file. Everything that fails is reported to the session's prompts.
class HistoryList
{
public:
    /// progress shows and can cancel a fetch; it may be null. The references must outlive the list.
    HistoryList(db::DatabaseSession &session, const brannock::Project &project, ArvoHistoryOptions &options,
                tarnwick::Progress *progress = nullptr)
        : m_session(&session)
        , m_project(&project)
        , m_options(&options)
        , m_progress(progress)
    {
    }

    /// Replaces the progress; null for none.
    void setProgress(tarnwick::Progress *progress) { m_progress = progress; }

    /// Fills outage and defect filter from the database. Choices of the options that still exist are kept.
    bool fetchFilters();
    /// Fetches the entries, numbers and filters them. If that fails or is cancelled, the list is unchanged.
    tarnwick::Outcome fetch();
    /// Asks whether to store changes before other entries replace these. Returns false if they must stay.
    bool mayReplace();
    /// Loads a history file in place of the entries. Outages and codes that the filter lacks are added to it, and all
    /// entries are kept until the filter is changed.
    bool open(const QString &machinePath);
    /// Stores the kept entries in the present order. The file is then the one of save(): for entries of the database
    /// also in later sessions.
    bool saveAs(const QString &machinePath);
    bool save();
    /// Asks the user, then removes all entries.
    void clear();

    /// The filter. Call applyFilter() after each change.
    HistoryFilter &choices() { return m_options->filter; }
    void applyFilter();
    void sortBy(HistorySort sort);
    HistorySort sortedBy() const { return m_sort; }

    // The entries in the present order.
    int count() const { return int(m_rows.count()); }
    int kept() const { return int(m_kept); }
    bool isKept(int place) const { return rowAt(place).keep; }
    bool isEdited(int place) const { return rowAt(place).edited; }
    const HistoryRow &rowAt(int place) const { return m_rows[indexOf(place)]; }
    brannock::HistoryEntry entryAt(int place) const { return m_rows.entry(indexOf(place)); }
    /// "%7D of %D": kept entries of all.
    QString counterText() const;
    /// Without entries and file: "History".
    QString caption() const;
    QString printHeader() const;

    // Changes of the user. An entry that was changed keeps its mark when the filter changes.
    void edit(int place, const brannock::HistoryEntry &entry);
    void setKept(int place, bool keep);
    bool canUndo() const { return !m_undo.empty(); }
    /// Takes the last change of an entry back. Returns its place in the present order; -1 if there is none.
    int undo();
    bool isChanged() const { return m_changed; }

    /// The unsaved edits, and where their entries are from, for recovery; empty if there are none.
    QByteArray draft() const;
    /// Reads the entries of a draft again and repeats its edits. Those whose entries are not there any more are told.
    /// Throws Error if the draft cannot be read, and Cancelled after reporting why the entries cannot be read now.
    void restoreDraft(const QByteArray &content);

    /// Stores the history if anything changed, then the options. Returns false if something could not be stored.
    bool closeWithOk();
    /// If anything changed, asks whether to save: Cancel returns false.
    bool closeWithCancel();

    // The table of the entries: the address of the tube, then historyColumns().
    static QStringList columnTitles(const ellery::SteamGen &steamGen);
    /// The texts of an entry, as the columns.
    QStringList cells(int place) const;

private:
    struct Change
    {
        quint32 index;
        HistoryRow before;
    };
    struct Draft;
    struct Edit;

    size_t indexOf(int place) const { return m_order.empty() ? size_t(place) : m_order[size_t(place)]; }
    void change(int place, const HistoryRow &row);
    void put(size_t index, const HistoryRow &row);
    void replace(HistoryRows &&rows);
    void sort();
    void addMissingChoices();
    void countKept();
    void applyEdits(const Draft &draft);
    void applyEdit(size_t index, const Edit &edit);

    db::DatabaseSession *m_session;
    const brannock::Project *m_project;
    ArvoHistoryOptions *m_options;
    tarnwick::Progress *m_progress;
    HistoryRows m_rows;
    std::vector<quint32> m_order; ///< empty: the order of the entries themselves
    HistorySort m_sort = HistorySort::Fetched;
    bool m_isSorted = false; ///< m_order is that of m_sort: no filter changes it, an edit may
    size_t m_kept = 0;
    std::vector<Change> m_undo;
    bool m_changed = false;
    bool m_isFiltered = false;  ///< which entries are kept comes from the present filter, not from a file
    QString m_file;             ///< path of the file that was loaded; empty after a fetch
    brannock::History m_loaded; ///< site and origin of that file
};

} // namespace results
