#pragma once
#include "DialogSetup.h"
#include "ListGrids.h"

#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QComboBox;
class QLabel;
class QPlainTextEdit;

namespace tarnwick {
class JTableWin;
}

namespace plans {

/// "List Fill": a tube list is filled from the map, a file or a tube set of the database, edited, and stored there. OK
/// takes it into the legend.
class ListFillDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// list: of the entry that is edited; null for a new one. Afterwards list() is to be taken if the dialog was
    /// accepted.
    ListFillDlg(const DialogSetup &setup, const TubeList *list);
    ~ListFillDlg() override;
    const TubeList &list() const { return m_editor.list(); }
    ListEditor &editor() { return m_editor; }

protected:
    QString caption() const override { return m_editor.caption(); }
    bool isModified() const override { return m_editor.isModified(); }
    bool store() override;
    bool discard() override { return mayReplace(); }
    QByteArray draft() const override { return m_editor.draft(); }
    void restoreDraft(const QByteArray &content) override;
    QString draftName(const QByteArray &content) const override;

private:
    void bindFiles();
    void bindEditing();
    void bindDatabase();
    void makeTitleBar();
    void makeNotes();
    void makeTable();

    void showList(int firstRow = 0);
    void showSummary();
    /// Asks about unsaved changes. Returns false if they stay.
    bool mayReplace();
    bool save();
    bool saveAs();
    bool upload(const QString &name);
    bool uploadAs();
    void fetch();
    void openFile();
    void editFile();
    void viewParsedFile();
    void setIndex();
    void combine(Combine how, const QString &title);
    void move(int by);
    void moveRows(const QList<int> &rows, int before);
    void print();
    QString chooseName(const QString &title, const QString &initial);

    DialogSetup m_setup;
    bool m_isNew;
    ListEditor m_editor;
    ListGrid m_grid;
    bool m_isShowing = false; ///< the notes are being set by the program
    tarnwick::JTableWin *m_table;
    QComboBox *m_order;
    QPlainTextEdit *m_notes;
    QLabel *m_summary;
    tarnwick::TablePrinting m_printing;
};

} // namespace plans
