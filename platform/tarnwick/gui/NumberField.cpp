#include "NumberField.h"

#include <tarnwick/Format.h>

#include <cmath>
#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStyleOptionSpinBox>

namespace tarnwick {

using namespace Qt::StringLiterals;

NumberField::NumberField(QWidget *parent)
    : QDoubleSpinBox(parent)
{
    setDecimals(0);
    setAlignment(Qt::AlignRight);
    // only a field with the focus uses the wheel, so that scrolling a page changes no values
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(u"Click to step up, right-click to step down, middle-click for the minimum.\n"
               u"Ten steps with Shift, a hundred with Ctrl, a thousand with both."_s);
    lineEdit()->installEventFilter(this);
    connect(&m_repeat, &QTimer::timeout, this, [this] {
        m_repeat.setInterval(kRepeatInterval);
        step(m_backwards);
    });
    connect(this, &QDoubleSpinBox::valueChanged, this, [this](double number) {
        if (!m_isSetting)
            Q_EMIT numberEdited(number);
    });
}

void NumberField::setFormat(const QString &format)
{
    if (format == m_format)
        return;
    const QScopedValueRollback guard(m_isSetting, true);
    m_format = format;
    const qsizetype conversion = format.indexOf(QRegularExpression(u"[duf]"_s));
    m_unit = format.mid(conversion + 1).replace(u"%%"_s, u"%"_s).trimmed();
    const qsizetype point = format.indexOf(u'.');
    const double shown = value();
    setDecimals(point >= 0 && point < conversion ? format.mid(point + 1, conversion - point - 1).toInt() : 0);
    setValue(shown);
    lineEdit()->setText(textFromValue(value()));
}

void NumberField::setLimits(double minimum, double maximum, double step)
{
    if (minimum == this->minimum() && maximum == this->maximum() && step == singleStep())
        return;
    const QScopedValueRollback guard(m_isSetting, true);
    setRange(minimum, maximum);
    setSingleStep(step);
}

void NumberField::setNumber(double number)
{
    // The text must not be reformatted while the user types.
    if (number == value())
        return;
    const QScopedValueRollback guard(m_isSetting, true);
    setValue(number);
}

QString NumberField::textFromValue(double value) const
{
    return decimals() == 0 ? tarnwick::format(m_format, qRound64(value)) : tarnwick::format(m_format, value);
}

// A comma is either the decimal point or, between whole numbers, a group separator.
bool NumberField::parse(const QString &text, double &number) const
{
    static const QRegularExpression form(u"^\\s*([0-9]*[0-9.,]*)\\s*(\\D*)$"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return false;
    const QString behind = match.captured(2).trimmed();
    if (!behind.isEmpty() && !m_unit.startsWith(behind))
        return false;
    QString digits = match.captured(1);
    digits.replace(u","_s, decimals() == 0 ? u""_s : u"."_s);
    bool ok = false;
    number = digits.toDouble(&ok);
    return ok && (decimals() > 0 || !digits.contains(u'.'));
}

double NumberField::valueFromText(const QString &text) const
{
    double number = value();
    parse(text, number);
    return number;
}

QValidator::State NumberField::validate(QString &text, int &) const
{
    double number = 0;
    if (!parse(text, number)) {
        const QString typed = (m_unit.isEmpty() ? text : QString(text).remove(m_unit)).trimmed();
        const bool isUnfinished = typed.isEmpty() || typed == u"."_s;
        return isUnfinished ? QValidator::Intermediate : QValidator::Invalid;
    }
    if (number > maximum())
        return QValidator::Invalid;
    return number < minimum() ? QValidator::Intermediate : QValidator::Acceptable;
}

void NumberField::step(bool backwards, int times)
{
    const Qt::KeyboardModifiers keys = QGuiApplication::keyboardModifiers();
    const double units = std::pow(10.0, decimals());
    const StepRange range{qRound64(minimum() * units), qRound64(maximum() * units)};
    const qint64 amount = qRound64(singleStep() * units) * times *
                          stepFactor(keys.testFlag(Qt::ShiftModifier), keys.testFlag(Qt::ControlModifier));
    interpretText();
    const qint64 now = qRound64(value() * units);
    setValue(double(backwards ? range.decreased(now, amount) : range.increased(now, amount)) / units);
    selectAll();
}

void NumberField::stepBy(int steps)
{
    step(steps < 0);
}

bool NumberField::isDownArrow(const QPoint &place) const
{
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->hitTestComplexControl(QStyle::CC_SpinBox, &option, place, this) == QStyle::SC_SpinBoxDown;
}

void NumberField::press(Qt::MouseButton button, bool backwards)
{
    setFocus(Qt::MouseFocusReason);
    if (button == Qt::MiddleButton) {
        setValue(minimum());
        selectAll();
        return;
    }
    if (button != Qt::LeftButton && button != Qt::RightButton)
        return;
    m_backwards = backwards != (button == Qt::RightButton);
    step(m_backwards);
    m_repeat.start(kRepeatDelay);
}

void NumberField::release()
{
    m_repeat.stop();
}

bool NumberField::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != lineEdit() || !isEnabled())
        return QDoubleSpinBox::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        press(static_cast<QMouseEvent *>(event)->button(), false);
        return true;
    case QEvent::MouseButtonRelease:
        release();
        return true;
    case QEvent::MouseMove:
    case QEvent::ContextMenu:
        return true;
    default:
        return QDoubleSpinBox::eventFilter(watched, event);
    }
}

void NumberField::mousePressEvent(QMouseEvent *event)
{
    press(event->button(), isDownArrow(event->position().toPoint()));
}

void NumberField::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void NumberField::mouseReleaseEvent(QMouseEvent *)
{
    release();
}

void NumberField::mouseMoveEvent(QMouseEvent *)
{
}

void NumberField::contextMenuEvent(QContextMenuEvent *)
{
}

void NumberField::keyPressEvent(QKeyEvent *event)
{
    constexpr int kPage = 10;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        step(event->key() == Qt::Key_Down);
        return;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        step(event->key() == Qt::Key_PageDown, kPage);
        return;
    default:
        QDoubleSpinBox::keyPressEvent(event);
    }
}

void NumberField::wheelEvent(QWheelEvent *event)
{
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    // With Shift or Alt some systems report the wheel as horizontal.
    const QPoint turned = event->angleDelta();
    const int delta = turned.y() != 0 ? turned.y() : turned.x();
    if (delta != 0)
        step(delta < 0);
    event->accept();
}

void NumberField::hideEvent(QHideEvent *event)
{
    release();
    QDoubleSpinBox::hideEvent(event);
}

} // namespace tarnwick
