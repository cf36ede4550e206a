#pragma once
#include <query/SchemaInfo.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

#include <array>

class QComboBox;
class QTabWidget;

namespace query {

/// "Database Tables": fields, indexes and relations of a table, and the stored queries. A double click or Return on a
/// row puts its name into the text of a query.
class JSchemaInfoDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    struct Setup
    {
        tarnwick::PathRoots roots;
        tarnwick::JMacro printMacros = {};
        /// Takes the name of a field, table or query, in brackets if needed. Empty: names cannot be taken.
        std::function<void(const QString &name)> insertName = {};
        QWidget *parent = nullptr;
    };
    /// Shows the dialog until it is closed. Without a database, or if its tables cannot be read, reports it instead.
    static void show(db::DatabaseSession &session, const Setup &setup);

    /// info: opened; must outlive the dialog.
    JSchemaInfoDlg(SchemaInfo &info, tarnwick::UserPrompts &prompts, const Setup &setup);
    ~JSchemaInfoDlg() override;

protected:
    QString caption() const override { return m_info.caption(m_setup.roots); }

private:
    void makeTab(int part, const QString &title);
    void showTable(const QString &name);
    void noteOrder();
    void insert(int part, int row);
    void print(bool isAll);

    SchemaInfo &m_info;
    Setup m_setup;
    QComboBox *m_tables;
    QTabWidget *m_tabs;
    std::array<tarnwick::JTableWin *, SchemaInfo::PartCount> m_parts = {};
    tarnwick::TablePrinting m_printing;
};

} // namespace query
