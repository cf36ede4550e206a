#pragma once
#include <QProxyStyle>

class QPainter;

namespace app {

/// The Fusion style with check boxes that are visible in dark palettes: the frame has the colour of the text. Disabled
/// texts are drawn once, without a light copy below. A text with an underlined letter is as wide as its size hint. The
/// part with the focus is always marked, also before Tab is pressed; tables, lists and long texts by their frames.
class CheckStyle : public QProxyStyle
{
    Q_OBJECT
public:
    CheckStyle();
    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    using QProxyStyle::unpolish;
    void unpolish(QWidget *widget) override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool isEnabled,
                      const QString &text, QPalette::ColorRole role = QPalette::NoRole) const override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *data = nullptr) const override;
};

/// Paints a check box. ink: colour of frame and tick; ground: colour behind it.
void paintCheckBox(QPainter &painter, const QRect &rect, Qt::CheckState state, const QColor &ink, const QColor &ground);

} // namespace app
