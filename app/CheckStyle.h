#pragma once
#include <QProxyStyle>

class QPainter;

namespace app {

/// The Fusion style with check boxes that can be seen in dark palettes: their frame is drawn in the colour of the text.
/// Greyed texts are drawn once, without a light copy below them. A text with an underlined letter is as wide as its
/// size hint.
class CheckStyle : public QProxyStyle
{
    Q_OBJECT
public:
    CheckStyle();
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool isEnabled,
                      const QString &text, QPalette::ColorRole role = QPalette::NoRole) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *data = nullptr) const override;
};

/// A check box by itself. ink: of frame and tick; ground: what it stands on.
void paintCheckBox(QPainter &painter, const QRect &rect, Qt::CheckState state, const QColor &ink, const QColor &ground);

} // namespace app
