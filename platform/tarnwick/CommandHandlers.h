#pragma once
#include "CommandTable.h"

#include <QHash>

#include <functional>

namespace tarnwick {

/// What the commands of a table do, and when they can be used: every row is bound to one action. Without widgets, so
/// that tests and other front ends can run commands as the window does.
class CommandHandlers
{
public:
    /// table: must outlive the handlers; usually a constant.
    explicit CommandHandlers(const CommandTable &table)
        : m_table(table)
    {
    }

    /// One entry of a list: a recent file, for instance.
    struct ListEntry
    {
        QString text;
        QString value;  ///< what the action needs to know: a path, for instance
        QString whyNot; ///< why it cannot be used; empty when it can
    };
    using Action = std::function<void()>;

    void bind(int id, Action run);
    /// For a checkable row. isChecked tells whether the mark is set; the action has to change what it tells.
    void bindCheckable(int id, Action run, std::function<bool()> isChecked);
    /// For the row of a list. run gets the entry as it was shown; entries beyond its last id are not shown.
    void bindList(int id, std::function<void(const ListEntry &entry)> run, std::function<QList<ListEntry>()> entries);
    /// In place of the row's text: for commands that name what they act on ("Undo Move Entry").
    void setText(int id, std::function<QString()> text);
    /// Tells why a condition does not hold at the moment, in a sentence for the user; empty when it holds. Never asked
    /// about kAlways.
    void setConditions(std::function<QString(int condition)> whyNot) { m_whyNot = std::move(whyNot); }
    /// Every action runs through this function, which has to call work and to keep exceptions from leaving it. Without
    /// a runner actions run directly.
    void setRunner(std::function<void(const CommandRow &row, const Action &work)> runner)
    {
        m_runner = std::move(runner);
    }

    const CommandTable &table() const { return m_table; }
    /// Runs a command if its condition holds now; false when it does not, or when there is no such command.
    bool run(int id);
    /// Why a command cannot be used at the moment; empty when it can.
    QString whyNot(int id) const;
    bool isEnabled(int id) const { return whyNot(id).isEmpty(); }
    bool isChecked(int id) const;
    /// What a menu calls it, without the key.
    QString text(int id) const;
    /// What a condition says; empty when it holds.
    QString conditionReason(int condition) const;
    /// Asks for the entries of a list again.
    void refreshList(int id);
    QList<ListEntry> entries(int id) const { return m_entries.value(id); }

    /// What is wrong with the table, and: rows without an action, actions without a row, rows bound twice, check marks
    /// without a state.
    QStringList faults() const;

private:
    struct Handler
    {
        Action run;
        std::function<void(const ListEntry &)> runEntry;
        std::function<bool()> isChecked;
        std::function<QList<ListEntry>()> entries;
    };
    void add(int id, Handler handler);
    QString faultOf(const CommandRow &row) const;

    const CommandTable &m_table;
    QHash<int, Handler> m_handlers;
    QHash<int, std::function<QString()>> m_texts;
    QHash<int, QList<ListEntry>> m_entries;
    std::function<QString(int)> m_whyNot;
    std::function<void(const CommandRow &, const Action &)> m_runner;
    QStringList m_faults; ///< of binding
};

} // namespace tarnwick
