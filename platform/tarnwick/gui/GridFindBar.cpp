#include "GridFindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tarnwick {

GridFindBar::GridFindBar(QWidget *parent)
    : QWidget(parent)
    , m_field(new QLineEdit)
    , m_note(new QLabel)
{
    setAutoFillBackground(true);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    m_field->setObjectName(u"findText"_s);
    m_field->setAccessibleName(u"Text to find"_s);
    m_field->setPlaceholderText(u"Find"_s);
    m_field->installEventFilter(this);
    layout->addWidget(m_field, 1);
    const auto addButton = [&](const QString &text, const QString &tip, auto pressed) {
        auto *button = new QToolButton;
        button->setText(text);
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, this, pressed);
        layout->addWidget(button);
    };
    addButton(u"▲"_s, u"Find previous (Shift+F3)"_s, [this] { Q_EMIT findRequested(false); });
    addButton(u"▼"_s, u"Find next (F3)"_s, [this] { Q_EMIT findRequested(true); });
    layout->addWidget(m_note, 1);
    addButton(u"✕"_s, u"Close (Esc)"_s, [this] { Q_EMIT closed(); });
}

QString GridFindBar::text() const
{
    return m_field->text();
}

void GridFindBar::begin()
{
    m_note->clear();
    m_field->selectAll();
    m_field->setFocus(Qt::ShortcutFocusReason);
}

void GridFindBar::showNote(const QString &note)
{
    m_note->setText(note);
}

bool GridFindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            Q_EMIT findRequested(!key->modifiers().testFlag(Qt::ShiftModifier));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void GridFindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT closed(); // also from the buttons: the dialog must not take Esc as Cancel
    else
        QWidget::keyPressEvent(event);
}

} // namespace tarnwick
