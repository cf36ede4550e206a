#pragma once
#include <query/ArvoOptionsEdit.h>

#include <QWidget>

class QComboBox;
class QPlainTextEdit;
class QPushButton;

namespace query {

/// Page of the tube dialog's listings: their names and SQL texts.
class TubeInfoPage : public QWidget
{
    Q_OBJECT
public:
    /// edit must outlive the page.
    explicit TubeInfoPage(ArvoOptionsEdit &edit, QWidget *parent = nullptr);

private:
    /// Refills the list and selects this tab; -1 for none.
    void refresh(int tab);
    void showTab();
    void addTab();
    void removeTab();

    ArvoOptionsEdit &m_edit;
    QComboBox *m_name;
    QPushButton *m_delete;
    QPlainTextEdit *m_sql;
    bool m_isShowing = false; ///< true while the program fills the controls: change signals are ignored
};

} // namespace query
