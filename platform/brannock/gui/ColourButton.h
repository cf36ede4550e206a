#pragma once
#include "ColourChooser.h"

#include <QColor>
#include <QPushButton>

namespace brannock {

/// Shows a colour and lets the user select another. While the chooser is open, the colour follows it as a preview;
/// Cancel restores the previous colour.
class ColourButton : public QPushButton
{
    Q_OBJECT
public:
    /// chooser must outlive the button.
    explicit ColourButton(ColourChooser &chooser, QWidget *parent = nullptr);
    QColor colour() const { return m_colour; }
    /// Does not emit colourChanged().
    void setColour(const QColor &colour);
    QSize sizeHint() const override;

Q_SIGNALS:
    /// Emitted when the user changed the colour.
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
