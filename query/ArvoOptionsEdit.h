#pragma once
#include "ArvoOptions.h"

namespace query {

/// The program's options while they are edited: a draft beside the stored values, and the rules of its lists.
class ArvoOptionsEdit
{
public:
    static constexpr int kNameChars = 20;

    struct DatabaseFormat
    {
        int year;
        const char16_t *name;
    };
    static constexpr DatabaseFormat kDatabaseFormats[] = {
        {1997, u"Access 97"}, {2000, u"Access 2000"}, {2002, u"Access 2002"}};

    /// hasSections: whether tubes of the component have a section.
    explicit ArvoOptionsEdit(const ArvoOptions &stored, bool hasSections = false);

    /// Everything except the user macros, which have their own functions. result() includes both.
    ArvoOptions draft;
    ArvoOptions result() const;
    /// Returns true if Cancel would discard changes: a value differs from the stored one, or a tab was added or
    /// removed.
    bool isModified() const;

    // Tabs of tube information.
    /// Appends "Tab %d" with the new count and the example. Returns its index.
    int addTab();
    /// The text of a new tab: the tube's rows of table report.
    const QString &exampleSql() const { return m_exampleSql; }
    /// Returns false if there is no such tab.
    bool removeTab(int tab);
    /// An empty name is refused: returns false and changes nothing.
    bool renameTab(int tab, const QString &name);

    // User macros, in the order of their table. The row after the last one is where a new macro is typed.
    int macroCount() const { return int(m_macros.size()); }
    const tarnwick::JMacro::Entry &macro(int row) const { return m_macros[row]; }
    /// Adds brackets to the name if it has none. Returns an empty text if it was set, else the reason: the name is
    /// empty or already used.
    QString setMacroName(int row, const QString &name);
    void setMacroValue(int row, const QString &value);
    void removeMacro(int row);

private:
    bool isSameAsStored() const;

    ArvoOptions m_stored;
    QList<tarnwick::JMacro::Entry> m_macros;
    QString m_exampleSql;
    bool m_tabsTouched = false;
};

} // namespace query
