#include "ParameterResolver.h"

#include "Messages.h"

#include <db/FieldDefinition.h>
#include <db/ValueText.h>
#include <tarnwick/Failures.h>

namespace query {

using namespace Qt::StringLiterals;

QString ParameterEntry::sourceText() const
{
    switch (source) {
    case Source::UserMacro:
        return u"User Macro"_s;
    case Source::SystemMacro:
        return u"Sys Macro"_s;
    case Source::SqlQuery:
        break;
    }
    return u"SQL Query"_s;
}

void ParameterEntry::setText(const QString &typed, tarnwick::UserPrompts &prompts)
{
    text = typed;
    value = dao::Value();
    if (type == dao::DataType::Memo)
        value = dao::Value::fromText(typed);
    else
        db::textToValue(prompts, value, type, typed);
}

QString ParameterEntry::lack() const
{
    const QString bracketed = u'[' + name + u']';
    if (!text.isEmpty())
        return u"%1 (\"%2\" is no value of type %3)"_s.arg(bracketed, text, db::daoTypeName(type));
    QStringList reasons;
    if (!suggestion.isEmpty())
        reasons.append(u"perhaps a slip of %1"_s.arg(suggestion));
    if (bareText)
        reasons.append(u"a text needs quotes: '%1'"_s.arg(name));
    return reasons.isEmpty() ? bracketed : u"%1 (%2)"_s.arg(bracketed, reasons.join(u"; "_s));
}

bool ParameterResolver::resolve(const QString &queryName, dao::QueryDef &query)
{
    qsizetype known = 0;
    int count = 0;
    const auto look = [&] { count = query.parameterCount(); };
    if (!tarnwick::attempt(*m_prompts, look, messages::kQueryParameters))
        return false;
    // If the columns of a cross table depend on parameters, their values can show that further names are parameters.
    while (count > known) {
        QList<ParameterEntry> entries;
        const auto collectAll = [&] { entries = collect(queryName, query); };
        if (!tarnwick::attempt(*m_prompts, collectAll, messages::kQueryParameters) || !confirm(queryName, entries))
            return false;
        hand(queryName, entries, query);
        storeHistory(*m_context, *m_prompts);
        known = entries.size();
        if (!tarnwick::attempt(*m_prompts, look, messages::kQueryParameters))
            return false;
    }
    return true;
}

QList<ParameterEntry> ParameterResolver::collect(const QString &queryName, const dao::QueryDef &query)
{
    m_context->history.refresh(m_context->roots);
    const tarnwick::JMacro systemMacros = m_context->currentSystemMacros();
    QList<ParameterEntry> entries;
    for (int i = 0; i < query.parameterCount(); ++i) {
        ParameterEntry entry;
        entry.name = query.parameter(i).name;
        entry.type = query.parameter(i).type;
        entry.suggestion = query.parameter(i).suggestion;
        entry.bareText = query.parameter(i).bareText;
        const QString macroName = u'[' + entry.name + u']';
        std::optional<QString> found = m_context->userMacros.value(macroName);
        entry.source = ParameterEntry::Source::UserMacro;
        if (!found) {
            found = systemMacros.value(macroName);
            entry.source = ParameterEntry::Source::SystemMacro;
        }
        if (!found) {
            found = m_context->history.value(queryName, entry.name);
            entry.source = ParameterEntry::Source::SqlQuery;
        }
        if (found)
            entry.setText(*found, *m_prompts);
        entries.append(entry);
    }
    return entries;
}

bool ParameterResolver::confirm(const QString &queryName, QList<ParameterEntry> &entries)
{
    const bool allKnown = std::all_of(entries.begin(), entries.end(), std::mem_fn(&ParameterEntry::hasValue));
    if (m_context->prompt && !(m_context->quiet && allKnown))
        return m_context->prompt->confirm(queryName, entries, *m_context);
    if (allKnown)
        return true;
    QStringList missing;
    for (const ParameterEntry &entry : std::as_const(entries))
        if (!entry.hasValue())
            missing.append(entry.lack());
    m_prompts->error(messages::kParametersUnknown, missing.join(u", "_s));
    return false;
}

// Values that come from macros are not remembered, even if the user edited them; nor is a text that is no value.
void ParameterResolver::hand(const QString &queryName, const QList<ParameterEntry> &entries, dao::QueryDef &query)
{
    for (int i = 0; i < entries.size(); ++i) {
        const ParameterEntry &entry = entries[i];
        query.setParameter(i, entry.value.hasNoValue() ? dao::Value::null() : entry.value);
        const bool isValue = entry.text.isEmpty() || entry.hasValue();
        if (entry.source == ParameterEntry::Source::SqlQuery && isValue)
            m_context->history.remember(queryName, entry.name, entry.text);
    }
}

void storeHistory(QueryContext &context, tarnwick::UserPrompts &prompts)
{
    try {
        context.history.storeChanges(context.roots);
    } catch (const tarnwick::FileError &error) {
        prompts.error(messages::kStoringHistory, error.text());
    }
}

} // namespace query
