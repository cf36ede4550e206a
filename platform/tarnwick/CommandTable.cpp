#include "CommandTable.h"

#include <QChar>
#include <QHash>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

QString CommandRow::label() const
{
    return QString::fromUtf16(text).section(u'\t', 0, 0).remove(u'&');
}

QString CommandRow::objectName() const
{
    return name ? QString::fromUtf16(name) : u"command"_s + QString::number(id);
}

QStringList CommandRow::keyList() const
{
    QStringList all;
    if (const QString inText = QString::fromUtf16(text).section(u'\t', 1); !inText.isEmpty())
        all.append(inText);
    if (keys)
        all += QString::fromUtf16(keys).split(u'|');
    return all;
}

const CommandRow *CommandTable::row(int id) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [id](const CommandRow &row) { return id >= row.id && id < row.id + row.count; });
    return found == m_rows.end() ? nullptr : &*found;
}

const CommandRow *CommandTable::row(QStringView name) const
{
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [name](const CommandRow &row) { return row.objectName() == name; });
    return found == m_rows.end() ? nullptr : &*found;
}

const CommandLayout &CommandTable::layout(QStringView name) const
{
    const auto found = std::find_if(m_layouts.begin(), m_layouts.end(),
                                    [name](const CommandLayout &layout) { return name == QStringView(layout.name); });
    if (found == m_layouts.end())
        qFatal("no layout \"%s\" in the table of commands", qPrintable(name.toString()));
    return *found;
}

QList<int> CommandTable::idsIn(const CommandLayout &layout) const
{
    QList<int> ids;
    for (const MenuItem &item : layout.items) {
        if (item.kind == MenuItem::Item)
            ids.append(item.command);
    }
    return ids;
}

namespace {

/// Checks a table and collects its errors.
class TableCheck
{
public:
    explicit TableCheck(const CommandTable &table)
        : m_table(table)
    {
        checkRows();
        for (const CommandLayout &layout : table.layouts())
            checkLayout(layout);
        checkKeys();
        checkReach();
    }
    const QStringList &faults() const { return m_faults; }

private:
    /// A key sequence and the widget in which it works.
    struct Key
    {
        QString by;
        int part;
        bool needsFocus;
    };

    void add(const QString &who, const QString &what) { m_faults.append(who + u": "_s + what); }

    void checkRows()
    {
        QSet<int> ids;
        QSet<QString> names;
        for (const CommandRow &row : m_table.rows()) {
            const QString who = row.objectName();
            for (int id = row.id; id < row.id + row.count; ++id) {
                if (ids.contains(id))
                    add(who, u"the id %1 has another row"_s.arg(id));
                ids.insert(id);
            }
            if (names.contains(who))
                add(who, u"the name has another row"_s);
            names.insert(who);
            if (row.id < 0 || row.count < 1)
                add(who, u"no valid id"_s);
            if (!row.name && row.id >= kFirstUnnumbered)
                add(who, u"neither number nor name"_s);
            if (QStringView(row.tip).isEmpty())
                add(who, u"no tip"_s);
            if (row.label().trimmed().isEmpty() && !row.isList())
                add(who, u"no text"_s);
            checkList(row, who);
        }
    }

    void checkList(const CommandRow &row, const QString &who)
    {
        const CommandRow *list = row.isPlaceholder() ? m_table.row(row.placeholderOf) : nullptr;
        if (row.isPlaceholder() && (!list || !list->isList()))
            add(who, u"placeholder of no list"_s);
        if (row.isList() && (row.isCheckable() || !row.keyList().isEmpty()))
            add(who, u"a list has neither keys nor a check mark"_s);
    }

    void checkLayout(const CommandLayout &layout)
    {
        const QString who = QString::fromUtf16(layout.name);
        QList<QSet<QChar>> mnemonics{{}};
        for (const MenuItem &item : layout.items) {
            if (item.kind == MenuItem::End) {
                if (mnemonics.size() != 1 || &item != &layout.items.back())
                    add(who, u"ends inside a menu, or before its last item"_s);
                return;
            }
            if (item.kind == MenuItem::Close) {
                if (mnemonics.size() == 1)
                    return add(who, u"closes a menu that is not open"_s);
                mnemonics.removeLast();
                continue;
            }
            const CommandRow *row = item.kind == MenuItem::Item ? m_table.row(item.command) : nullptr;
            if (item.kind == MenuItem::Item && (!row || row->id != item.command)) {
                add(who, u"item %1 has no row"_s.arg(item.command));
                continue;
            }
            if (item.kind == MenuItem::Open && layout.kind == CommandLayout::Kind::MenuBar && mnemonics.size() == 1)
                noteMenuKey(item.text);
            if (layout.kind != CommandLayout::Kind::ToolBar)
                noteMnemonic(who, QString::fromUtf16(item.text || !row ? item.text : row->text), mnemonics.last());
            if (item.kind == MenuItem::Open)
                mnemonics.append(QSet<QChar>());
        }
        add(who, u"is not ended"_s);
    }

    void noteMnemonic(const QString &who, const QString &text, QSet<QChar> &used)
    {
        const qsizetype mark = text.indexOf(u'&');
        if (mark < 0 || mark + 1 >= text.size())
            return;
        const QChar letter = text[mark + 1].toLower();
        if (used.contains(letter))
            add(who, u"two items have the mnemonic of \"%1\""_s.arg(text));
        used.insert(letter);
    }

    void noteMenuKey(const char16_t *text)
    {
        const QString label = QString::fromUtf16(text);
        if (const qsizetype mark = label.indexOf(u'&'); mark >= 0)
            m_keys[u"Alt+"_s + label[mark + 1].toUpper()].append({label, 0, false});
    }

    void checkKeys()
    {
        for (const CommandRow &row : m_table.rows()) {
            for (const QString &each : row.keyList()) {
                const Key key{row.objectName(), row.part, row.needsFocus()};
                for (const Key &other : m_keys.value(each)) {
                    const bool isApart = key.needsFocus && other.needsFocus && key.part != other.part;
                    if (!isApart)
                        add(key.by, each + u" belongs to "_s + other.by + u", too"_s);
                }
                m_keys[each].append(key);
            }
        }
    }

    void checkReach()
    {
        QSet<int> placed;
        for (const CommandLayout &layout : m_table.layouts()) {
            for (const int id : m_table.idsIn(layout))
                placed.insert(id);
        }
        for (const CommandRow &row : m_table.rows()) {
            if (!placed.contains(row.id) && row.keyList().isEmpty())
                add(row.objectName(), u"in no layout and without keys"_s);
        }
    }

    const CommandTable &m_table;
    QHash<QString, QList<Key>> m_keys;
    QStringList m_faults;
};

} // namespace

QStringList CommandTable::faults() const
{
    return TableCheck(*this).faults();
}

} // namespace tarnwick
