#include "ResultGrid.h"

#include "CellText.h"
#include "Messages.h"
#include "PlainText.h"

#include <dao/values/Errors.h>
#include <QScopeGuard>
#include <utility>

namespace query {

using namespace Qt::StringLiterals;
using dao::DataType;

namespace {

/// Cells kept for repainting: more than a large screen shows.
constexpr size_t kShownCells = 8192;
constexpr qsizetype kShownCharacters = 500;
/// A longer text is not edited in a cell: the field would take seconds for each key.
constexpr qsizetype kLongestEdited = 30'000;

} // namespace

ResultGrid::ResultGrid(QueryResult &result, TableMode mode, tarnwick::UserPrompts &prompts)
    : ResultSource(result)
    , m_result(result)
    , m_mode(mode)
    , m_prompts(prompts)
    , m_shown(kShownCells)
{
}

bool ResultGrid::has(int row, int column) const
{
    return row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
}

ResultGrid::Shown &ResultGrid::shownCell(int row, int column) const
{
    constexpr size_t kMostColumns = 256;
    return m_shown[(size_t(row) * kMostColumns + size_t(column)) * 31 % kShownCells];
}

QStringList ResultGrid::booleanWords(int column) const
{
    const db::ColumnFormat &format = m_result.column(column);
    const QStringList words = format.format.split(u' ', Qt::SkipEmptyParts);
    return format.type == DataType::Boolean && words.size() == 2 ? words : QStringList();
}

tarnwick::GridColumn ResultGrid::column(int column) const
{
    tarnwick::GridColumn grid = ResultSource::column(column);
    if (m_result.column(column).type == DataType::Date)
        grid.editor = tarnwick::GridColumn::Editor::Date;
    if (const QStringList words = booleanWords(column); !words.isEmpty()) {
        grid.editor = tarnwick::GridColumn::Editor::Choice;
        grid.choices = words;
    }
    return grid;
}

QString ResultGrid::text(int row, int column) const
{
    if (!has(row, column))
        return {};
    Shown &shown = shownCell(row, column);
    if (!m_result.isReadable()) {
        const bool isShown = shown.row == row && shown.column == column;
        m_hasBlanks = m_hasBlanks || !isShown;
        return isShown ? shown.text : QString();
    }
    shown.row = row;
    shown.column = column;
    try {
        const QString text = m_result.cellText(row, column);
        shown.text = text.left(kShownCharacters);
        return text;
    } catch (const tarnwick::Error &) {
        return shown.text = u"#Error"_s;
    }
}

void ResultGrid::forgetShown()
{
    m_shown.assign(kShownCells, {});
    m_hasBlanks = false;
}

QVariant ResultGrid::value(int row, int column) const
{
    if (!has(row, column) || !m_result.isReadable())
        return {};
    try {
        return ResultSource::value(row, column);
    } catch (const dao::DaoException &exception) {
        if (exception.number() == dao::error::RecordDeleted)
            return {};
        throw;
    }
}

// Called while a cell is opened for editing and when its text is stored, where a failure cannot be shown;
// whyNotEditable() and setText() tell about it.
QString ResultGrid::editText(int row, int column) const
{
    if (!has(row, column) || !m_result.isReadable())
        return {};
    try {
        const dao::Value value = m_result.value(row, column);
        return value.type() == dao::Value::Type::Boolean ? cellText(value, m_result.column(column)) : plainText(value);
    } catch (const tarnwick::Error &) {
        return {};
    }
}

tarnwick::RowColours ResultGrid::colours(int row) const
{
    return row >= 0 && row < rowCount() ? m_result.colours(row) : tarnwick::RowColours();
}

QString ResultGrid::tip(int row, int column) const
{
    if (!has(row, column) || !m_result.isReadable())
        return {};
    if (m_result.isUnfinished(row)) {
        const QStringList lacking = m_result.lackingFields(row);
        return lacking.isEmpty() ? u"This row is not stored yet."_s
                                 : u"This row is stored when it has a value for %1."_s.arg(lacking.join(u", "_s));
    }
    const QString tip = m_result.cellTip(row, column);
    return tip.isEmpty() ? m_result.colourReason(row) : tip;
}

QString ResultGrid::whyReadOnly() const
{
    if (m_result.isPaused())
        return u"A query is running."_s;
    if (m_mode == TableMode::Read)
        return u"The rows are only shown here. The SQL editor of the main window can change them."_s;
    return dao::sql::notUpdatableText(m_result.whyNotUpdatable());
}

QString ResultGrid::whyNotEditable(int column) const
{
    const dao::sql::Column &source = m_result.source(column);
    if (source.source < 0)
        return u"The values of this column are calculated."_s;
    if (source.info.isAutoIncrement())
        return u"The numbers of this column are given by the database."_s;
    if (source.info.type == DataType::LongBinary || source.info.type == DataType::Binary)
        return u"Binary data cannot be edited as text."_s;
    return source.updatable ? QString() : u"This column cannot be edited."_s;
}

QString ResultGrid::whyNotEditable(int row, int column) const
{
    if (!has(row, column))
        return u"There is no cell."_s;
    if (const QString reason = whyReadOnly(); !reason.isEmpty())
        return reason;
    if (const QString reason = whyNotEditable(column); !reason.isEmpty())
        return reason;
    try {
        if (m_result.value(row, column).text().size() <= kLongestEdited)
            return {};
        return u"The text is too long to be edited in a cell."_s;
    } catch (const tarnwick::Error &error) {
        return error.details();
    }
}

void ResultGrid::beginEdit(int row)
{
    m_editedRow = row;
    m_seen.clear();
    try {
        m_seen = m_result.rowValues(row);
    } catch (const tarnwick::Error &) {
        m_editedRow = -1;
    }
}

bool ResultGrid::setText(int row, int column, const QString &text)
{
    if (!whyNotEditable(row, column).isEmpty())
        return false;
    const qsizetype word = booleanWords(column).indexOf(text);
    const QString typed = word < 0 ? text : word == 0 ? u"1"_s : u"0"_s;
    const QList<dao::Value> seen = row == m_editedRow ? m_seen : QList<dao::Value>();
    m_editedRow = -1;
    if (!m_result.setCell(row, column, typed, seen)) {
        m_prompts.status(messages::kTextNotStored, text, m_result.column(column).title);
        m_isRefusalShown = true;
        return false;
    }
    if (std::exchange(m_isRefusalShown, false))
        m_prompts.showStatus({});
    return true;
}

QString ResultGrid::whyNotInsertable() const
{
    return whyReadOnly();
}

bool ResultGrid::insertRow(int row)
{
    m_editedRow = -1;
    m_result.insertRow(row);
    return true;
}

QString ResultGrid::whyNotDeletable(int row) const
{
    return row >= 0 && row < rowCount() ? whyReadOnly() : u"There is no row."_s;
}

bool ResultGrid::deleteRow(int row)
{
    m_editedRow = -1;
    if (m_isStopped)
        return false;
    const int before = rowCount();
    if (!m_result.deleteRow(row))
        m_isStopped = m_isGrouped;
    return rowCount() < before; // a row that could not be deleted leaves the table, too
}

void ResultGrid::asOneChange(const std::function<void()> &work)
{
    m_isGrouped = true;
    const auto end = qScopeGuard([this] { m_isGrouped = m_isStopped = false; });
    work();
}

int ResultGrid::addressColumns() const
{
    static const QStringList kAddress{u"sec"_s, u"row"_s, u"col"_s};
    int count = 0;
    while (count < columnCount() && kAddress.contains(m_result.column(count).name, Qt::CaseInsensitive))
        ++count;
    return count;
}

} // namespace query
