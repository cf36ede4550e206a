#pragma once
#include <tarnwick/base/Progress.h>

#include <chrono>
#include <memory>
#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;

namespace tarnwick {

/// Shows long work with a progress bar and Cancel. It appears only after a delay, so that short work does not make it
/// flicker. While it lives, only this dialog receives input; the rest of the program is repainted but does not react.
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
