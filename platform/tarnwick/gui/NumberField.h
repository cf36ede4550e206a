#pragma once
#include <tarnwick/StepRange.h>

#include <QDoubleSpinBox>
#include <QTimer>

namespace tarnwick {

/// A numeric field of the suite: a click with the left button adds the step, with the right one subtracts it, with the
/// middle one sets the minimum; held down they repeat. The arrows beside the number, the arrow keys and the wheel do
/// the same. The step is taken ten times with Shift, a hundred times with Ctrl, a thousand times with both. Stepping
/// goes round at the ends. Numbers can be typed, too.
///
/// Emits stepped() and typed() only for what the user does; setNumber() is silent.
class NumberField : public QDoubleSpinBox
{
    Q_OBJECT
public:
    static constexpr int kRepeatDelay = 500;   ///< ms
    static constexpr int kRepeatInterval = 30; ///< ms

    explicit NumberField(QWidget *parent = nullptr);

    /// How numbers are shown: one conversion, "%d" or "%u" for whole numbers, "%.3f" for others, with text around it.
    void setFormat(const QString &format);
    /// In steps of the last decimal.
    void setLimits(double minimum, double maximum, double step = 1);
    /// Held within the limits on the screen.
    void setNumber(double number);
    /// The number, when it is a whole one.
    qint64 whole() const { return qRound64(value()); }

    void stepBy(int steps) override;
    QString textFromValue(double value) const override;
    double valueFromText(const QString &text) const override;
    QValidator::State validate(QString &text, int &pos) const override;

protected:
    /// At the ends, too, since stepping goes round.
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

Q_SIGNALS:
    /// The user has stepped or typed another number.
    void numberEdited(double number);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    bool isDownArrow(const QPoint &place) const;
    void press(Qt::MouseButton button, bool backwards);
    void release();
    void step(bool backwards, int times = 1);
    bool parse(const QString &text, double &number) const;

    QString m_format = QStringLiteral("%d");
    QString m_unit; ///< what stands behind the number
    QTimer m_repeat;
    bool m_backwards = false;
    bool m_isSetting = false;
};

} // namespace tarnwick
