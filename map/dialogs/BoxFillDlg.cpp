#include "BoxFillDlg.h"

#include <tarnwick/gui/NumberField.h>

#include <QFormLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace map {

static constexpr double kRadiusStep = 0.1;

BoxFillDlg::BoxFillDlg(BoxFillEditor &editor, const FillDialogContext &context)
    : FillDialog(editor, context, u"boxFillDlg"_s, u"Box Fill"_s)
    , m_editor(editor)
    , m_radius(new tarnwick::NumberField)
    , m_pitches(new QLabel)
{
    m_radius->setObjectName(u"radius"_s);
    m_radius->setFormat(u"%.3f"_s);
    m_radius->setLimits(BoxFillEditor::kMinRadius, editor.maxRadius(), kRadiusStep);
    QFormLayout *form = addGroup(u"Box"_s);
    form->addRow(u"&Radius"_s, m_radius);
    form->addRow(u"In pitches"_s, m_pitches);
    connect(m_radius, &tarnwick::NumberField::numberEdited, this,
            [this](double radius) { m_editor.setParameters({radius}); });
    finish(m_radius);
}

void BoxFillDlg::showFields()
{
    m_radius->setNumber(m_editor.parameters().radius);
    m_pitches->setText(m_editor.pitch() > 0 ? tarnwick::format(u"%.2f", m_editor.parameters().radius / m_editor.pitch())
                                            : QString());
}

} // namespace map
