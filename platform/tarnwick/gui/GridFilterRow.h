#pragma once
#include "GridLayout.h"

#include <tarnwick/GridModel.h>

#include <QTimer>
#include <QWidget>

class QLineEdit;

namespace tarnwick {

/// A line of fields below the titles of a table, one a column, in which conditions are typed (see GridFilter).
class GridFilterRow : public QWidget
{
    Q_OBJECT
public:
    GridFilterRow(const GridLayout &layout, QWidget *parent);

    /// One empty field a column.
    void setColumns(const GridModel &model);
    /// Puts the fields below their columns, after these were moved or made wider.
    void place();
    QStringList texts() const;
    void clear();
    void focusColumn(int column);
    QSize sizeHint() const override;

Q_SIGNALS:
    /// Some time after the last letter, or at once with Return.
    void filterTyped();
    /// With Esc.
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const GridLayout &m_layout;
    QWidget *m_scrolled; ///< clips the fields of columns that scroll
    QList<QLineEdit *> m_fields;
    QTimer m_delay;
};

} // namespace tarnwick
