#pragma once
#include "CommandTable.h"

#include <QHash>

#include <functional>

namespace tarnwick {

/// Actions and conditions of a table of commands: every row is bound to one action. Uses no widgets, so tests and other
/// front ends run commands in the same way as the window.
class CommandHandlers
{
public:
    /// table: must outlive the handlers; usually a constant.
    explicit CommandHandlers(const CommandTable &table)
        : m_table(table)
    {
    }

    /// One entry of a list, such as a recent file.
    struct ListEntry
    {
        QString text;
        QString value;  ///< passed to the action, such as a path
        QString whyNot; ///< reason why it cannot be used; empty if it can
    };
    using Action = std::function<void()>;

    void bind(int id, Action run);
    /// Binds a checkable row. isChecked returns the state of the check mark; the action must change that state.
    void bindCheckable(int id, Action run, std::function<bool()> isChecked);
    /// Binds the row of a list. run receives the entry as it was shown. Entries beyond the last id of the row are not
    /// shown.
    void bindList(int id, std::function<void(const ListEntry &entry)> run, std::function<QList<ListEntry>()> entries);
    /// Replaces the row's text, for commands that name the object they act on ("Undo Move Entry").
    void setText(int id, std::function<QString()> text);
    /// Sets a function that returns the reason why a condition does not hold, as a sentence for the user, or an empty
    /// text if it holds. Never called for kAlways. Like the functions for check marks and texts it is called often and
    /// must not throw.
    void setConditions(std::function<QString(int condition)> whyNot) { m_whyNot = std::move(whyNot); }
    /// Sets a function through which every action runs. It must call work and catch its exceptions. Without a runner
    /// actions run directly.
    void setRunner(std::function<void(const CommandRow &row, const Action &work)> runner)
    {
        m_runner = std::move(runner);
    }

    const CommandTable &table() const { return m_table; }
    /// Runs a command if its condition holds. Returns false if it does not, or if there is no such command.
    bool run(int id);
    /// Reason why a command cannot be used now; empty if it can.
    QString whyNot(int id) const;
    bool isEnabled(int id) const { return whyNot(id).isEmpty(); }
    bool isChecked(int id) const;
    /// The command's text in menus, without the key.
    QString text(int id) const;
    /// Reason why a condition does not hold; empty if it holds.
    QString conditionReason(int condition) const;
    /// Reads the entries of a list again.
    void refreshList(int id);
    QList<ListEntry> entries(int id) const { return m_entries.value(id); }

    /// Errors of the table and its bindings: rows without an action, actions without a row, rows bound twice, check
    /// marks without a state.
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
    QStringList m_faults; ///< errors found by the bind functions
};

} // namespace tarnwick
