#include "CompleteRepairsDlg.h"

#include <results/repairs/Repair.h>
#include <tarnwick/Format.h>
#include <tarnwick/gui/Calendar.h>

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace results {

std::optional<JDateTime> CompleteRepairsDlg::ask(UserPrompts &prompts, int count, QWidget *parent)
{
    CompleteRepairsDlg dialog(prompts, count, parent);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.date();
}

CompleteRepairsDlg::CompleteRepairsDlg(UserPrompts &prompts, int count, QWidget *parent)
    : JDialog(prompts, nullptr, u"completeRepairsDlg"_s, parent)
    , m_date(JDateTime::now())
    , m_line(new QLineEdit(format(u"%{%m/%d/%Y %H:%M}t", m_date)))
{
    m_line->setObjectName(u"date_completed"_s);
    addCalendar(m_line);
    body().addWidget(new QLabel(count == 1 ? u"1 scheduled repair is selected."_s
                                           : format(u"%D scheduled repairs are selected.", count)));
    auto *form = new QFormLayout;
    form->addRow(u"&Date Completed"_s, m_line);
    body().addLayout(form);
    body().addStretch(1);
    finish(m_line, {360, 0});
}

bool CompleteRepairsDlg::store()
{
    Repair completed;
    try {
        setRepairField(completed, *findRepairField(u"date_completed"), m_line->text());
        if (completed.isScheduled())
            throw Error(u"Please type the date."_s);
    } catch (const Error &error) {
        prompts().showError(kErrorSeverity, 0, error.text());
        return false;
    }
    m_date = completed.dateCompleted;
    return true;
}

} // namespace results
