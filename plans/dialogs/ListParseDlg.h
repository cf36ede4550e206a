#pragma once
#include "ListGrids.h"

#include <tarnwick/gui/JDialog.h>

class QCheckBox;

namespace tarnwick {
class JTableWin;
}

namespace plans {

/// "List Parse": how each line of the list's file was parsed.
class ListParseDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// optionChanged: the user has changed whether files have entry numbers; the file is to be read again.
    ListParseDlg(ListEditor &editor, const std::function<void()> &optionChanged, QWidget *parent = nullptr);
    ~ListParseDlg() override;

protected:
    QString caption() const override;

private:
    ListEditor &m_editor;
    ParsedLineGrid m_grid;
    tarnwick::JTableWin *m_table;
};

} // namespace plans
