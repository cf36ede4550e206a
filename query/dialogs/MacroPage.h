#pragma once
#include "MacroModel.h"

#include <QWidget>

class QLabel;
class QTableView;

namespace query {

/// A table of macros as a page of the options dialog. Del removes a user macro.
class MacroPage : public QWidget
{
    Q_OBJECT
public:
    MacroPage(MacroModel *model, const QString &name, bool isEditable, QWidget *parent = nullptr);
    /// Stores the text of the cell that is being edited.
    void finishEditing();

private:
    void addDelete();

    MacroModel *m_model;
    QTableView *m_table;
    QLabel *m_hint;
};

} // namespace query
