// Edits of the format editor: fields made of marked columns, their colours, moving rows, undo.
#include "ReportConvSpecDlg.h"

#include "TextReport.h"

#include <conversion/FieldCutter.h>
#include <conversion/Messages.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/MovingRows.h>
#include <tarnwick/paint/Colours.h>

#include <QComboBox>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace conversion {

std::optional<ConvField> ReportConvSpecDlg::markedField()
{
    if (m_text->currentLine() == 0) {
        prompts().showStatus(QString::fromUtf16(messages::kMarkColumns.text));
        return std::nullopt;
    }
    ConvField field;
    field.type = std::max(0, m_type->currentIndex());
    std::tie(field.firstColumn, field.lastColumn) = m_text->columns();
    if (currentPage() == &m_filename)
        field.part = m_text->currentLine() - 1;
    else if (currentPage() == &m_comment)
        field.part = qint32(CommentPart::FixedCols);
    else if (m_spec.isCommaDelimited())
        field.firstColumn = field.lastColumn = valueAt(m_setup.text.line(m_text->currentLine() - 1), field.firstColumn);
    return field;
}

void ReportConvSpecDlg::addField()
{
    FieldPage *page = currentPage();
    const auto field = markedField();
    if (!page || !field)
        return;
    const int row = page->fields->add(*field);
    page->table->reload();
    page->table->setCurrentSourceRow(row);
}

void ReportConvSpecDlg::setFieldColumns()
{
    FieldPage *page = currentPage();
    const auto field = markedField();
    const int row = page ? page->table->currentSourceRow() : -1;
    if (!field || row < 0 || row >= page->fields->fields().size())
        return;
    page->fields->setColumns(row, field->firstColumn, field->lastColumn);
    page->table->grid().noteAllChanged();
}

void ReportConvSpecDlg::chooseColour()
{
    FieldPage *page = currentPage();
    const int row = page ? page->table->currentSourceRow() : -1;
    if (row < 0 || row >= page->fields->fields().size())
        return;
    if (const auto colour = m_colours.choose(this, fromColourRef(page->fields->fields()[row].colour)))
        page->fields->setColour(row, toColourRef(*colour));
}

SpecTable &ReportConvSpecDlg::currentRows()
{
    if (FieldPage *page = currentPage())
        return *page->fields;
    return m_tabs->currentIndex() == OperTypesTab ? m_operTypes : m_fileTypes;
}

void ReportConvSpecDlg::moveRows(int by)
{
    const auto [rows, before] = rowsToMove(*currentTable(), by);
    if (!rows.isEmpty())
        moveRows(rows, before);
}

void ReportConvSpecDlg::moveRows(const QList<int> &rows, int before)
{
    if (const int first = currentRows().moveRows(rows, before); first >= 0)
        showMoved(*currentTable(), first, int(rows.size()));
}

void ReportConvSpecDlg::takeState(const ReportConvSpec &state)
{
    m_spec.assignSettings(state);
    showSpec();
}

} // namespace conversion
