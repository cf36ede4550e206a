#pragma once
#include "RepairOptions.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <ellery/TubeStates.h>
#include <functional>

namespace results {

/// What the repair dialog and the command line work on: the repairs in memory, their filter and selection. All changes
/// are written together in one transaction when the list is closed, so that an open list keeps no other program
/// waiting. Everything that fails is reported to the session's prompts.
class RepairList
{
public:
    /// progress shows and can cancel the wait for another program that uses the database; it may be null. The
    /// references must outlive the list.
    RepairList(db::DatabaseSession &session, const brannock::Project &project, RepairOptions &options,
               tarnwick::Progress *progress = nullptr)
        : m_session(&session)
        , m_project(&project)
        , m_options(&options)
        , m_progress(progress)
    {
    }
    RepairList(const RepairList &) = delete;
    RepairList &operator=(const RepairList &) = delete;

    /// Replaces the progress; null for none.
    void setProgress(tarnwick::Progress *progress) { m_progress = progress; }

    /// Reads every repair. Returns false after reporting why that is not possible, or if it was cancelled.
    bool open();
    bool isReadOnly() const { return !m_session->isUpdatable(); }

    // The repairs, in the order of the fetch, and those that pass the filter. A place is an index in repairs, a row one
    // in the visible ones.
    int count() const { return int(m_items.size()); }
    const Repair &repair(int place) const { return m_items[size_t(place)].repair; }
    bool isSelected(int place) const { return m_items[size_t(place)].selected; }
    bool isNew(int place) const { return m_items[size_t(place)].bookmark.isEmpty(); }
    const QList<int> &visible() const { return m_visible; }
    void setSelected(int place, bool selected);

    // The filter. Call applyFilter() after a change of the options.
    RepairOptions &options() { return *m_options; }
    void applyFilter();
    /// "All" first, then those of the repairs; for the types also those that the program offers.
    QStringList outageChoices() const;
    QStringList typeChoices() const;

    struct Counts
    {
        int total = 0;
        int selected = 0;
        int scheduled = 0;
        int added = 0;
        int visible = 0;
    };
    Counts counts() const;
    QString countsText() const;

    // Commands of the Edit menu. Select All takes the visible repairs, the others look at all repairs.
    void selectAll();
    /// Selects every repair that equals the one before it in tube, type and location, and says how many there are.
    /// Returns the place of the first, or -1. If the filter hides it, all entries are shown.
    int selectDuplicates();
    /// All that are still to be done.
    void selectAllScheduled();
    /// Those that were scheduled on the same day as the repair at this place: the current row.
    void selectSameDate(int place);
    void selectTubes(const ellery::TubeStates &tubes); ///< those of the tubes that are selected on the map
    void clearSelections();
    QList<int> selection() const;
    QList<int> duplicates() const;

    // Changes.
    void change(int place, const Repair &repair);
    /// Asks, then removes the selected repairs from the list; the stored ones are deleted when the list is closed.
    void deleteSelected();
    /// A new repair as the attribute dialog first shows it.
    Repair scheduleTemplate() const;
    /// Checks what the attribute dialog gives: reports a missing repair type or a text that is too long.
    bool isAcceptable(const Repair &repair) const;
    /// The same for a repair that exists: it needs its scheduled date, too.
    bool isAcceptableEdit(const Repair &repair) const;
    /// Adds a copy of the template for each tube, shows all entries, and tells how many were added and how many
    /// duplicates there are. Without a scheduled date the copies get the present time.
    void schedule(const QList<qint32> &tubes, const Repair &pattern);
    /// Completes the repairs at these places that are still scheduled. Returns their number.
    int complete(const QList<int> &places, const tarnwick::JDateTime &when);
    /// Gives the selected repairs, in their order, the heat numbers of as many lines: inlet and outlet side with a tab
    /// between them. One line goes for all. An empty cell changes nothing.
    bool pasteHeats(const QString &text);
    bool isChanged() const { return m_changed; }
    /// Number of repairs that are added, changed or deleted when the list is closed with OK.
    int changeCount() const;

    /// The changes that are not written yet, for recovery; empty if there are none.
    QByteArray draft() const;
    /// Repeats the changes of a draft and shows all entries. Throws Error if it cannot be read.
    void restoreDraft(const QByteArray &content);

    /// The tubes of the repairs at these places, each once, for the map. Tubes that do not exist are told.
    QList<qint32> tubesOf(const QList<int> &places) const;
    QList<int> scheduledPlaces() const;
    QString tubeName(const Repair &repair) const;

    /// Writes everything that was changed and commits. Asks about repairs that another program has changed or deleted.
    /// Returns false if it failed, was cancelled, or the user wants to go back; then nothing is stored.
    bool closeWithOk();
    /// If something was changed, asks whether to save. Returns false if the list stays open.
    bool closeWithCancel();

    static QStringList columnTitles(const ellery::SteamGen &steamGen);
    /// The texts of a visible row, as the columns.
    QStringList cells(int row) const;

private:
    struct Item
    {
        Repair repair;
        QByteArray bookmark;                  ///< empty: not stored yet
        std::shared_ptr<const Repair> asRead; ///< as fetched, if it was changed since
        bool selected = false;
        bool isGone = false; ///< deleted by another program

        const Repair &fetched() const { return asRead ? *asRead : repair; }
        bool isEdited() const { return asRead && !(*asRead == repair); }
    };
    enum class Meanwhile { Write, Skip, GoBack };

    void read();
    bool writeInTransaction();
    bool write();
    bool writeItem(const Item &item);
    bool removeItems();
    std::optional<Repair> rowOf(const Item &item);
    Meanwhile askAbout(const Item &item, const tarnwick::Message &message);
    void findRowsAgain();
    void selectWhere(const std::function<bool(int place)> &take);
    void sortLikeFetch();

    db::DatabaseSession *m_session;
    const brannock::Project *m_project;
    RepairOptions *m_options;
    tarnwick::Progress *m_progress;
    std::unique_ptr<RepairTable> m_table;
    std::vector<Item> m_items;
    std::vector<Item> m_removed; ///< stored ones that are to be deleted
    QList<int> m_visible;
    bool m_changed = false;
    bool m_rowsDeleted = false; ///< by the present attempt to write
};

} // namespace results
