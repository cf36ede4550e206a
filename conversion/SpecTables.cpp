#include "SpecTables.h"

#include "Messages.h"

#include <tarnwick/MoveBefore.h>
#include <tarnwick/StringToValue.h>

namespace conversion {

using namespace Qt::StringLiterals;
using tarnwick::ColourRef;
using tarnwick::ColumnAlign;
using tarnwick::GridColumn;

static constexpr int kMostColumn = 99999;

static QString colourText(ColourRef colour)
{
    return tarnwick::format(u"#%02X%02X%02X", colour.red(), colour.green(), colour.blue());
}

static std::optional<ColourRef> colourOf(const QString &text)
{
    constexpr int kLength = 7; // "#RRGGBB"
    if (text.size() != kLength || text[0] != u'#')
        return std::nullopt;
    bool isNumber = false;
    const uint rgb = text.mid(1).toUInt(&isNumber, 16);
    if (!isNumber)
        return std::nullopt;
    return ColourRef::fromRgb(int(rgb >> 16 & 0xFF), int(rgb >> 8 & 0xFF), int(rgb & 0xFF));
}

FieldTable::FieldTable(ReportConvSpec &spec, List list, tarnwick::UserPrompts &prompts)
    : m_spec(spec)
    , m_list(list)
    , m_prompts(prompts)
{
    switch (list) {
    case List::Report:
        m_items = {Item::Type, Item::First, Item::Last, Item::Colour};
        break;
    case List::Filename:
        m_items = {Item::Type, Item::Part, Item::First, Item::Last};
        break;
    case List::Comment:
        m_items = {Item::Type, Item::Part, Item::Keyword, Item::First, Item::Last, Item::Colour};
        break;
    }
    setExtraRows(0);
}

void FieldTable::setExtraRows(int rows)
{
    m_rows = int(fields().size()) + rows;
}

QList<ConvField> &FieldTable::fields() const
{
    return m_list == List::Report     ? m_spec.reportFields
           : m_list == List::Filename ? m_spec.filenameFields
                                      : m_spec.commentFields;
}

const QStringList &FieldTable::typeLabels() const
{
    return m_list == List::Report     ? reportFieldLabels()
           : m_list == List::Filename ? filenameFieldLabels()
                                      : commentFieldLabels();
}

const QStringList &FieldTable::partLabels() const
{
    return m_list == List::Filename ? filenamePartLabels() : commentPartLabels();
}

int FieldTable::add(const ConvField &field)
{
    fields().append(field);
    notify();
    return int(fields().size()) - 1;
}

void FieldTable::setColumns(int row, int first, int last)
{
    fields()[row].firstColumn = first;
    fields()[row].lastColumn = last;
    notify();
}

void FieldTable::setColour(int row, ColourRef colour)
{
    fields()[row].colour = colour;
    notify();
}

GridColumn FieldTable::column(int column) const
{
    const bool isDelimited = m_list == List::Report && m_spec.isCommaDelimited();
    switch (m_items[column]) {
    case Item::Type:
        return {.title = u"TYPE"_s, .width = 12, .editor = GridColumn::Editor::Choice, .choices = typeLabels()};
    case Item::Part:
        return {.title = u"PART"_s, .width = 10, .editor = GridColumn::Editor::Choice, .choices = partLabels()};
    case Item::Keyword:
        return {.title = u"KEYWORD"_s, .width = 14};
    case Item::First:
        return {.title = isDelimited ? u"VALUE"_s : u"FIRST"_s, .width = 6, .align = ColumnAlign::Right};
    case Item::Last:
        return {.title = u"LAST"_s, .width = 6, .align = ColumnAlign::Right};
    case Item::Colour:
        return {.title = u"COLOR"_s, .width = 9};
    }
    return {};
}

QString FieldTable::text(int row, int column) const
{
    if (!isField(row))
        return {};
    const ConvField &field = fields()[row];
    switch (m_items[column]) {
    case Item::Type:
        return typeLabels().value(field.type, u"???"_s);
    case Item::Part:
        return partLabels().value(field.part, u"???"_s);
    case Item::Keyword:
        return field.keyword;
    case Item::First:
        return QString::number(field.firstColumn);
    case Item::Last:
        return QString::number(field.lastColumn);
    case Item::Colour:
        return colourText(field.colour);
    }
    return {};
}

QVariant FieldTable::value(int row, int column) const
{
    const QString shown = text(row, column);
    const Item item = m_items[column];
    return shown.isEmpty() || (item != Item::First && item != Item::Last) ? QVariant(shown) : QVariant(shown.toInt());
}

tarnwick::RowColours FieldTable::colours(int row) const
{
    constexpr int kMiddle = 128;
    if (!isField(row) || m_list == List::Filename)
        return {};
    const ColourRef ground = fields()[row].colour;
    const int light = (299 * ground.red() + 587 * ground.green() + 114 * ground.blue()) / 1000;
    return {light > kMiddle ? ColourRef(0x000000) : ColourRef(0xFFFFFF), ground};
}

QString FieldTable::whyNotEditable(int row, int column) const
{
    if (row > fields().size())
        return u"Fill in the empty rows from the first one on."_s;
    if (m_items[column] == Item::Last && m_list == List::Report && m_spec.isCommaDelimited())
        return u"The last column is not used in comma-delimited texts."_s;
    if (m_items[column] == Item::Keyword && isField(row) && fields()[row].part == qint32(CommentPart::FixedCols))
        return u"A field of fixed columns has no keyword."_s;
    return {};
}

// Stores the text in the field. Returns the reason why it was refused; empty if it was stored.
QString FieldTable::refusal(ConvField &field, Item item, const QString &text) const
{
    const auto choose = [&text](qint32 &number, const QStringList &labels) {
        number = std::max(0, int(labels.indexOf(text)));
    };
    switch (item) {
    case Item::Type:
        choose(field.type, typeLabels());
        return {};
    case Item::Part:
        choose(field.part, partLabels());
        return {};
    case Item::Keyword:
        field.keyword = text;
        return {};
    case Item::Colour:
        if (const auto colour = colourOf(text.trimmed())) {
            field.colour = *colour;
            return {};
        }
        return tarnwick::format(messages::kNotAColour.text, text);
    case Item::First:
    case Item::Last:
        break;
    }
    const auto number = tarnwick::string_to_value<qint32>(text);
    if (!number || *number < 0 || *number > kMostColumn)
        return tarnwick::format(messages::kNotANumber.text, text, 0, kMostColumn);
    if (item == Item::Last) {
        if (*number < field.firstColumn)
            return tarnwick::format(messages::kLastBeforeFirst.text, *number, field.firstColumn);
        field.lastColumn = *number;
    } else {
        // A field that is moved keeps its width.
        if (*number > field.lastColumn)
            field.lastColumn = *number + std::max(0, field.lastColumn - field.firstColumn);
        field.firstColumn = *number;
    }
    return {};
}

bool FieldTable::setText(int row, int column, const QString &text)
{
    ConvField field = fields().value(row);
    const QString reason = refusal(field, m_items[column], text);
    if (!reason.isEmpty()) {
        m_prompts.showError(tarnwick::kErrorSeverity, 0, reason);
        return false;
    }
    if (isField(row))
        fields()[row] = field;
    else
        fields().append(field);
    notify();
    return true;
}

bool FieldTable::insertRow(int row)
{
    fields().insert(std::min<qsizetype>(row, fields().size()), ConvField());
    ++m_rows;
    notify();
    return true;
}

QString FieldTable::whyNotDeletable(int row) const
{
    return isField(row) ? QString() : u"The row is empty."_s;
}

bool FieldTable::deleteRow(int row)
{
    fields().removeAt(row);
    --m_rows;
    notify();
    return true;
}

int FieldTable::moveRows(const QList<int> &rows, int before)
{
    if (!std::all_of(rows.begin(), rows.end(), [this](int row) { return isField(row); }))
        return -1;
    const int first = tarnwick::moveBefore(fields(), rows, before);
    notify();
    return first;
}

GridColumn PairTable::column(int column) const
{
    constexpr int kWidth = 24;
    return {.title = m_titles[column], .width = kWidth};
}

QString &PairTable::place(int row, int column) const
{
    TextPair &pair = m_pairs[row];
    return (column == 0) == m_isEntryFirst ? pair.entry : pair.from;
}

QString PairTable::text(int row, int column) const
{
    return place(row, column);
}

bool PairTable::setText(int row, int column, const QString &text)
{
    place(row, column) = text;
    notify();
    return true;
}

bool PairTable::insertRow(int row)
{
    m_pairs.insert(row, TextPair());
    notify();
    return true;
}

bool PairTable::deleteRow(int row)
{
    m_pairs.removeAt(row);
    notify();
    return true;
}

int PairTable::moveRows(const QList<int> &rows, int before)
{
    const int first = tarnwick::moveBefore(m_pairs, rows, before);
    notify();
    return first;
}

} // namespace conversion
