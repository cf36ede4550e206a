#pragma once
#include <QWidget>

class QLabel;
class QLineEdit;

namespace tarnwick {

/// The line below a table or text in which a text to find is typed.
class GridFindBar : public QWidget
{
    Q_OBJECT
public:
    explicit GridFindBar(QWidget *parent);

    QString text() const;
    /// Takes the focus, with the last text marked.
    void begin();
    void showNote(const QString &note);

Q_SIGNALS:
    void findRequested(bool forward);
    /// With Esc or the button.
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_field;
    QLabel *m_note;
};

} // namespace tarnwick
