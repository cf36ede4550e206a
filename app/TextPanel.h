#pragma once
#include <QLabel>

namespace app {

/// Lines of text in a fixed-width font, in a frame. Long lines are cut; the tip shows the whole text.
class TextPanel : public QFrame
{
    Q_OBJECT
public:
    /// sample: a text that must fit.
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
