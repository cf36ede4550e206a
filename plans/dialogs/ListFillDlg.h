#pragma once
#include "ListGrids.h"
#include "TubeEntriesDlg.h"

class QPlainTextEdit;

namespace plans {

/// "List Fill": a tube list is filled from the map, a file or a tube set of the database, edited, and stored there. OK
/// takes it into the legend.
class ListFillDlg : public TubeEntriesDlg
{
    Q_OBJECT
public:
    /// list: of the entry that is edited; null for a new one. Afterwards list() is to be taken if the dialog was
    /// accepted.
    ListFillDlg(const DialogSetup &setup, const TubeList *list);
    ~ListFillDlg() override { releaseGrid(); }
    const TubeList &list() const { return m_editor.list(); }
    ListEditor &editor() { return m_editor; }

protected:
    bool store() override;
    QString whyNot(int condition) const override;
    void showFields() override;
    QString chooseFile() override;

private:
    void bindOwn();
    void makeNotes();
    void editFile();
    void viewParsedFile();
    void setIndex();

    bool m_isNew;
    ListEditor m_editor;
    ListGrid m_grid;
    QPlainTextEdit *m_notes;
};

} // namespace plans
