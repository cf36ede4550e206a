#pragma once
#include "TubeGroups.h"

#include <brannock/InspPlan.h>
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <tarnwick/base/Progress.h>

namespace plans {

/// What the editors of plans and of tube lists have in common: entries that name tubes, the file or the object of the
/// database that they came from, and whether they were changed. Every command reports what it did or why it failed.
class EntriesEditor
{
public:
    /// Both must outlive the editor.
    EntriesEditor(db::DatabaseSession &session, const brannock::Project &project)
        : m_session(session)
        , m_project(project)
    {
    }
    virtual ~EntriesEditor() = default;
    EntriesEditor(const EntriesEditor &) = delete;
    EntriesEditor &operator=(const EntriesEditor &) = delete;

    const ellery::SteamGen &component() const { return m_project.steamGen; }
    tarnwick::UserPrompts &prompts() const { return m_session.prompts(); }
    db::DatabaseSession &session() const { return m_session; }

    /// True if the entries came from a file or are new, false if they came from the database.
    bool isFromFile() const { return m_isFromFile; }
    /// Machine path of the file; empty if there is none.
    const QString &file() const { return m_file; }
    bool isModified() const { return m_isModified; }
    virtual QString caption() const = 0;
    /// Name in questions; "Untitled" without one.
    virtual QString shownName() const = 0;
    virtual QString description() const = 0;
    /// One line of numbers: tubes, length, how much is done.
    virtual QString summary() const = 0;

    /// Entries, and the tube of one.
    virtual int count() const = 0;
    virtual ellery::TubeAddress address(int place) const = 0;
    /// Changes one number of an entry's address to that of a typed label. Returns false after reporting a text that is
    /// no label.
    virtual bool setLabel(int place, ellery::Axis axis, const QString &text) = 0;
    virtual void removeEntries(const QList<int> &places) = 0;

    using Order = brannock::InspPlan::Order;
    virtual Order order() const = 0;
    virtual void setOrder(Order order) = 0;
    /// Moves entries so that they stand before another. Returns the new place of the first; -1 if the order does not
    /// permit it.
    virtual int moveEntries(const QList<int> &places, int before) = 0;
    /// Adds, removes or keeps the given tubes.
    virtual void combine(const QList<ellery::TubeAddress> &tubes, Combine how) = 0;
    /// Appends the tubes of a pasted text and reports lines that were not understood. Returns the place of the first.
    virtual int paste(const QString &text) = 0;

    // Files. Machine paths.
    virtual bool open(const QString &machinePath) = 0;
    virtual bool store(const QString &machinePath) = 0;
    /// Name that is offered for a file; may be empty.
    virtual QString fileName() const = 0;

    // Database.
    virtual bool fetch(const QString &name, tarnwick::Progress *progress) = 0;
    virtual bool upload(const QString &name, tarnwick::Progress *progress) = 0;
    /// Deletes the object of this name from the database, after asking.
    virtual bool remove() = 0;
    /// Name under which an upload stores without asking; empty if there is none.
    virtual QString storedName() const = 0;
    /// Name that is offered for another upload.
    virtual QString offeredName() const = 0;
    /// Reports and returns false if something that an option requires is missing.
    virtual bool isValid() const { return true; }

    /// The unsaved entries for recovery; empty if nothing is unsaved.
    virtual QByteArray draft() const = 0;
    /// Throw FileError if the copy cannot be read.
    virtual void restoreDraft(const QByteArray &content) = 0;
    /// The name of what a copy contains.
    virtual QString nameInDraft(const QByteArray &content) const = 0;

protected:
    /// Returns false after reporting a text that is no label of this axis.
    bool numberOf(const QString &label, ellery::Axis axis, int &number) const;
    /// Notes that the entries have just been stored in, or taken from, the database or this file.
    void setOrigin(bool isFromFile, const QString &file = {});

    db::DatabaseSession &m_session;
    const brannock::Project &m_project;
    QString m_file;
    bool m_isFromFile = true;
    bool m_isModified = false;
};

} // namespace plans
