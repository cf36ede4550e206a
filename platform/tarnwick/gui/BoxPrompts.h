#pragma once
#include <tarnwick/Prompts.h>

#include <functional>
#include <QPointer>
#include <QWidget>

namespace tarnwick {

/// Prompts of a window: errors, questions and information as message boxes over it. Status texts go to a function, or
/// to the message line of the active JDialog.
class BoxPrompts : public UserPrompts
{
public:
    using StatusFunction = std::function<void(const QString &)>;

    /// parent may be null; boxes then have no parent. showStatus may be empty.
    explicit BoxPrompts(QWidget *parent, StatusFunction showStatus = {});

    /// The number is in the box's title. The text is shown as plain text, never as markup.
    void showError(int severity, int number, const QString &text) override;
    void showInformation(const QString &text) override;
    /// Closing the box answers Cancel if there is such a button, else No.
    Answer ask(Buttons buttons, const QString &text, int number) override;
    void showStatus(const QString &text) override;

private:
    QWidget *boxParent() const;

    QPointer<QWidget> m_parent;
    StatusFunction m_showStatus;
};

} // namespace tarnwick
