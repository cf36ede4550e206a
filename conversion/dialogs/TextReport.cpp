// Keys, mouse and scrolling; painting is in TextReportPaint.cpp.
#include "TextReport.h"

#include <QAccessibleWidget>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace conversion {

namespace {

/// Tells screen readers the current line.
class AccessibleText : public QAccessibleWidget
{
public:
    explicit AccessibleText(TextReport *view)
        : QAccessibleWidget(view, QAccessible::EditableText)
    {
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? static_cast<TextReport *>(widget())->currentText()
                                          : QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }
};

QAccessibleInterface *makeAccessible(const QString &className, QObject *object)
{
    return className == QLatin1StringView("conversion::TextReport")
               ? new AccessibleText(qobject_cast<TextReport *>(object))
               : nullptr;
}

} // namespace

TextReport::TextReport(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(isInstalled);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(u"Text report"_s);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setBackgroundRole(QPalette::Base);
    measure();
}

void TextReport::setText(const TextSource *text)
{
    m_text = text;
    m_longestLine = 0;
    for (int i = 0; i < lineCount(); ++i)
        m_longestLine = std::max(m_longestLine, m_text->line(i).size());
    m_notes.clear();
    m_cursor = m_anchor = {lineCount() > 0 ? 0 : -1, 0};
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    updateBars();
    viewport()->update();
}

void TextReport::setMarks(const FieldMarks &marks)
{
    m_marks = marks;
    viewport()->update();
}

void TextReport::setHighlighted(bool isHighlighted)
{
    m_isHighlighted = isHighlighted;
    viewport()->update();
}

void TextReport::setNotes(const QHash<int, QString> &notes)
{
    m_notes = notes;
    viewport()->update();
}

void TextReport::setFontSize(int points)
{
    QFont changed = font();
    changed.setPointSize(points);
    setFont(changed);
}

void TextReport::setVisiblePart(int columns, int lines)
{
    m_hintColumns = columns;
    m_hintLines = lines;
    updateGeometry();
}

QSize TextReport::sizeHint() const
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth();
    return {numberWidth() + int(m_charWidth * (m_hintColumns + 1)) + bar,
            headerHeight() + m_hintLines * m_lineHeight + bar};
}

void TextReport::measure()
{
    const QFontMetricsF metrics(font());
    m_charWidth = metrics.horizontalAdvance(u'0');
    m_lineHeight = qCeil(metrics.height()) + 2;
    updateBars();
    updateGeometry();
    viewport()->update();
}

int TextReport::numberWidth() const
{
    const int digits = std::max(4, int(QString::number(lineCount()).size()));
    return qCeil(m_charWidth * (digits + 2));
}

int TextReport::pageLines() const
{
    return std::max(1, (viewport()->height() - headerHeight()) / m_lineHeight);
}

void TextReport::updateBars()
{
    verticalScrollBar()->setRange(0, std::max(0, lineCount() - pageLines()));
    verticalScrollBar()->setPageStep(pageLines());
    const int page = std::max(2, int((viewport()->width() - numberWidth()) / m_charWidth));
    // One column more for the cursor at the end of the longest line.
    horizontalScrollBar()->setRange(0, std::max(0, int(std::min<qsizetype>(m_longestLine, INT_MAX / 2)) + 1 - page));
    horizontalScrollBar()->setPageStep(page);
    horizontalScrollBar()->setSingleStep(4);
}

qreal TextReport::xOf(qsizetype column) const
{
    return numberWidth() + m_charWidth * (0.5 + qreal(column - horizontalScrollBar()->value()));
}

TextReport::Place TextReport::placeAt(const QPoint &point) const
{
    const int line = verticalScrollBar()->value() + (point.y() - headerHeight()) / m_lineHeight;
    const int column = int(std::floor((point.x() - xOf(0)) / m_charWidth));
    return {std::clamp(line, 0, std::max(0, lineCount() - 1)), std::max(0, column)};
}

void TextReport::setCurrentLine(int line)
{
    if (line < 1 || line > lineCount() || line == currentLine())
        return;
    moveTo({line - 1, m_cursor.column}, false);
}

std::pair<int, int> TextReport::columns() const
{
    return std::minmax(m_anchor.column, m_cursor.column);
}

void TextReport::setColumns(int first, int last)
{
    m_anchor = {m_cursor.line, first};
    m_cursor.column = last;
    ensureVisible();
    viewport()->update();
}

