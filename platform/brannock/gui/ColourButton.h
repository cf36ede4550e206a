#pragma once
#include "ColourChooser.h"

#include <QColor>
#include <QPushButton>

namespace brannock {

/// Shows a colour and lets the user choose another. While the chooser is open the colour follows it, so that what is
/// painted with it can be seen; cancelling brings the one before back.
class ColourButton : public QPushButton
{
    Q_OBJECT
public:
    /// chooser outlives the button.
    explicit ColourButton(ColourChooser &chooser, QWidget *parent = nullptr);
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

    ColourChooser &m_chooser;
    QColor m_colour = Qt::black;
};

} // namespace brannock
