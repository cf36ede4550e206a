#pragma once
#include <QObject>

class QWidget;

namespace tarnwick {

/// Size of the text in tables, chosen by the user: one for the whole program, in percent of the usual size. Tables
/// follow a change at once.
class TableText : public QObject
{
    Q_OBJECT
public:
    static TableText &instance();

    int percent() const { return m_percent; }
    /// From 50 to 300; other values are ignored.
    void setPercent(int percent);
    /// The table and its parts have this size from now on.
    static void follow(QWidget *table);

Q_SIGNALS:
    void changed();

private:
    static void apply(QWidget *table);

    int m_percent = 100;
};

} // namespace tarnwick
