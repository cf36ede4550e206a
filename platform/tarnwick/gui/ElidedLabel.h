#pragma once
#include <QLabel>

namespace tarnwick {

/// One line of plain text that may be longer than there is room: its end is then an ellipsis, and its tip has the whole
/// text. A long text does not make the window wider.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    /// Replaces the text; several lines are joined to one.
    void setLine(const QString &text);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void updateTip();
};

} // namespace tarnwick
