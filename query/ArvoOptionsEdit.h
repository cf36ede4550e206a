#pragma once
#include "ArvoOptions.h"

namespace query {

/// The program's options while they are edited: a draft beside what is stored, and the rules of the lists in it.
class ArvoOptionsEdit
{
public:
    static constexpr double kLargestMargin = 5.0; ///< inches
    static constexpr double kMarginStep = 0.05;
    static constexpr int kSmallestTick = 4; ///< points
    static constexpr int kLargestTick = 20;
    static constexpr int kNameChars = 20;

    struct DatabaseFormat
    {
        int year;
        const char16_t *name;
    };
    static constexpr DatabaseFormat kDatabaseFormats[] = {
        {1997, u"Access 97"}, {2000, u"Access 2000"}, {2002, u"Access 2002"}};

    explicit ArvoOptionsEdit(const ArvoOptions &stored);

    /// Everything but the user macros, which have their own operations; result() has both.
    ArvoOptions draft;
    ArvoOptions result() const;
    /// Whether a Cancel would lose something: a value differs from the stored one, or a tab was added or removed.
    bool isModified() const;

    // Tabs of tube information.
    /// Appends "Tab %d" with the new count and an empty text; returns its place.
    int addTab();
    /// False when there is no such tab.
    bool removeTab(int tab);
    /// False, and nothing changed, for an empty name.
    bool renameTab(int tab, const QString &name);

    // User macros, in the order of their table. The place after the last one is where a new one is typed.
    int macroCount() const { return int(m_macros.size()); }
    const tarnwick::JMacro::Entry &macro(int row) const { return m_macros[row]; }
    /// Names get their brackets. Why it cannot be: the name is empty or stands already; empty when it was done.
    QString setMacroName(int row, const QString &name);
    void setMacroValue(int row, const QString &value);
    void removeMacro(int row);

private:
    bool isSameAsStored() const;

    ArvoOptions m_stored;
    QList<tarnwick::JMacro::Entry> m_macros;
    bool m_tabsTouched = false;
};

} // namespace query
