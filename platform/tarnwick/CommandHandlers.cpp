#include "CommandHandlers.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

void CommandHandlers::bind(int id, Action run)
{
    add(id, {std::move(run), {}, {}, {}});
}

void CommandHandlers::bindCheckable(int id, Action run, std::function<bool()> isChecked)
{
    add(id, {std::move(run), {}, std::move(isChecked), {}});
}

void CommandHandlers::bindList(int id, std::function<void(const ListEntry &)> run,
                               std::function<QList<ListEntry>()> entries)
{
    add(id, {{}, std::move(run), {}, std::move(entries)});
}

void CommandHandlers::add(int id, Handler handler)
{
    const CommandRow *row = m_table.row(id);
    if (!row || row->id != id)
        m_faults.append(u"an action is bound to %1, which is not a row"_s.arg(id));
    else if (m_handlers.contains(id))
        m_faults.append(row->objectName() + u": two actions"_s);
    m_handlers.insert(id, std::move(handler));
}

void CommandHandlers::setText(int id, std::function<QString()> text)
{
    if (!m_table.row(id))
        m_faults.append(u"a text is bound to %1, which is not a row"_s.arg(id));
    m_texts.insert(id, std::move(text));
}

bool CommandHandlers::run(int id)
{
    const CommandRow *row = m_table.row(id);
    if (!row || !m_handlers.contains(row->id) || !whyNot(id).isEmpty())
        return false;
    // Copied, since the action may destroy its owner.
    const Handler handler = m_handlers.value(row->id);
    const Action work =
        row->isList() ? [&handler, entry = m_entries.value(row->id).value(id - row->id)] { handler.runEntry(entry); }
                      : handler.run;
    if (m_runner)
        m_runner(*row, work);
    else
        work();
    return true;
}

QString CommandHandlers::conditionReason(int condition) const
{
    if (condition == kAlways)
        return {};
    const QString reason = m_whyNot ? m_whyNot(condition) : QString();
    return condition == kNotYet && reason.isEmpty() ? u"Not available yet."_s : reason;
}

QString CommandHandlers::whyNot(int id) const
{
    const CommandRow *row = m_table.row(id);
    if (!row)
        return u"There is no such command."_s;
    if (row->isPlaceholder())
        return QString::fromUtf16(row->tip);
    if (row->isList()) {
        const QList<ListEntry> list = m_entries.value(row->id);
        const int place = id - row->id;
        if (place >= list.size())
            return u"There is no such entry."_s;
        if (!list[place].whyNot.isEmpty())
            return list[place].whyNot;
    }
    return conditionReason(row->condition);
}

bool CommandHandlers::isChecked(int id) const
{
    const Handler handler = m_handlers.value(id);
    return handler.isChecked && handler.isChecked();
}

QString CommandHandlers::text(int id) const
{
    const CommandRow *row = m_table.row(id);
    if (!row)
        return {};
    if (row->isList())
        return m_entries.value(row->id).value(id - row->id).text;
    const auto text = m_texts.find(id);
    return text != m_texts.end() ? (*text)() : QString::fromUtf16(row->text).section(u'\t', 0, 0);
}

void CommandHandlers::refreshList(int id)
{
    const Handler handler = m_handlers.value(id);
    const CommandRow *row = m_table.row(id);
    if (!row || !handler.entries)
        return;
    QList<ListEntry> list = handler.entries();
    list.resize(std::min(list.size(), qsizetype(row->count)));
    m_entries.insert(id, std::move(list));
}

QString CommandHandlers::faultOf(const CommandRow &row) const
{
    const auto found = m_handlers.find(row.id);
    const bool isBound = found != m_handlers.end();
    if (row.isPlaceholder() || row.condition == kNotYet)
        return isBound ? u"an action that can never be used"_s : QString();
    if (!isBound)
        return u"no action"_s;
    const bool isComplete = row.isList() ? found->runEntry && found->entries : bool(found->run);
    if (!isComplete)
        return row.isList() ? u"a list is bound as a single command"_s : u"no action"_s;
    if (row.isCheckable() != bool(found->isChecked))
        return row.isCheckable() ? u"its check state is not bound"_s : u"checked, but not checkable"_s;
    if (row.condition != kAlways && !m_whyNot)
        return u"its condition is not bound"_s;
    return {};
}

QStringList CommandHandlers::faults() const
{
    QStringList all = m_table.faults() + m_faults;
    for (const CommandRow &row : m_table.rows()) {
        if (const QString fault = faultOf(row); !fault.isEmpty())
            all.append(row.objectName() + u": "_s + fault);
    }
    return all;
}

} // namespace tarnwick
