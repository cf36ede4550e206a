#pragma once
#include "TubeGroups.h"
#include "TubeListFile.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <ellery/TubeStates.h>
#include <tarnwick/base/Progress.h>

namespace plans {

/// Logic of the dialog "List Fill", without a window: the list being edited, where it came from, and whether it was
/// changed. Every command reports what it did or why it failed.
class ListEditor
{
public:
    /// All must outlive the editor.
    ListEditor(db::DatabaseSession &session, const brannock::Project &project)
        : m_session(session)
        , m_project(project)
    {
    }

    const TubeList &list() const { return m_list; }
    const ellery::SteamGen &component() const { return m_project.steamGen; }
    tarnwick::UserPrompts &prompts() const { return m_session.prompts(); }
    db::DatabaseSession &session() const { return m_session; }
    /// Takes over the list of a fill.
    void setList(const TubeList &list);
    ListFillOptions options;

    /// False if the list is a tube set of the database.
    bool isFromFile() const { return m_isFromFile; }
    bool isModified() const { return m_isModified; }
    /// "File List - ..." or "ARVO List - ..."
    QString caption() const;
    QString shownName() const;

    // Editing.
    enum class Order { Row = 0, Column = 1, Entry = 2 };
    Order order() const { return m_order; }
    void sort(Order order);
    void setDescription(const QString &description);
    /// Change a cell. Return false after reporting a text that is no number or label.
    bool setNumber(int place, const QString &text);
    bool setLabel(int place, ellery::Axis axis, const QString &text);
    /// Append every tube that is selected or carries a symbol, also those that the list has. Return the place of the
    /// first.
    int addSelected(const ellery::TubeStates &tubes);
    int addSymbols(const ellery::TubeStates &tubes);
    void removeEntries(const QList<int> &places);
    /// Moves entries so that they stand before another. Returns the new place of the first.
    int moveEntries(const QList<int> &places, int before);
    void combine(const QList<ellery::TubeAddress> &tubes, Combine how);
    /// Appends the tubes of a pasted text and reports lines that were not understood. Returns the place of the first.
    int paste(const QString &text);
    /// Asks first.
    bool clear();
    /// Numbers the entries from this number in the order of these places; the others follow.
    void setIndex(qint32 first, const QList<int> &places);
    bool isKnownTube(int place) const { return component().findTube(m_list.entries[place].address()) >= 0; }

    // Files. Machine paths.
    bool open(const QString &machinePath);
    bool store(const QString &machinePath);
    /// The list's file, for commands on it. Reports and returns an empty text if there is none.
    QString fileForTools() const;
    /// Machine path of the list's file; empty if there is none.
    const QString &file() const { return m_file; }
    /// Parses the list's file again for parsed(); the list stays as it is. Reports a failure and returns false.
    bool parseFile();
    /// How the file was parsed.
    const TubeListFile &parsed() const { return m_parsed; }

    // Database.
    bool fetch(const QString &name, tarnwick::Progress *progress);
    bool upload(const QString &name, tarnwick::Progress *progress);
    bool remove();

    /// The unsaved list for recovery; empty if nothing is unsaved.
    QByteArray draft() const;
    /// Throw JFileError if the copy cannot be read.
    void restoreDraft(const QByteArray &content);
    static QString nameInDraft(const QByteArray &content);

private:
    template <typename Takes>
    int add(const ellery::TubeStates &tubes, Takes takes);
    bool read(const QString &machinePath, TubeListFile &file) const;
    void append(const ellery::TubeAddress &address, const ellery::TubeMark &mark);
    void take(const TubeList &list, bool isFromFile, const QString &file);

    db::DatabaseSession &m_session;
    const brannock::Project &m_project;
    TubeList m_list;
    QString m_file;
    TubeListFile m_parsed;
    Order m_order = Order::Entry;
    bool m_isFromFile = true;
    bool m_isModified = false;
};

} // namespace plans
