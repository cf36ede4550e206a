#include "ParameterGrid.h"

#include <db/FieldDefinition.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::GridColumn;

ParameterGrid::ParameterGrid(QList<ParameterEntry> &entries, const QString &queryName, const QueryContext &context,
                             tarnwick::UserPrompts &prompts)
    : m_entries(entries)
    , m_queryName(queryName)
    , m_context(context)
    , m_prompts(prompts)
{
}

GridColumn ParameterGrid::column(int column) const
{
    constexpr int kValueWidth = 30;
    constexpr int kNameWidth = 20;
    constexpr int kSourceWidth = 12;
    static const GridColumn kColumns[ColumnCount] = {
        {.title = u"PARAM"_s, .width = kNameWidth},
        {.title = u"VALUE"_s, .width = kValueWidth},
        {.title = u"SOURCE"_s, .width = kSourceWidth},
        {.title = u"TYPE"_s, .width = kSourceWidth},
    };
    return kColumns[column];
}

GridColumn ParameterGrid::cellEditor(int row, int column) const
{
    GridColumn cell = this->column(column);
    if (column != Value)
        return cell;
    const ParameterEntry &entry = m_entries[row];
    if (entry.type == dao::DataType::Date) {
        cell.editor = GridColumn::Editor::Date;
        return cell;
    }
    cell.choices = entry.type == dao::DataType::Boolean ? QStringList{u"Yes"_s, u"No"_s}
                                                        : m_context.history.valuesOf(m_queryName, entry.name);
    cell.editor = cell.choices.isEmpty() ? GridColumn::Editor::Line : GridColumn::Editor::Choice;
    cell.hasFreeText = true;
    return cell;
}

QString ParameterGrid::text(int row, int column) const
{
    const ParameterEntry &entry = m_entries[row];
    switch (column) {
    case Name:
        return u'[' + entry.name + u']';
    case Value:
        return entry.text;
    case Source:
        return entry.sourceText();
    default:
        return db::daoTypeName(entry.type);
    }
}

tarnwick::RowColours ParameterGrid::colours(int row) const
{
    tarnwick::RowColours colours;
    if (!m_entries[row].hasValue())
        colours.background = tarnwick::ColourRef(0x80FFFF); // light yellow
    return colours;
}

QString ParameterGrid::problem(int row) const
{
    const ParameterEntry &entry = m_entries[row];
    const bool isPlain = entry.text.isEmpty() && entry.suggestion.isEmpty() && !entry.bareText;
    return entry.hasValue() || isPlain ? QString() : entry.lack();
}

QString ParameterGrid::tip(int row, int) const
{
    const ParameterEntry &entry = m_entries[row];
    if (entry.hasValue())
        return {};
    const QString reason = problem(row);
    return reason.isEmpty() ? u"Without a value the parameter is Null."_s : reason;
}

QString ParameterGrid::whyNotEditable(int, int column) const
{
    return column == Value ? QString() : u"Only the value can be edited."_s;
}

bool ParameterGrid::setText(int row, int column, const QString &text)
{
    if (column == Value)
        m_entries[row].setText(text, m_prompts);
    return column == Value;
}

int ParameterGrid::firstToAsk() const
{
    for (int row = 0; row < rowCount(); ++row)
        if (!m_entries[row].hasValue())
            return row;
    return 0;
}

} // namespace query
