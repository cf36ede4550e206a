#pragma once
#include <QWidget>

class QLabel;
class QLineEdit;

namespace tarnwick {

/// Input line for the text to find, below a table or text.
class GridFindBar : public QWidget
{
    Q_OBJECT
public:
    explicit GridFindBar(QWidget *parent);

    QString text() const;
    /// Takes the focus and selects the last text.
    void begin();
    void showNote(const QString &note);

Q_SIGNALS:
    void findRequested(bool forward);
    /// Emitted when Esc or the close button is pressed.
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLineEdit *m_field;
    QLabel *m_note;
};

} // namespace tarnwick
