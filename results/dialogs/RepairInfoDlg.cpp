#include "RepairInfoDlg.h"

#include <ellery/SteamGen.h>
#include <results/repairs/Messages.h>
#include <results/repairs/RepairOptions.h>
#include <tarnwick/gui/Calendar.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace results {

namespace {

QStringList vocabulary(QString Repair::*field)
{
    QStringList texts;
    for (const char16_t *text : repairVocabulary(field))
        texts.append(QString::fromUtf16(text));
    return texts;
}

QString textOf(const Repair &repair, const RepairField &field)
{
    const auto show = [](const auto &value) {
        using T = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_same_v<T, QString>)
            return value;
        else if constexpr (std::is_same_v<T, JDateTime>)
            return format(u"%{%m/%d/%Y %H:%M}t", value);
        else
            return format(u"%.3f", double(value));
    };
    return std::visit([&](auto member) { return show(repair.*member); }, field.member);
}

} // namespace

std::optional<QList<Repair>> RepairInfoDlg::edit(const Setup &setup)
{
    if (setup.repairs.isEmpty()) {
        setup.prompts.information(messages::kNoRepairs);
        return std::nullopt;
    }
    RepairInfoDlg dialog(setup);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.repairs();
}

RepairInfoDlg::RepairInfoDlg(const Setup &setup)
    : JDialog(setup.prompts, nullptr, u"repairInfoDlg"_s, setup.parent)
    , m_setup(setup)
    , m_permanent(new QCheckBox)
    , m_number(new QLabel)
{
    auto *frame = new QGroupBox(u"Repair Attributes"_s);
    auto *form = new QFormLayout(frame);
    form->addRow(u"Repair Number"_s, makePages());
    addChoice(*form, u"O&utage"_s, u"outage", setup.outages);
    addChoice(*form, u"&Repair Type"_s, u"repair_type", vocabulary(&Repair::repairType));
    addChoice(*form, u"&Type"_s, u"type", vocabulary(&Repair::type));
    m_permanent->setObjectName(u"is_perm"_s);
    m_permanent->setEnabled(!setup.isReadOnly);
    form->addRow(u"Perma&nent"_s, m_permanent);
    addChoice(*form, u"M&aterial"_s, u"material", vocabulary(&Repair::material));
    addLine(*form, u"Manu&facturer"_s, u"vendor");
    addLine(*form, u"&Inlet Heat No"_s, u"heat1");
    addLine(*form, u"Outlet &Heat No"_s, u"heat2");
    addChoice(*form, u"R&eason"_s, u"reason", vocabulary(&Repair::reason));
    addLocation(*form);
    addLine(*form, u"Len&gth"_s, u"length");
    addDate(*form, u"Date &Scheduled"_s, u"date_scheduled");
    addDate(*form, u"&Date Completed"_s, u"date_completed");
    addLine(*form, u"Co&mment"_s, u"comment");
    body().addWidget(frame);
    body().addStretch(1);
    showPage(0);
    finish(m_fields[1].line->parentWidget(), {460, 0});
}

QString RepairInfoDlg::caption() const
{
    const QString name = m_setup.name;
    return format(messages::kRepairCaption.text,
                  name.isEmpty() ? m_setup.steamGen.tubeName(repairs()[m_page].address()) : name);
}

QLayout *RepairInfoDlg::makePages()
{
    auto *row = new QHBoxLayout;
    m_number->setObjectName(u"repairNumber"_s);
    row->addWidget(m_number);
    row->addStretch(1);
    const auto turn = [this](int by) {
        if (takePage())
            showPage(m_page + by);
    };
    m_previous = addButton(*row, u"&Previous"_s, u"previousRepair"_s, u"Show the repair before this one"_s,
                           [turn] { turn(-1); });
    m_next = addButton(*row, u"Ne&xt"_s, u"nextRepair"_s, u"Show the repair after this one"_s, [turn] { turn(1); });
    return row;
}

