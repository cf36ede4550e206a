#pragma once
#include <QLabel>

namespace app {

/// Message line of the status bar: one line, cut to its width; the tip has the whole text.
class StatusLine : public QLabel
{
public:
    explicit StatusLine(QWidget *parent = nullptr);

    /// Replaces the text; several lines are joined to one.
    void say(const QString &text);
    /// While on, a text is appended to the one before.
    void setJoins(bool on) { m_joins = on; }
    /// Clears a text that is outdated.
    void forget() { say({}); }
    /// Call at the end of work: clears a text about work in progress ("Execute ...").
    void endWork();

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void updateTip();

    bool m_joins = false;
};

} // namespace app
