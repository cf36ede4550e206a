#include "SqlFindBar.h"

#include "SqlEditor.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace query {

using namespace Qt::StringLiterals;

SqlFindBar::SqlFindBar(SqlEditor &editor, QWidget *parent)
    : QWidget(parent)
    , m_editor(editor)
    , m_text(new QLineEdit)
    , m_by(new QLineEdit)
    , m_isCaseSensitive(new QCheckBox(u"Match case"_s))
    , m_found(new QLabel)
{
    setObjectName(u"findBar"_s);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    const auto addField = [row](const QString &name, QLineEdit *field) {
        field->setPlaceholderText(name);
        field->setAccessibleName(name);
        field->setClearButtonEnabled(true);
        row->addWidget(field, 1);
    };
    const auto addButton = [this, row](const QString &text, const QString &tip, const auto &pressed) {
        auto *button = new QToolButton;
        button->setText(text);
        button->setToolTip(tip);
        connect(button, &QToolButton::clicked, this, pressed);
        row->addWidget(button);
    };
    addField(u"Find"_s, m_text);
    addButton(u"Previous"_s, u"Find the occurrence before (Shift+Return)"_s, [this] { findNext(false); });
    addButton(u"Next"_s, u"Find the next occurrence (Return)"_s, [this] { findNext(true); });
    row->addWidget(m_isCaseSensitive);
    addField(u"Replace by"_s, m_by);
    addButton(u"Replace"_s, u"Replace the occurrence that is selected, and find the next"_s, [this] { replaceOne(); });
    addButton(u"Replace All"_s, u"Replace every occurrence in the query"_s, [this] { replaceEvery(); });
    row->addWidget(m_found);
    hide();
}

void SqlFindBar::open()
{
    const QString selected = m_editor.selectedText();
    if (!selected.isEmpty() && !selected.contains(u'\n'))
        m_text->setText(selected);
    m_found->clear();
    show();
    m_text->setFocus();
    m_text->selectAll();
}

void SqlFindBar::findNext(bool isForward)
{
    const bool isFound = m_editor.find(m_text->text(), isForward, m_isCaseSensitive->isChecked());
    m_found->setText(isFound || m_text->text().isEmpty() ? QString() : u"Not found."_s);
}

void SqlFindBar::replaceOne()
{
    const Qt::CaseSensitivity sensitivity = m_isCaseSensitive->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (!m_text->text().isEmpty() && m_editor.selectedText().compare(m_text->text(), sensitivity) == 0)
        m_editor.replacePart(m_editor.selectedPart(), m_by->text());
    findNext(true);
}

void SqlFindBar::replaceEvery()
{
    const int replaced = m_editor.replaceEvery(m_text->text(), m_by->text(), m_isCaseSensitive->isChecked());
    m_found->setText(replaced == 0 ? u"Not found."_s : u"Replaced: %1."_s.arg(replaced));
}

void SqlFindBar::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        hide();
        m_editor.setFocus();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_by->hasFocus())
            replaceOne();
        else
            findNext(!(event->modifiers() & Qt::ShiftModifier));
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace query
