#pragma once
#include "MacroModel.h"

#include <QWidget>

class QLabel;
class QTableView;

namespace query {

/// A table of macros as a page of the options; Del removes one of the user's.
class MacroPage : public QWidget
{
    Q_OBJECT
public:
    MacroPage(MacroModel *model, const QString &name, bool isEditable, QWidget *parent = nullptr);
    /// Takes over what is typed in a cell at the moment.
    void finishEditing();

private:
    void addDelete();

    MacroModel *m_model;
    QTableView *m_table;
    QLabel *m_hint;
};

} // namespace query
