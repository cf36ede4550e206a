#pragma once
#include "DialogSetup.h"
#include "TubeGrid.h"

#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QComboBox;
class QLabel;

namespace tarnwick {
class JTableWin;
}

namespace plans {

/// Commands of both dialogs of tube entries. A dialog numbers its own ones from FirstOwnCommand.
enum EntriesCommand : int {
    OpenEntries,
    SaveEntries,
    SaveEntriesAs,
    PrintEntries,
    TypeTube,
    PasteTubes,
    MoveUp,
    MoveDown,
    AddTubes,
    RemoveTubes,
    KeepTubes,
    FetchEntries,
    UploadEntries,
    UploadEntriesAs,
    DeleteEntries,
    FirstOwnCommand
};
/// Conditions of commands. A dialog numbers its own ones from FirstOwnCondition.
enum EntriesCondition : int { AnyEntry = 1, AnySymbol, AnySelected, Connected, FirstOwnCondition };
/// The part of the window in which the keys of the table's commands work.
inline constexpr int kTablePart = 1;

/// In what the dialogs of plans and of tube lists differ.
struct EntriesKind
{
    const tarnwick::CommandTable &commands;
    const char16_t *word; ///< "Plan", in titles
    const char16_t *noun; ///< "plan", in sentences and copies for recovery
    const char16_t *dialogName;
    const char16_t *tableName;
    const char16_t *tableTitle;
    const char16_t *printTitle;
    const char16_t *databaseTable;
    const tarnwick::FileChooserInfo &chooser;
    const tarnwick::Message &changed; ///< asks whether to save
};

/// Base of the dialogs of plans and of tube lists: the table of tubes with its order, rows that are moved or dragged,
/// tubes taken from elsewhere, the file, the object in the database, printing, recovery copies.
class TubeEntriesDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// Shows the content of a file in place of the present entries, unless the user keeps unsaved changes.
    void openFile(const QString &machinePath);

protected:
    /// editor and grid are members of the derived dialog: they may still be under construction, and its destructor
    /// calls releaseGrid().
    TubeEntriesDlg(const DialogSetup &setup, const EntriesKind &kind, EntriesEditor &editor, TubeGrid &grid);

    // The parts of the window, for the constructor of a derived dialog. makeTable() comes last before finishEntries().
    void makeTitleBar();
    void makeTable(int frozenColumns = 0);
    void finishEntries(const QSize &size);
    void releaseGrid();

    /// The reason why a command cannot be used now; empty if it can.
    virtual QString whyNot(int condition) const;
    /// Sets the fields above the table. What they report meanwhile is no change by the user: see isShowing().
    virtual void showFields() = 0;
    /// Lets the user choose a file to open; empty after Cancel.
    virtual QString chooseFile();

    /// Shows the entries, with this row first in sight.
    void showEntries(int firstRow = 0);
    void showSummary();
    bool isShowing() const { return m_isShowing; }
    /// Asks about unsaved changes. Returns false if they stay.
    bool mayReplace();
    /// Stores in the file or in the database, wherever the entries are from.
    bool saveAtOrigin();

    QString caption() const override { return m_editor.caption(); }
    bool isModified() const override { return m_editor.isModified(); }
    bool discard() override { return mayReplace(); }
    QByteArray draft() const override { return m_editor.draft(); }
    void restoreDraft(const QByteArray &content) override;
    QString draftName(const QByteArray &content) const override;

    const DialogSetup &setup() const { return m_setup; }
    tarnwick::JTableWin &table() const { return *m_table; }

private:
    void bindFiles();
    void bindRows();
    void bindDatabase();
    QString titled(QStringView verb, QStringView tail = {}) const;
    bool save();
    bool saveAs();
    bool upload(const QString &name);
    bool uploadAs();
    void fetch();
    void combine(Combine how, const QString &title);
    void move(int by);
    void moveRows(const QList<int> &rows, int before);
    void print();
    void typeTube();
    QString chooseName(const QString &title, const QString &initial);

    DialogSetup m_setup;
    const EntriesKind &m_kind;
    EntriesEditor &m_editor;
    TubeGrid &m_grid;
    bool m_isShowing = false;
    tarnwick::JTableWin *m_table;
    QComboBox *m_order;
    QLabel *m_summary;
    tarnwick::TablePrinting m_printing;
};

} // namespace plans
