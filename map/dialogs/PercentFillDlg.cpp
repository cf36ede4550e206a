#include "PercentFillDlg.h"

#include "FilterGroup.h"

#include <tarnwick/gui/NumberField.h>
#include <tarnwick/gui/ReturnKey.h>

#include <limits>
#include <QCheckBox>
#include <QFormLayout>
#include <QMouseEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace map {

namespace {

/// A label that works as a button for all mouse buttons and keys.
class Prompt : public QPushButton
{
public:
    Prompt()
    {
        setAutoDefault(false);
        tarnwick::pressWithReturn(this);
    }

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        setFocus(Qt::MouseFocusReason);
        Q_EMIT clicked();
        event->accept();
    }
    void mouseReleaseEvent(QMouseEvent *event) override { event->accept(); }
    void mouseDoubleClickEvent(QMouseEvent *event) override { mousePressEvent(event); }
    void contextMenuEvent(QContextMenuEvent *) override {}
};

} // namespace

PercentFillDlg::PercentFillDlg(PcntFillEditor &editor, const FillDialogContext &context)
    : FillDialog(editor, context, u"percentFillDlg"_s, u"Random Fill"_s)
    , m_editor(editor)
    , m_filter(new FilterGroup)
    , m_randomSeed(new QCheckBox(u"R&andom Seed"_s))
    , m_seed(new tarnwick::NumberField)
    , m_mode(new Prompt)
    , m_value(new tarnwick::NumberField)
{
    addGroup(m_filter);
    connect(m_filter, &FilterGroup::filterEdited, this, [this] {
        plans::PcntFill::Parameters changed = m_editor.parameters();
        changed.filter = m_filter->filter();
        m_editor.setParameters(changed);
    });
    makeSeed();
    makeScope();
    finish(m_value);
}

void PercentFillDlg::makeSeed()
{
    m_randomSeed->setObjectName(u"randomSeed"_s);
    m_randomSeed->setToolTip(u"Draw with a fresh seed each time; the sample shown is an example"_s);
    m_seed->setObjectName(u"seed"_s);
    m_seed->setFormat(u"%u"_s);
    m_seed->setLimits(1, std::numeric_limits<quint32>::max());
    QFormLayout *form = addGroup(u"Seed Value"_s);
    form->addRow(m_randomSeed);
    form->addRow(u"S&eed"_s, m_seed);
    connect(m_randomSeed, &QCheckBox::clicked, this, [this](bool on) {
        plans::PcntFill::Parameters changed = m_editor.parameters();
        changed.randomSeed = on;
        m_editor.setParameters(changed);
    });
    connect(m_seed, &tarnwick::NumberField::numberEdited, this, [this] {
        plans::PcntFill::Parameters changed = m_editor.parameters();
        changed.seed = quint32(m_seed->whole());
        m_editor.setParameters(changed);
    });
}

void PercentFillDlg::makeScope()
{
    m_mode->setObjectName(u"mode"_s);
    m_mode->setToolTip(u"Click to draw a percentage of the tubes, or a number of them"_s);
    m_value->setObjectName(u"value"_s);
    QFormLayout *form = addGroup(u"Scope"_s);
    form->addRow(u"&Mode"_s, m_mode);
    form->addRow(u"&Value"_s, m_value);
    connect(m_mode, &QPushButton::clicked, this, &PercentFillDlg::toggleMode);
    connect(m_value, &tarnwick::NumberField::numberEdited, this, [this] { m_editor.setValue(int(m_value->whole())); });
}

void PercentFillDlg::toggleMode()
{
    plans::PcntFill::Parameters changed = m_editor.parameters();
    changed.percentMode = !changed.percentMode;
    m_editor.setParameters(changed);
}

void PercentFillDlg::showFields()
{
    const plans::PcntFill::Parameters &parameters = m_editor.parameters();
    m_filter->setFilter(parameters.filter);
    m_randomSeed->setChecked(parameters.randomSeed);
    m_seed->setEnabled(!parameters.randomSeed);
    m_seed->setNumber(parameters.seed);
    m_mode->setText(parameters.percentMode ? u"Percent"_s : u"Tube Count"_s);
    m_value->setFormat(parameters.percentMode ? u"%3d%%"_s : u"%6d tubes"_s);
    m_value->setLimits(0, m_editor.maxValue());
    m_value->setNumber(m_editor.value());
}

} // namespace map
