#include "MacroPage.h"

#include <tarnwick/gui/TableText.h>

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace query {

MacroPage::MacroPage(MacroModel *model, const QString &name, bool isEditable, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_table(new QTableView)
    , m_hint(new QLabel)
{
    model->setParent(this);
    m_table->setObjectName(name);
    tarnwick::TableText::follow(m_table);
    m_table->setModel(model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->setShowGrid(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    const int character = m_table->fontMetrics().averageCharWidth();
    const auto widen = [this, character](int column, int characters) {
        m_table->resizeColumnToContents(column);
        m_table->setColumnWidth(column, std::max(m_table->columnWidth(column), characters * character) + character);
    };
    widen(MacroModel::EntryColumn, 0);
    widen(MacroModel::NameColumn, ArvoOptionsEdit::kNameChars);
    m_hint->setObjectName(name + u"Hint"_s);
    m_hint->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_hint);
    if (isEditable) {
        m_hint->setText(u"Type in the last row to add a macro; Del removes the current one."_s);
        connect(model, &MacroModel::refused, m_hint, &QLabel::setText);
        addDelete();
        // The empty last row, where a new macro is typed.
        m_table->setCurrentIndex(model->index(model->rowCount() - 1, MacroModel::NameColumn));
    } else {
        m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        m_hint->setText(u"These macros follow the project, the map and the database."_s);
    }
}

void MacroPage::addDelete()
{
    auto *action = new QAction(u"Delete Macro"_s, m_table);
    action->setShortcut(QKeySequence::Delete);
    action->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(action);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(action, &QAction::triggered, this, [this] { m_model->remove(m_table->currentIndex().row()); });
}

void MacroPage::finishEditing()
{
    // The edited text is stored when the cell's editor loses the focus.
    if (QWidget *editor = QApplication::focusWidget(); editor && m_table->isAncestorOf(editor))
        m_table->setFocus();
}

} // namespace query
