#pragma once
#include <tarnwick/base/Progress.h>

#include <functional>
#include <QElapsedTimer>
#include <QObject>

class QWidget;

namespace query {

/// Keeps the window alive while a statement runs: paints, counts rows and seconds, and reacts to Stop and Esc. All
/// other input of the program is discarded.
class RunProgress : public QObject, public tarnwick::Progress
{
    Q_OBJECT
public:
    /// stop: the button that stops. shown: told the rows found so far and the seconds, about ten times a second.
    RunProgress(QWidget &stop, std::function<void(qint64 rows, double seconds)> shown);
    /// Discards the input that came while the statement ran.
    ~RunProgress() override;

    bool cancelled() override;
    void report(qint64 done, qint64 total, const QString &what) override;
    void stop() { m_isStopped = true; }
    bool isStopped() const { return m_isStopped; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pump();

    QWidget &m_stop;
    std::function<void(qint64, double)> m_shown;
    qint64 m_rows = 0;
    bool m_isStopped = false;
    bool m_isPumping = false;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sincePump;
};

} // namespace query
