#include "ReturnKey.h"

#include <QKeyEvent>
#include <QToolButton>

namespace tarnwick {

namespace {

class ReturnKey : public QObject
{
public:
    explicit ReturnKey(QToolButton *button)
        : QObject(button)
        , m_button(button)
    {
        button->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (!isReturn || (key->modifiers() & ~Qt::KeypadModifier))
            return QObject::eventFilter(watched, event);
        if (key->isAutoRepeat())
            return true;
        if (m_button->menu() && m_button->popupMode() == QToolButton::InstantPopup)
            m_button->showMenu();
        else
            m_button->click();
        return true;
    }

private:
    QToolButton *m_button;
};

} // namespace

void pressWithReturn(QToolButton *button)
{
    new ReturnKey(button);
}

} // namespace tarnwick
