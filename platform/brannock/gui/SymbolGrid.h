#pragma once
#include <QColor>
#include <QTableView>

namespace brannock {

/// The table of symbols, sixteen in a row, drawn in the chosen colour. The chosen one is sunken; the one chosen before
/// it goes back to the colour of the text. Arrow keys and clicks choose.
class SymbolGrid : public QTableView
{
    Q_OBJECT
public:
    explicit SymbolGrid(QWidget *parent = nullptr);
    void setColour(const QColor &colour);
    QColor colour() const { return m_colour; }
    /// Place in the table of symbols, -1: none.
    int chosen() const { return m_chosen; }
    void choose(int place);
    /// Symbols that are looked for; the others are drawn faintly.
    void setFound(const QList<int> &places);

    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void symbolChosen(int place);
    /// The beginning of a name, typed while the grid has the focus.
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
    bool m_isEntered = false; ///< the focus is just coming
    QList<int> m_left;        ///< chosen before, since the colour was set
    QList<bool> m_found;
};

} // namespace brannock
