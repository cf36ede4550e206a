#pragma once
#include <query/FormatEdit.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/gui/JDialog.h>

class QComboBox;

namespace tarnwick {
class JTableWin;
}

namespace query {

/// "Display Formats": title, format, width and alignment of every field of the database.
class FormatInfoDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// Shows the dialog until it is closed. Without a database, or if its tables cannot be read, reports it instead.
    static void show(db::DatabaseSession &session, QueryContext &context, tarnwick::FileChoice &files, QWidget *parent);

    /// edit: opened. All references must outlive the dialog.
    FormatInfoDlg(FormatEdit &edit, QueryContext &context, tarnwick::UserPrompts &prompts, tarnwick::FileChoice &files,
                  QWidget *parent = nullptr);
    ~FormatInfoDlg() override;

protected:
    QString caption() const override { return QStringLiteral("Display Formats"); }
    bool isModified() const override { return m_edit.isModified(); }
    bool store() override;
    bool discard() override;

private:
    void showTables();
    void importFile();
    void exportFile();

    FormatEdit &m_edit;
    QueryContext &m_context;
    tarnwick::FileChoice &m_files;
    QComboBox *m_tables;
    tarnwick::JTableWin *m_table;
};

} // namespace query
