#include "PlanOptionDlg.h"

#include <tarnwick/gui/TableText.h>

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace plans {

bool PlanOptionDlg::edit(PlanOptions &options, tarnwick::UserPrompts &prompts, QWidget *parent)
{
    return PlanOptionDlg(options, prompts, parent).exec() == Accepted;
}

PlanOptionDlg::PlanOptionDlg(PlanOptions &options, tarnwick::UserPrompts &prompts, QWidget *parent)
    : JDialog(prompts, nullptr, u"planOptionDlg"_s, parent)
    , m_options(options)
    , m_probe(new QCheckBox(u"&Probe Required"_s))
    , m_extent(new QCheckBox(u"&Extent Required"_s))
    , m_codes(new QListWidget)
{
    m_probe->setObjectName(u"probeRequired"_s);
    m_probe->setToolTip(u"A plan is not stored without a probe"_s);
    m_probe->setChecked(options.probeRequired);
    m_extent->setObjectName(u"extentRequired"_s);
    m_extent->setToolTip(u"A plan is not stored without begin and end of the test"_s);
    m_extent->setChecked(options.extentRequired);
    m_codes->setObjectName(u"codes"_s);
    tarnwick::TableText::follow(m_codes);
    m_codes->setToolTip(u"Defect codes that do not count as analyzing a tube"_s);
    for (const QString &code : options.incompleteCodes)
        addCode(code);
    auto *label = new QLabel(u"&Incomplete Codes"_s);
    label->setBuddy(m_codes);
    body().addWidget(m_probe);
    body().addWidget(m_extent);
    body().addWidget(label);
    auto *row = new QHBoxLayout;
    row->addWidget(m_codes, 1);
    auto *column = new QVBoxLayout;
    addButton(*column, u"&Add"_s, u"addCode"_s, u"Add a code to the list"_s, [this] {
        addCode({});
        m_codes->setCurrentRow(m_codes->count() - 1);
        m_codes->setFocus();
        m_codes->editItem(m_codes->currentItem());
    });
    addButton(*column, u"&Remove"_s, u"removeCode"_s, u"Remove the current code from the list"_s,
              [this] { delete m_codes->takeItem(m_codes->currentRow()); });
    column->addStretch(1);
    row->addLayout(column);
    body().addLayout(row, 1);
    finish(m_probe, {360, 300});
}

void PlanOptionDlg::addCode(const QString &code)
{
    auto *item = new QListWidgetItem(code, m_codes);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
}

bool PlanOptionDlg::store()
{
    m_options.probeRequired = m_probe->isChecked();
    m_options.extentRequired = m_extent->isChecked();
    m_options.incompleteCodes.clear();
    for (int row = 0; row < m_codes->count(); ++row) {
        const QString code = m_codes->item(row)->text().trimmed();
        if (!code.isEmpty() && !m_options.incompleteCodes.contains(code))
            m_options.incompleteCodes.append(code);
    }
    return true;
}

} // namespace plans
