#pragma once
#include <tarnwick/Progress.h>

#include <chrono>
#include <memory>
#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;

namespace tarnwick {

/// Shows long work with a bar and Cancel. It appears only when the work lasts longer than the delay, so that quick work
/// does not flicker. While it lives, the user's input reaches this dialog only: the rest of the program is painted, but
/// nothing else can be clicked or typed while the work is under way.
class ProgressDialog : public Progress
{
public:
    explicit ProgressDialog(QWidget *parent, const QString &title,
                            std::chrono::milliseconds delay = std::chrono::seconds(1));
    ~ProgressDialog() override;

    void report(qint64 done, qint64 total, const QString &what) override;
    bool cancelled() override;

    const QDialog *dialog() const;

private:
    class Dialog;
    void showWhenLate();
    void pumpEvents();

    std::unique_ptr<Dialog> m_dialog;
    std::chrono::milliseconds m_delay;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sincePump;
    bool m_pumping = false;
};

} // namespace tarnwick