void TextReport::moveTo(Place place, bool isExtending)
{
    if (lineCount() == 0)
        return;
    place.line = std::clamp(place.line, 0, lineCount() - 1);
    place.column = std::max(0, place.column);
    const int lineBefore = m_cursor.line;
    const std::pair<int, int> columnsBefore = columns();
    m_cursor = place;
    if (!isExtending)
        m_anchor = place;
    ensureVisible();
    viewport()->update();
    if (m_cursor.line != lineBefore) {
        QAccessibleValueChangeEvent event(this, currentText());
        QAccessible::updateAccessibility(&event);
        Q_EMIT currentLineChanged(currentLine());
    }
    if (columns() != columnsBefore)
        Q_EMIT columnsChanged(columns().first, columns().second);
}

void TextReport::ensureVisible()
{
    QScrollBar *lines = verticalScrollBar();
    lines->setValue(std::clamp(lines->value(), m_cursor.line - pageLines() + 1, std::max(0, m_cursor.line)));
    QScrollBar *bar = horizontalScrollBar();
    bar->setValue(std::clamp(bar->value(), m_cursor.column - bar->pageStep() + 2, m_cursor.column));
}

QString TextReport::currentText() const
{
    if (m_cursor.line < 0)
        return {};
    constexpr qsizetype kMostRead = 1000;
    return u"Line %1: %2"_s.arg(currentLine()).arg(m_text->line(m_cursor.line).left(kMostRead));
}

void TextReport::copy() const
{
    if (m_cursor.line < 0)
        return;
    const auto [top, bottom] = std::minmax(m_anchor.line, m_cursor.line);
    const auto [left, right] = columns();
    QString copied;
    for (int line = top; line <= bottom; ++line) {
        const QStringView text = m_text->line(line);
        copied += hasBlock() ? text.mid(std::min<qsizetype>(left, text.size()), right - left + 1) : text;
        if (line < bottom || !hasBlock())
            copied += u'\n';
    }
    QGuiApplication::clipboard()->setText(copied);
}

void TextReport::selectAll()
{
    m_anchor = {0, 0};
    m_cursor = {lineCount() - 1, 0};
    viewport()->update();
}

void TextReport::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copy();
        return;
    }
    if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        return;
    }
    Place place = m_cursor;
    const bool isControl = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Up:
        --place.line;
        break;
    case Qt::Key_Down:
        ++place.line;
        break;
    case Qt::Key_PageUp:
        place.line -= pageLines();
        break;
    case Qt::Key_PageDown:
        place.line += pageLines();
        break;
    case Qt::Key_Left:
        --place.column;
        break;
    case Qt::Key_Right:
        ++place.column;
        break;
    case Qt::Key_Home:
        (isControl ? place.line : place.column) = 0;
        break;
    case Qt::Key_End:
        if (isControl)
            place.line = lineCount() - 1;
        else if (place.line >= 0)
            place.column = int(std::max<qsizetype>(0, m_text->line(place.line).size() - 1));
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    const bool isExtending = event->modifiers() & Qt::ShiftModifier;
    m_isMarking = m_isMarking || (isExtending && place.column != m_cursor.column);
    moveTo(place, isExtending);
}

void TextReport::keyReleaseEvent(QKeyEvent *event)
{
    QAbstractScrollArea::keyReleaseEvent(event);
    if (event->key() == Qt::Key_Shift && std::exchange(m_isMarking, false) && hasBlock())
        Q_EMIT columnsMarked(columns().first, columns().second);
}

void TextReport::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && lineCount() > 0)
        moveTo(placeAt(event->pos()), event->modifiers() & Qt::ShiftModifier);
}

void TextReport::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        moveTo(placeAt(event->pos()), true);
}

void TextReport::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && hasBlock())
        Q_EMIT columnsMarked(columns().first, columns().second);
}

void TextReport::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.addAction(u"&Copy"_s, this, &TextReport::copy)->setEnabled(lineCount() > 0);
    menu.addAction(u"Select &All"_s, this, &TextReport::selectAll)->setEnabled(lineCount() > 0);
    menu.exec(event->globalPos());
}

void TextReport::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void TextReport::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void TextReport::resizeEvent(QResizeEvent *)
{
    updateBars();
}

void TextReport::scrollContentsBy(int, int)
{
    viewport()->update();
}

void TextReport::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        measure();
}

QString TextReport::tipAt(const QPoint &point) const
{
    const int line = verticalScrollBar()->value() + (point.y() - headerHeight()) / m_lineHeight;
    if (point.y() < headerHeight() || line >= lineCount())
        return {};
    if (point.x() < numberWidth())
        return m_notes.value(line + 1);
    const int column = placeAt(point).column;
    const QList<FieldMark> marks = m_marks.of(line + 1, m_text->line(line));
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
        if (column >= mark->first && column <= mark->last)
            return u"%1: columns %2 to %3"_s.arg(mark->label).arg(mark->first).arg(mark->last);
    }
    return {};
}

bool TextReport::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QString tip = tipAt(help->pos());
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), tip, viewport());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace conversion
