#pragma once
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace query {

class SqlEditor;

/// Find and replace in a SQL editor, below it. Return finds the next occurrence, Shift+Return the one before, Esc
/// closes.
class SqlFindBar : public QWidget
{
    Q_OBJECT
public:
    explicit SqlFindBar(SqlEditor &editor, QWidget *parent = nullptr);

    /// Shows the bar; a selected word becomes what is searched for.
    void open();
    void findNext(bool isForward);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void replaceOne();
    void replaceEvery();

    SqlEditor &m_editor;
    QLineEdit *m_text;
    QLineEdit *m_by;
    QCheckBox *m_isCaseSensitive;
    QLabel *m_found;
};

} // namespace query
