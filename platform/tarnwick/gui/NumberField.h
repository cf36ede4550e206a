#pragma once
#include <tarnwick/StepRange.h>

#include <QDoubleSpinBox>
#include <QTimer>

namespace tarnwick {

/// Numeric field of the suite. A left click adds the step, a right click subtracts it, a middle click sets the minimum;
/// holding a button repeats. The arrow buttons, the arrow keys and the wheel work as well. Shift multiplies the step by
/// 10, Ctrl by 100, both by 1000. Values wrap around at the ends. Numbers can also be typed.
///
/// stepped() and typed() are emitted only for the user's changes, not by setNumber().
class NumberField : public QDoubleSpinBox
{
    Q_OBJECT
public:
    static constexpr int kRepeatDelay = 500;   ///< ms
    static constexpr int kRepeatInterval = 30; ///< ms

    explicit NumberField(QWidget *parent = nullptr);

    /// Display format: one conversion, "%d" or "%u" for whole numbers, "%.3f" for others, with text around it.
    void setFormat(const QString &format);
    /// step: the amount added by one click or key.
    void setLimits(double minimum, double maximum, double step = 1);
    /// The number is limited to the range.
    void setNumber(double number);
    /// The number as a whole number.
    qint64 whole() const { return qRound64(value()); }

    void stepBy(int steps) override;
    QString textFromValue(double value) const override;
    double valueFromText(const QString &text) const override;
    QValidator::State validate(QString &text, int &pos) const override;

protected:
    /// Always both, since values wrap around.
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
    QString m_unit; ///< text behind the number
    QTimer m_repeat;
    bool m_backwards = false;
    bool m_isSetting = false;
};

} // namespace tarnwick
