#pragma once
#include <query/ArvoOptionsEdit.h>

#include <QWidget>

class QComboBox;
class QPlainTextEdit;
class QPushButton;

namespace query {

/// The listings of the tube dialog: their names and their SQL texts.
class TubeInfoPage : public QWidget
{
    Q_OBJECT
public:
    /// edit outlives the page.
    explicit TubeInfoPage(ArvoOptionsEdit &edit, QWidget *parent = nullptr);

private:
    /// Shows the list anew with this tab chosen, -1 for none.
    void refresh(int tab);
    void showTab();
    void addTab();
    void removeTab();

    ArvoOptionsEdit &m_edit;
    QComboBox *m_name;
    QPushButton *m_delete;
    QPlainTextEdit *m_sql;
    bool m_isShowing = false; ///< what changes now is not the user's doing
};

} // namespace query
