#pragma once
#include <tarnwick/Prompts.h>

#include <functional>
#include <QPointer>
#include <QWidget>

namespace tarnwick {

/// The prompts of a window: errors, questions and informations as message boxes over it, status texts to a function.
class BoxPrompts : public UserPrompts
{
public:
    using StatusFunction = std::function<void(const QString &)>;

    /// parent may be null; boxes then stand by themselves. showStatus may be empty.
    explicit BoxPrompts(QWidget *parent, StatusFunction showStatus = {});

    /// The number stands in the box's title; the text is shown as it is, never as mark-up.
    void showError(int severity, int number, const QString &text) override;
    void showInformation(const QString &text) override;
    /// Closing the box answers Cancel where there is such a button, else No.
    Answer ask(Buttons buttons, const QString &text, int number) override;
    void showStatus(const QString &text) override;

private:
    QWidget *boxParent() const;

    QPointer<QWidget> m_parent;
    StatusFunction m_showStatus;
};

} // namespace tarnwick
