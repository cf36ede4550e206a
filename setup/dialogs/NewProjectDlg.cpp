#include "NewProjectDlg.h"

#include <tarnwick/gui/Calendar.h>

#include <QBoxLayout>
#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace setup {

namespace {

constexpr int kCheckDelay = 400; // milliseconds, so that a table is not read for each letter
constexpr tarnwick::FileChooserInfo kTables{u"component", u"Tables (*.txt *.csv *.tsv)", u".txt", u"All Files (*)"};

QString home()
{
    return QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
}

} // namespace

NewProjectDlg::NewProjectDlg(const Context &context)
    : JDialog(context.prompts, nullptr, u"newProjectDlg"_s, context.parent)
    , m_context(context)
    , m_found(new QPlainTextEdit)
{
    auto *form = new QFormLayout;
    auto *folderRow = new QHBoxLayout;
    m_folder =
        addField(*form, u"&Folder"_s, u"folder"_s, u"The folder of the project; it must be new or empty"_s, folderRow);
    addButton(*folderRow, u"&Browse ..."_s, u"browseFolder"_s, u"Choose or create the folder"_s,
              [this] { chooseFolder(); });
    m_name = addField(*form, u"&Name"_s, u"projectName"_s, u"The title of the project, which pages can show"_s);
    m_name->setPlaceholderText(u"Site and component"_s);
    m_site = addField(*form, u"&Site Code"_s, u"site"_s, u"The code of the site, which every result has"_s);
    m_comp = addField(*form, u"&Component Code"_s, u"comp"_s, u"The code of the component, which every result has"_s);
    m_outage = addField(*form, u"&Outage"_s, u"outage"_s, u"The name of the first outage"_s);
    m_date = addField(*form, u"Outage &Date"_s, u"outageDate"_s,
                      u"The date of the outage, which pages can show; empty if it is not known"_s);
    tarnwick::addCalendar(m_date);
    auto *componentRow = new QHBoxLayout;
    m_component = addField(*form, u"T&ubes"_s, u"component"_s,
                           u"A table of the tubes that a spreadsheet program has written as text, or the folder of a "
                           u"component or of another project"_s,
                           componentRow);
    addButton(*componentRow, u"&Table ..."_s, u"browseTable"_s, u"Choose a table of the tubes"_s,
              [this] { chooseTable(); });
    addButton(*componentRow, u"&Project ..."_s, u"browseComponent"_s,
              u"Choose the folder of a component or of another project"_s, [this] { chooseComponentFolder(); });
    makePattern(*form);
    body().addLayout(form);
    m_found->setObjectName(u"found"_s);
    m_found->setAccessibleName(u"What the table contains"_s);
    m_found->setReadOnly(true);
    m_found->setTabChangesFocus(true);
    body().addWidget(m_found, 1);
    m_checkDelay.setSingleShot(true);
    m_checkDelay.setInterval(kCheckDelay);
    connect(&m_checkDelay, &QTimer::timeout, this, [this] { run([this] { check(); }); });
    check();
    finish(m_folder, {640, 460});
}

QLineEdit *NewProjectDlg::addField(QFormLayout &form, const QString &label, const QString &name, const QString &tip,
                                   QBoxLayout *row)
{
    auto *field = new QLineEdit;
    field->setObjectName(name);
    field->setToolTip(tip);
    auto *words = new QLabel(label);
    words->setBuddy(field);
    if (row) {
        row->addWidget(field, 1);
        form.addRow(words, row);
    } else {
        form.addRow(words, field);
    }
    connect(field, &QLineEdit::textChanged, &m_checkDelay, qOverload<>(&QTimer::start));
    return field;
}

void NewProjectDlg::makePattern(QFormLayout &form)
{
    auto *row = new QHBoxLayout;
    m_pitch = addField(form, u"P&itch"_s, u"pitch"_s,
                       u"Distance of neighboring tubes; empty: from the positions in the table"_s, row);
    m_pattern = new QComboBox;
    m_pattern->setObjectName(u"pattern"_s);
    m_pattern->setToolTip(u"Arrangement of the tubes, needed if the table has no positions"_s);
    m_pattern->setAccessibleName(u"Pattern"_s);
    m_pattern->addItems({u"from the positions"_s, u"square"_s, u"triangular"_s});
    connect(m_pattern, &QComboBox::currentIndexChanged, &m_checkDelay, qOverload<>(&QTimer::start));
    row->addWidget(m_pattern);
}

void NewProjectDlg::chooseFolder()
{
    const QString folder = m_context.files.openFolder(u"Folder of the New Project"_s, home());
    if (!folder.isEmpty())
        m_folder->setText(QDir::toNativeSeparators(folder));
}

void NewProjectDlg::chooseTable()
{
    const QString file = m_context.files.openFile(kTables, u"Table of the Tubes"_s, m_context.roots);
    if (!file.isEmpty())
        m_component->setText(QDir::toNativeSeparators(file));
}

void NewProjectDlg::chooseComponentFolder()
{
    const QString folder = m_context.files.openFolder(u"Component or Project"_s, home());
    if (!folder.isEmpty())
        m_component->setText(QDir::toNativeSeparators(folder));
}

NewProject NewProjectDlg::wanted() const
{
    NewProject project;
    project.folder = m_folder->text().trimmed();
    project.site = m_site->text();
    project.comp = m_comp->text();
    project.outage = m_outage->text();
    project.name = m_name->text();
    const QString typedDate = m_date->text().trimmed();
    const auto date = tarnwick::JDateTime::parse(typedDate);
    if (!typedDate.isEmpty() && !date)
        throw tarnwick::Error(u"The date of the outage is not a date, such as 03/31/2026."_s);
    project.date = date.value_or(tarnwick::JDateTime());
    project.component = m_component->text().trimmed();
    const QString pitch = m_pitch->text().trimmed();
    bool isNumber = false;
    project.pattern.pitch = locale().toDouble(pitch, &isNumber);
    if (!isNumber)
        project.pattern.pitch = pitch.toDouble(&isNumber);
    if (!pitch.isEmpty() && !(isNumber && project.pattern.pitch > 0 && qIsFinite(project.pattern.pitch)))
        throw tarnwick::Error(u"The pitch is not a number above 0."_s);
    if (m_pattern->currentIndex() > 0)
        project.pattern.triangular = m_pattern->currentText() == u"triangular"_s;
    return project;
}

/// Shows what the component contains, or everything that is missing or wrong.
void NewProjectDlg::check()
{
    m_checkDelay.stop();
    m_isUsable = false;
    try {
        const NewProject project = wanted();
        QStringList lines = missingOf(project);
        m_isUsable = lines.isEmpty();
        if (!project.component.isEmpty()) {
            const NewComponent component = NewComponent::read(project);
            lines.append(component.summary());
            lines += component.remarks;
        }
        m_found->setPlainText(lines.join(u'\n'));
    } catch (const tarnwick::Error &error) {
        m_isUsable = false;
        m_found->setPlainText(error.text());
    }
}

bool NewProjectDlg::store()
{
    check();
    if (!m_isUsable) {
        showMessage(u"No project was made; see the list above."_s);
        return false;
    }
    const NewProject project = wanted();
    const auto progress = m_context.makeProgress ? m_context.makeProgress(u"New Project"_s) : nullptr;
    makeNewProject(project, progress.get());
    m_made = QDir(project.folder).absolutePath();
    return true;
}

} // namespace setup
