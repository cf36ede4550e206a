#pragma once
#include <app/logic/Commands.h>

#include <QToolBar>

class QToolButton;

namespace app {

/// One button for each kind of fill, in the order of their registration, then the program's own.
class MainToolBar : public QToolBar
{
    Q_OBJECT
public:
    explicit MainToolBar(QWidget *parent = nullptr);
    void refresh(const CommandContext &context);
    /// The first that can be pressed, for the keyboard to start at.
    QWidget *firstButton() const;

Q_SIGNALS:
    /// By the kind's key.
    void fillRequested(const QString &key);
    /// By the button's name.
    void buttonPressed(const QString &name);

private:
    struct Button
    {
        QToolButton *widget;
        When when;
        const char16_t *tip;
    };
    QToolButton *add(const QString &text, const QString &name, When when, const char16_t *tip);

    QList<Button> m_buttons;
};

} // namespace app
