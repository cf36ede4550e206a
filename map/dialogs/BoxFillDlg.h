#pragma once
#include "FillDialog.h"

#include <map/FillEditors.h>

namespace tarnwick {
class NumberField;
}

namespace map {

/// Dialog "Box Fill".
class BoxFillDlg : public FillDialog
{
    Q_OBJECT
public:
    BoxFillDlg(BoxFillEditor &editor, const FillDialogContext &context);

protected:
    void showFields() override;

private:
    BoxFillEditor &m_editor;
    tarnwick::NumberField *m_radius;
    QLabel *m_pitches;
};

} // namespace map
