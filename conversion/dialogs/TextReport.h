#pragma once
#include <conversion/FieldMarks.h>
#include <conversion/TextSource.h>

#include <QAbstractScrollArea>
#include <QHash>

namespace conversion {

/// The lines of a foreign text with their numbers, below titles and a ruler. The columns of a spec's fields are marked
/// in the fields' colours. Lines are read when they are painted, so a text of a million lines opens and scrolls like a
/// short one.
///
/// Keys: arrows, Page Up and Down, Home and End (with Ctrl: first and last line), with Shift for a block of columns or
/// whole lines, Ctrl+A, Ctrl+C. Dragging with the mouse marks a block, too.
class TextReport : public QAbstractScrollArea
{
    Q_OBJECT
public:
    explicit TextReport(QWidget *parent = nullptr);

    /// The text must outlive the view or be replaced first; null: none. The first line becomes current.
    void setText(const TextSource *text);
    void setMarks(const FieldMarks &marks);
    /// Fields are marked in their colours.
    void setHighlighted(bool isHighlighted);
    /// Texts for lines, by number, shown as tips; these line numbers are emphasised.
    void setNotes(const QHash<int, QString> &notes);
    void setFontSize(int points);
    /// Size of the view's hint in characters and lines.
    void setVisiblePart(int columns, int lines);

    /// From 1; 0 without lines.
    int currentLine() const { return m_cursor.line + 1; }
    void setCurrentLine(int line);
    /// First and last column, 0-based, of the block or the cursor.
    std::pair<int, int> columns() const;
    void setColumns(int first, int last);
    /// Copies the block, or whole lines if it has one column.
    void copy() const;
    void selectAll();

    QSize sizeHint() const override;
    /// For screen readers.
    QString currentText() const;

Q_SIGNALS:
    void currentLineChanged(int line);
    /// The user has marked other columns.
    void columnsChanged(int first, int last);
    /// The user has finished marking a block of columns, with the mouse or the keyboard.
    void columnsMarked(int first, int last);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    /// Line and column, 0-based. line -1: no lines.
    struct Place
    {
        int line = -1;
        int column = 0;
        bool operator==(const Place &) const = default;
    };
    int lineCount() const { return m_text ? m_text->lineCount() : 0; }
    int pageLines() const;
    int numberWidth() const;
    int headerHeight() const { return 2 * m_lineHeight; }
    qreal xOf(qsizetype column) const;
    Place placeAt(const QPoint &point) const;
    void measure();
    void updateBars();
    void moveTo(Place place, bool isExtending);
    void ensureVisible();
    bool hasBlock() const { return m_anchor.column != m_cursor.column; }
    QString tipAt(const QPoint &point) const;

    void paintTitles(QPainter &painter) const;
    void paintLine(QPainter &painter, int line) const;
    void paintNumber(QPainter &painter, int line) const;
    void paintColumns(QPainter &painter, int line, qsizetype first, qsizetype last, const QColor &ground,
                      const QColor &ink) const;
    void paintBlock(QPainter &painter, int line) const;
    void paintCursor(QPainter &painter) const;
    QRect lineRect(int line) const;
    QColor markColour(tarnwick::ColourRef colour, bool isCurrent) const;

    const TextSource *m_text = nullptr;
    FieldMarks m_marks;
    QHash<int, QString> m_notes;
    bool m_isHighlighted = true;
    Place m_cursor;
    Place m_anchor;
    qsizetype m_longestLine = 0;
    int m_lineHeight = 16;
    qreal m_charWidth = 8;
    int m_hintColumns = 80;
    int m_hintLines = 12;
    bool m_isMarking = false; ///< with the keyboard
};

} // namespace conversion
