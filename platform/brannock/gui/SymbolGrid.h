#pragma once
#include <QColor>
#include <QTableView>

namespace brannock {

/// The table of symbols, 16 per row, drawn in the selected colour. The selected cell is sunken; the previous one
/// returns to the text colour. Selection by arrow keys and clicks.
class SymbolGrid : public QTableView
{
    Q_OBJECT
public:
    explicit SymbolGrid(QWidget *parent = nullptr);
    void setColour(const QColor &colour);
    QColor colour() const { return m_colour; }
    /// Index in the table of symbols; -1: none.
    int chosen() const { return m_chosen; }
    void choose(int place);
    /// Search results; all other symbols are drawn faintly.
    void setFound(const QList<int> &places);

    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void symbolChosen(int place);
    /// Emitted when the user types a letter of a name while the grid has the focus.
    void typed(const QString &text);

protected:
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    class Model;
    class Delegate;
    void userChose(const QModelIndex &cell);
    int leastCell() const;
    void fitCells();

    QColor m_colour;
    int m_chosen = -1;
    bool m_isEntered = false; ///< true while the grid receives the focus
    QList<int> m_left;        ///< selected earlier, since the colour was set
    QList<bool> m_found;
};

} // namespace brannock
