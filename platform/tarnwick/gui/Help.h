#pragma once
#include <QString>

#include <functional>

class QDialog;
class QDialogButtonBox;
class QPushButton;

namespace tarnwick {

/// Shows pages of the user's guide. The program shows them in the desktop's browser; tests replace it.
class GuideViewer
{
public:
    virtual ~GuideViewer() = default;
    /// Returns false if no program could be started.
    virtual bool show(const QString &file) = 0;
};

/// Replaces the desktop's browser; null restores it.
void setGuideViewer(GuideViewer *viewer);

/// Opens the guide at an anchor, or at its first page if the anchor is empty or unknown. Returns why it could not be
/// opened; empty if it was.
QString openGuide(const QString &anchor = {});

/// Anchor of the place in the guide that explains a message.
QString messageAnchor(int number);

/// A Help button for a dialog. It and F1 open the guide at the anchor that is the dialog's object name. report: shows
/// why the guide could not be opened; without it a tool tip at the button does.
QPushButton *makeHelpButton(QDialog &dialog, const std::function<void(const QString &)> &report = {});
/// Adds such a button to the others of the dialog.
void addHelp(QDialog &dialog, QDialogButtonBox &buttons, const std::function<void(const QString &)> &report = {});

} // namespace tarnwick
