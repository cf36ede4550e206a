#pragma once
#include "FillDialog.h"

#include <map/FillEditors.h>

namespace tarnwick {
class NumberField;
}

namespace plans {

/// Dialog "Box Fill".
class BoxFillDlg : public FillDialog
{
    Q_OBJECT
public:
    BoxFillDlg(map::BoxFillEditor &editor, const FillDialogContext &context);

protected:
    void showFields() override;

private:
    map::BoxFillEditor &m_editor;
    tarnwick::NumberField *m_radius;
    QLabel *m_pitches;
};

} // namespace plans
