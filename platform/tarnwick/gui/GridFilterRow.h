#pragma once
#include "GridLayout.h"

#include <tarnwick/GridModel.h>

#include <QTimer>
#include <QWidget>

class QLineEdit;

namespace tarnwick {

/// A row of input fields below the titles of a table, one per column, for filter conditions (see GridFilter).
class GridFilterRow : public QWidget
{
    Q_OBJECT
public:
    GridFilterRow(const GridLayout &layout, QWidget *parent);

    /// One empty field a column.
    void setColumns(const GridModel &model);
    /// Aligns the fields with their columns after these were moved or resized.
    void place();
    QStringList texts() const;
    /// The remaining fields are cleared.
    void setTexts(const QStringList &texts);
    void clear();
    void focusColumn(int column);
    QSize sizeHint() const override;

Q_SIGNALS:
    /// Emitted a short time after the last key press, or at once with Return.
    void filterTyped();
    /// Emitted when Esc is pressed.
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const GridLayout &m_layout;
    QWidget *m_scrolled; ///< clips the fields of scrolling columns
    QList<QLineEdit *> m_fields;
    QTimer m_delay;
};

} // namespace tarnwick
