#pragma once
#include <db/DatabaseSession.h>

#include <QDialog>

class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace db {

/// Lets the user pick or type a name of a column of a table. Typing selects the first name that begins with the text;
/// Up and Down take the selected name and go on from it.
class ListOpenDlg : public QDialog
{
    Q_OBJECT
public:
    struct Setup
    {
        QString title;
        QString label;  ///< of the prompt
        QString column; ///< the names are its values
        QString table;
        QString initialName; ///< selected first; may be empty
    };
    /// The chosen name; empty if the user cancelled or no database is connected.
    static QString choose(DatabaseSession &session, const Setup &setup, QWidget *parent);

    ListOpenDlg(const Setup &setup, const QStringList &names, QWidget *parent = nullptr);
    QString name() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take(const QListWidgetItem *item);
    void selectTyped(const QString &text);

    QListWidget *m_list;
    QLineEdit *m_prompt;
};

} // namespace db
