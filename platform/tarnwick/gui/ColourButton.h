#pragma once
#include <QColor>
#include <QPushButton>

namespace tarnwick {

/// Shows a colour and lets the user choose another. While the chooser is open the colour follows it, so that what is
/// painted with it can be seen; cancelling brings the one before back.
class ColourButton : public QPushButton
{
    Q_OBJECT
public:
    explicit ColourButton(QWidget *parent = nullptr);
    QColor colour() const { return m_colour; }
    /// Does not say so by colourChanged().
    void setColour(const QColor &colour);
    QSize sizeHint() const override;

Q_SIGNALS:
    /// By the user.
    void colourChanged(const QColor &colour);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void choose();
    void follow(const QColor &colour);

    QColor m_colour = Qt::black;
};

} // namespace tarnwick
