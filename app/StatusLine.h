#pragma once
#include <QLabel>

namespace app {

/// The words of the status bar: one line, cut to its room, with the whole text as its tip.
class StatusLine : public QLabel
{
public:
    explicit StatusLine(QWidget *parent = nullptr);

    /// Shows a text in place of the one before; several lines go into one.
    void say(const QString &text);
    /// While on, a text stands behind the one before.
    void setJoins(bool on) { m_joins = on; }
    /// What was said is no longer of interest.
    void forget() { say({}); }
    /// Work has ended: a text that says that it is under way ("Execute ...") is no longer true.
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
