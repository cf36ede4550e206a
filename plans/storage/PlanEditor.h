#pragma once
#include "EntriesEditor.h"
#include "PlanOptions.h"

#include <brannock/InspPlan.h>
#include <ellery/TubeStates.h>

namespace plans {

/// Logic of the dialog "Plan", without a window.
class PlanEditor : public EntriesEditor
{
public:
    PlanEditor(db::DatabaseSession &session, const brannock::Project &project);

    const brannock::InspPlan &plan() const { return m_plan; }
    PlanOptions options;

    /// "File Plan - ..." or "ARVO Plan - ..."
    QString caption() const override;
    QString shownName() const override;
    QString description() const override { return m_plan.description; }
    /// Tubes, probe and extent, and how much is done.
    QString summary() const override;

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
    int count() const override { return int(m_plan.entries.size()); }
    ellery::TubeAddress address(int place) const override { return m_plan.entries[place].address(); }
    bool setLabel(int place, ellery::Axis axis, const QString &text) override;
    Order order() const override { return m_plan.order; }
    void setOrder(Order order) override;
    /// Adds the tubes that carry a symbol, or are selected, and that the plan does not have. Returns the place of the
    /// first new entry.
    int loadSymbols(const ellery::TubeStates &tubes);
    int loadSelected(const ellery::TubeStates &tubes);
    /// Higher entry numbers move up.
    void removeEntries(const QList<int> &places) override;
    /// All entries are numbered in the new order. Only in the order by entry.
    int moveEntries(const QList<int> &places, int before) override;
    void combine(const QList<ellery::TubeAddress> &tubes, Combine how) override;
    /// Adds the tubes of a pasted text that the plan does not have, and reports lines that were not understood.
    int paste(const QString &text) override;
    /// Ask first.
    bool clearTubes();
    bool clearAll();

    // Files. Machine paths.
    void newPlan();
    bool open(const QString &machinePath) override;
    bool store(const QString &machinePath) override;
    QString fileName() const override;

    // Database.
    bool fetch(const QString &name, tarnwick::Progress *progress) override;
    bool upload(const QString &name, tarnwick::Progress *progress) override;
    bool remove() override;
    QString storedName() const override { return m_plan.name; }
    QString offeredName() const override { return m_plan.name; }
    bool checkAnalyzed(tarnwick::Progress *progress);
    bool isValid() const override;

    QByteArray draft() const override;
    void restoreDraft(const QByteArray &content) override;
    QString nameInDraft(const QByteArray &content) const override;

private:
    template <typename Takes>
    int load(const tarnwick::Message &duplicates, Takes takes);
    int append(const QList<ellery::TubeAddress> &tubes);
    void take(const brannock::InspPlan &plan, bool isFromFile, const QString &file);

    brannock::InspPlan m_plan;
};

} // namespace plans
