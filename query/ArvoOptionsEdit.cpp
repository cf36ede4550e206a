#include "ArvoOptionsEdit.h"

#include <tarnwick/Format.h>

#include <tuple>

using namespace Qt::StringLiterals;

namespace query {

namespace {

/// Everything that the dialog can change, except the macros.
auto values(const ArvoOptions &options)
{
    return std::tie(options.page, options.map, options.databaseFormat, options.tubeInfoTabs);
}

QString bracketed(const QString &name)
{
    const QString trimmed = name.trimmed();
    return trimmed.startsWith(u'[') && trimmed.endsWith(u']') ? trimmed : QString(u'[' + trimmed + u']');
}

} // namespace

ArvoOptionsEdit::ArvoOptionsEdit(const ArvoOptions &stored, bool hasSections)
    : draft(stored)
    , m_stored(stored)
    , m_macros(stored.userMacros.entries())
    , m_exampleSql(u"SELECT *\nFROM report\nWHERE row = [ROW]\nAND   col = [COL]\n"_s)
{
    if (hasSections)
        m_exampleSql += u"AND sec = [SEC]"_s;
}

ArvoOptions ArvoOptionsEdit::result() const
{
    ArvoOptions options = draft;
    options.userMacros.clear();
    for (const tarnwick::JMacro::Entry &entry : m_macros)
        options.userMacros.set(entry.name, entry.value);
    return options;
}

bool ArvoOptionsEdit::isSameAsStored() const
{
    return values(draft) == values(m_stored) && m_macros == m_stored.userMacros.entries();
}

bool ArvoOptionsEdit::isModified() const
{
    return m_tabsTouched || !isSameAsStored();
}

int ArvoOptionsEdit::addTab()
{
    const int count = int(draft.tubeInfoTabs.size()) + 1;
    draft.tubeInfoTabs.append({tarnwick::format(u"Tab %d", count), m_exampleSql});
    m_tabsTouched = true;
    return count - 1;
}

bool ArvoOptionsEdit::removeTab(int tab)
{
    if (tab < 0 || tab >= draft.tubeInfoTabs.size())
        return false;
    draft.tubeInfoTabs.removeAt(tab);
    m_tabsTouched = true;
    return true;
}

bool ArvoOptionsEdit::renameTab(int tab, const QString &name)
{
    if (tab < 0 || tab >= draft.tubeInfoTabs.size() || name.trimmed().isEmpty())
        return false;
    draft.tubeInfoTabs[tab].name = name.trimmed();
    return true;
}

QString ArvoOptionsEdit::setMacroName(int row, const QString &name)
{
    const QString full = bracketed(name);
    if (full.size() == 2)
        return u"A macro needs a name."_s;
    for (int i = 0; i < macroCount(); ++i) {
        if (i != row && m_macros[i].name.compare(full, Qt::CaseInsensitive) == 0)
            return u"There is a macro %1 already."_s.arg(full);
    }
    if (row < macroCount())
        m_macros[row].name = full;
    else
        m_macros.append({full, QString()});
    return {};
}

void ArvoOptionsEdit::setMacroValue(int row, const QString &value)
{
    m_macros[row].value = value;
}

void ArvoOptionsEdit::removeMacro(int row)
{
    if (row >= 0 && row < macroCount())
        m_macros.removeAt(row);
}

} // namespace query
