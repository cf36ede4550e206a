#pragma once
#include <QLabel>

namespace app {

/// A few lines of text in the fixed-width font, in a frame. Long lines are cut and shown whole in the tip.
class TextPanel : public QFrame
{
    Q_OBJECT
public:
    /// sample: the text that the panel must have room for.
    TextPanel(const QString &name, const QString &accessibleName, const QString &sample, QWidget *parent = nullptr);
    void setText(const QString &text);
    QString text() const { return m_text; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    static constexpr int kPadding = 8;
    QSize textSize(const QString &text) const;

    QString m_text;
    QString m_sample;
};

} // namespace app