QLineEdit *RepairInfoDlg::line(QStringView field)
{
    auto *edit = new QLineEdit;
    edit->setMaxLength(std::numeric_limits<int>::max()); // a comment can be long; nothing is cut in silence
    edit->setObjectName(field.toString());
    edit->setReadOnly(m_setup.isReadOnly);
    m_fields.append({findRepairField(field), edit, QString()});
    return edit;
}

QComboBox *RepairInfoDlg::choice(QStringView field, const QStringList &choices)
{
    auto *combo = new QComboBox;
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->addItems(choices);
    combo->setLineEdit(line(field));
    combo->setCompleter(nullptr); // it would change the letter case of what is typed
    combo->setEnabled(!m_setup.isReadOnly);
    return combo;
}

void RepairInfoDlg::addChoice(QFormLayout &form, const QString &prompt, QStringView field, const QStringList &choices)
{
    form.addRow(prompt, choice(field, choices));
}

void RepairInfoDlg::addLine(QFormLayout &form, const QString &prompt, QStringView field)
{
    form.addRow(prompt, line(field));
}

void RepairInfoDlg::addDate(QFormLayout &form, const QString &prompt, QStringView field)
{
    QLineEdit *edit = line(field);
    if (!m_setup.isReadOnly)
        addCalendar(edit);
    form.addRow(prompt, edit);
}

void RepairInfoDlg::addLocation(QFormLayout &form)
{
    auto *row = new QHBoxLayout;
    QComboBox *landmark = choice(u"loc_land", landmarks());
    QLineEdit *offset = line(u"loc_off");
    offset->setAccessibleName(u"Offset"_s);
    offset->setToolTip(u"Offset from the landmark"_s);
    row->addWidget(landmark, 1);
    row->addWidget(offset, 1);
    auto *prompt = new QLabel(u"&Location"_s);
    prompt->setBuddy(landmark);
    form.addRow(prompt, row);
}

QStringList RepairInfoDlg::landmarks() const
{
    QStringList names{QString()};
    for (const ellery::LandmarkSet &set : m_setup.steamGen.landmarkSets) {
        for (const ellery::Landmark &landmark : set.landmarks)
            if (!names.contains(landmark.name))
                names.append(landmark.name);
    }
    return names;
}

void RepairInfoDlg::showPage(int page)
{
    m_page = page;
    const Repair &repair = repairs()[page];
    for (Field &field : m_fields) {
        field.shown = textOf(repair, *field.field);
        // A combo box takes its current choice from the text.
        if (auto *combo = qobject_cast<QComboBox *>(field.line->parentWidget()))
            combo->setCurrentIndex(combo->findText(field.shown));
        field.line->setText(field.shown);
        field.shown = field.line->text(); // of several lines it shows one
        field.line->setCursorPosition(0);
    }
    m_permanent->setChecked(repair.isPermanent);
    const int count = int(repairs().size());
    m_number->setText(format(messages::kRepairPage.text, page + 1, count));
    m_previous->setEnabled(page > 0);
    m_next->setEnabled(page + 1 < count);
    refresh();
}

bool RepairInfoDlg::takePage()
{
    if (m_setup.isReadOnly)
        return true;
    Repair changed = repairs()[m_page];
    changed.isPermanent = m_permanent->isChecked();
    for (const Field &field : std::as_const(m_fields)) {
        if (field.line->text() == field.shown)
            continue;
        try {
            setRepairField(changed, *field.field, field.line->text());
        } catch (const Error &error) {
            prompts().showError(kErrorSeverity, 0, error.text());
            field.line->setFocus();
            field.line->selectAll();
            return false;
        }
    }
    if (!m_setup.isAcceptable(changed))
        return false;
    m_setup.repairs[m_page] = changed;
    return true;
}

bool RepairInfoDlg::store()
{
    if (!takePage())
        return false;
    for (int page = 0; page < repairs().size(); ++page) {
        if (!m_setup.isReadOnly && !m_setup.isAcceptable(repairs()[page])) {
            showPage(page);
            return false;
        }
    }
    return true;
}

} // namespace results
