#pragma once
#include "PlanOptions.h"
#include "TubeGroups.h"

#include <brannock/InspPlan.h>
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <ellery/TubeStates.h>
#include <tarnwick/base/Progress.h>

namespace plans {

/// Logic of the dialog "Plan", without a window: the plan being edited, where it came from, and whether it was changed.
/// Every command reports what it did or why it failed.
class PlanEditor
{
public:
    /// All must outlive the editor.
    PlanEditor(db::DatabaseSession &session, const brannock::Project &project);

    const brannock::InspPlan &plan() const { return m_plan; }
    const ellery::SteamGen &component() const { return m_project.steamGen; }
    tarnwick::UserPrompts &prompts() const { return m_session.prompts(); }
    db::DatabaseSession &session() const { return m_session; }
    PlanOptions options;

    /// True if the plan came from a file or is new, false if it came from the database.
    bool isFromFile() const { return m_isFromFile; }
    /// Machine path of the file of a plan that came from one.
    const QString &file() const { return m_file; }
    bool isModified() const { return m_isModified; }
    /// "File Plan - ..." or "ARVO Plan - ..."
    QString caption() const;
    /// Name in questions: the plan's, or "Untitled".
    QString shownName() const;

    // Editing.
    /// The fields above the table.
    struct Fields
    {
        QString probe;
        QString beginTest;
        QString endTest;
        QString description;
        bool operator==(const Fields &) const = default;
    };
    Fields fields() const;
    void setFields(const Fields &fields);
    /// Changes one number of an entry's address to that of a typed label. Returns false after reporting a text that is
    /// no label.
    bool setLabel(int place, ellery::Axis axis, const QString &text);
    void setOrder(brannock::InspPlan::Order order);
    /// Adds the tubes that carry a symbol, or are selected, and that the plan does not have. Returns the place of the
    /// first new entry.
    int loadSymbols(const ellery::TubeStates &tubes);
    int loadSelected(const ellery::TubeStates &tubes);
    /// Higher entry numbers move up.
    void removeEntries(const QList<int> &places);
    /// Moves entries so that they stand before another, and numbers all in the new order. Only in the order by entry.
    /// Returns the new place of the first.
    int moveEntries(const QList<int> &places, int before);
    /// Adds, removes or keeps the given tubes.
    void combine(const QList<ellery::TubeAddress> &tubes, Combine how);
    /// Adds the tubes of a pasted text that the plan does not have, and reports lines that were not understood.
    int paste(const QString &text);
    /// Ask first.
    bool clearTubes();
    bool clearAll();
    bool isKnownTube(int place) const { return component().findTube(m_plan.entries[place].address()) >= 0; }

    // Files. Machine paths.
    void newPlan();
    bool open(const QString &machinePath);
    bool store(const QString &machinePath);
    /// Name that is offered for the file.
    QString fileName() const;

    // Database.
    bool fetch(const QString &name, tarnwick::Progress *progress);
    bool upload(const QString &name, tarnwick::Progress *progress);
    bool remove();
    bool checkAnalyzed(tarnwick::Progress *progress);
    /// Reports and returns false if something that the options require is missing.
    bool isValid() const;

    /// Numbers of the plan as text: tubes, probe and extent, and how much is done.
    QString summary() const;

    /// The unsaved plan for recovery.
    QByteArray draft() const;
    void restoreDraft(const QByteArray &content);

private:
    template <typename Takes>
    int load(const tarnwick::Message &duplicates, Takes takes);
    int append(const QList<ellery::TubeAddress> &tubes);
    void take(const brannock::InspPlan &plan, bool isFromFile, const QString &file);

    db::DatabaseSession &m_session;
    const brannock::Project &m_project;
    brannock::InspPlan m_plan;
    QString m_file;
    bool m_isFromFile = true;
    bool m_isModified = false;
};

} // namespace plans
