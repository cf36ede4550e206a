#pragma once
#include "CommandActions.h"

#include <tarnwick/RecoveryCopies.h>

#include <QDialog>
#include <QTimer>

#include <memory>
#include <optional>

class QBoxLayout;
class QDialogButtonBox;
class QHBoxLayout;
class QLabel;
class QMenuBar;
class QPushButton;
class QVBoxLayout;

namespace tarnwick {

class ElidedLabel;

/// Base of the program's larger dialogs: menus and keys from a table of commands, a title bar for controls, the body, a
/// message line with the number of changes that are not stored, OK, Cancel and Help. Size and column widths are
/// remembered under the object name.
///
/// While the dialog is active, status texts of the window's prompts appear in its message line. Every command, OK and
/// Cancel run guarded: a failure is shown, and the dialog stays open.
///
/// A dialog that edits overrides isModified() and changeCount(), and the two ways out, store() and discard(), where its
/// transaction ends and its questions are asked. With keepDrafts() its unsaved work survives the death of the program.
class JDialog : public QDialog
{
    Q_OBJECT
public:
    ~JDialog() override;
    void showMessage(const QString &text);
    void accept() final;
    void reject() final;

protected:
    /// name: of the object, under which the size is remembered. table: must outlive the dialog; null for a dialog
    /// without commands.
    JDialog(UserPrompts &prompts, const CommandTable *table, const QString &name, QWidget *parent);

    UserPrompts &prompts() const { return m_prompts; }
    /// Bind the commands in the derived constructor, before finish(). Only with a table.
    CommandHandlers &commands() { return *m_handlers; }
    CommandActions &actions() { return *m_actions; }
    QHBoxLayout &titleBar() { return *m_titleBar; }
    QVBoxLayout &body() { return *m_body; }
    QDialogButtonBox &buttons() { return *m_buttons; }
    /// Adds a push button to a layout; pressed runs guarded. Return in another field does not press it.
    QPushButton *addButton(QBoxLayout &layout, const QString &text, const QString &name, const QString &tip,
                           const std::function<void()> &pressed);
    /// Call at the end of the derived constructor. first: receives the focus. size: the first time the dialog is used.
    void finish(QWidget *first, const QSize &size);
    /// Updates caption, commands and the number of changes. Called after every command; call it after other changes.
    void refresh();
    /// Runs work guarded and refreshes. Returns false if it failed.
    bool run(const std::function<void()> &work);

    /// Unsaved work is copied to the user's data folder shortly after each change, and a copy left by a dead program is
    /// offered now. owner: what the work belongs to, such as the project folder. kind: of the work, a word.
    void keepDrafts(const QString &owner, const QString &kind);

    /// Without the mark of changes.
    virtual QString caption() const = 0;
    /// True while something is not stored: the caption ends in "*".
    virtual bool isModified() const { return false; }
    /// Number of changes made in the dialog that OK will store and Cancel undo.
    virtual int changeCount() const { return 0; }
    /// OK: stores. Returns false if the dialog stays open.
    virtual bool store() { return true; }
    /// Cancel: asks where needed and discards. Returns false if the dialog stays open.
    virtual bool discard() { return true; }
    /// The unsaved work for recovery; empty if there is none.
    virtual QByteArray draft() const { return {}; }
    /// Takes over a draft. Throws Error if it cannot be read, Cancelled if that is not possible now: the next dialog
    /// offers it again.
    virtual void restoreDraft(const QByteArray &) {}
    /// The work in messages: query "wear.qry".
    virtual QString draftName(const QByteArray &) const { return caption(); }

private:
    void updateDraft();
    void close(bool isAccepted);

    UserPrompts &m_prompts;
    std::unique_ptr<CommandHandlers> m_handlers;
    CommandActions *m_actions = nullptr;
    QMenuBar *m_menuBar = nullptr;
    QHBoxLayout *m_titleBar;
    QVBoxLayout *m_body;
    ElidedLabel *m_message;
    QLabel *m_changes;
    QDialogButtonBox *m_buttons;
    std::optional<RecoveryCopies> m_copies;
    QTimer m_draftDelay;
    QString m_draftProblem; ///< reason why drafts cannot be kept; shown once
};

} // namespace tarnwick
