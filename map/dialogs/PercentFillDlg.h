#pragma once
#include "FillDialog.h"

#include <map/FillEditors.h>

class QCheckBox;

namespace tarnwick {
class NumberField;
}

namespace map {

class FilterGroup;

/// Dialog "Random Fill".
class PercentFillDlg : public FillDialog
{
    Q_OBJECT
public:
    PercentFillDlg(PcntFillEditor &editor, const FillDialogContext &context);

protected:
    void showFields() override;

private:
    void makeSeed();
    void makeScope();
    void toggleMode();

    PcntFillEditor &m_editor;
    FilterGroup *m_filter;
    QCheckBox *m_randomSeed;
    tarnwick::NumberField *m_seed;
    QPushButton *m_mode;
    tarnwick::NumberField *m_value;
};

} // namespace map
