#include "ReturnKey.h"

#include <QKeyEvent>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

class ReturnKey : public QObject
{
public:
    explicit ReturnKey(QAbstractButton *button)
        : QObject(button)
        , m_button(button)
    {
        setObjectName(u"returnKey"_s);
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
        auto *tool = qobject_cast<QToolButton *>(m_button);
        if (tool && tool->menu() && tool->popupMode() == QToolButton::InstantPopup)
            tool->showMenu();
        else
            m_button->click();
        return true;
    }

private:
    QAbstractButton *m_button;
};

} // namespace

void pressWithReturn(QAbstractButton *button)
{
    new ReturnKey(button);
}

} // namespace tarnwick
