#pragma once
#include <tarnwick/base/Progress.h>

#include <functional>
#include <QElapsedTimer>
#include <QEvent>
#include <QObject>

class QAbstractScrollArea;
class QWidget;

namespace query {

/// Keeps the window alive while a statement runs: paints, counts rows and seconds, scrolls the rows found so far, and
/// reacts to Stop and Esc. All other input of the program is discarded.
class RunProgress : public QObject, public tarnwick::Progress
{
    Q_OBJECT
public:
    /// stop: the button that stops. rows: the table, which the wheel and its scroll bars scroll. shown: told the rows
    /// found so far and the seconds, about ten times a second.
    RunProgress(QWidget &stop, QAbstractScrollArea &rows, std::function<void(qint64 rows, double seconds)> shown);
    /// Discards the input that came while the statement ran.
    ~RunProgress() override;

    bool cancelled() override;
    void report(qint64 done, qint64 total, const QString &what) override;
    void stop() { m_isStopped = true; }
    bool isStopped() const { return m_isStopped; }
    /// Rows that the statement has found so far, as far as known.
    qint64 rows() const { return m_rows; }
    /// Shows and paints what has changed, and takes input.
    void pump();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isScrolling(QObject *watched, QEvent::Type type) const;

    QWidget &m_stop;
    QAbstractScrollArea &m_table;
    std::function<void(qint64, double)> m_shown;
    qint64 m_rows = 0;
    bool m_isStopped = false;
    bool m_isPumping = false;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sincePump;
};

} // namespace query
