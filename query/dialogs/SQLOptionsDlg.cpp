#include "SQLOptionsDlg.h"

#include <brannock/MapOptions.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/NumberField.h>

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace query {

namespace {

constexpr FileChooserInfo kQueryChooser{u"queries", u"Query File (*.qry)", u".qry"};

QFormLayout *formIn(QWidget *page)
{
    auto *form = new QFormLayout(page);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setHorizontalSpacing(16);
    return form;
}

} // namespace

SQLOptionsDlg::SQLOptionsDlg(SQLOptions &options, const PathRoots &roots, UserPrompts &prompts, FileChoice &files,
                             QWidget *parent)
    : JDialog(prompts, nullptr, u"sqlOptionsDlg"_s, parent)
    , m_options(options)
    , m_draft(options)
    , m_roots(roots)
    , m_files(files)
    , m_buttons(options.queryButtons)
{
    auto *tabs = new QTabWidget;
    tabs->setObjectName(u"optionTabs"_s);
    tabs->addTab(makeEditors(), u"&Editors"_s);
    tabs->addTab(makePrint(), u"&Print"_s);
    tabs->addTab(makeQueries(), u"&Queries"_s);
    body().addWidget(tabs, 1);
    finish(tabs->currentWidget()->findChild<NumberField *>(), {560, 440});
}

SQLOptionsDlg::~SQLOptionsDlg()
{
    m_table->grid().disconnect(this);
    m_table->setSource(nullptr);
}

void SQLOptionsDlg::addLines(QFormLayout &form, const QString &label, const QString &name, qint32 &value, int least,
                             int most)
{
    auto *field = new NumberField;
    field->setObjectName(name);
    field->setLimits(least, most);
    field->setNumber(value);
    connect(field, &QDoubleSpinBox::valueChanged, this, [this, field, &value] {
        value = qint32(field->whole());
        refresh();
    });
    form.addRow(label, field);
}

void SQLOptionsDlg::addMargin(QFormLayout &form, const QString &label, const QString &name, double &value)
{
    auto *field = new NumberField;
    field->setObjectName(name);
    field->setFormat(u"%.2f\""_s);
    field->setLimits(0, brannock::PageOptions::kLargestMargin, brannock::PageOptions::kMarginStep);
    field->setNumber(value);
    connect(field, &QDoubleSpinBox::valueChanged, this, [this, &value](double inches) {
        value = inches;
        refresh();
    });
    form.addRow(label, field);
}

QWidget *SQLOptionsDlg::makeEditors()
{
    constexpr int kMostSectionLines = 40;
    auto *page = new QWidget;
    QFormLayout &form = *formIn(page);
    addLines(form, u"Num SQL Editor &Line"_s, u"editorLines"_s, m_draft.editorLines, 5, 30);
    addLines(form, u"Num SQL Editor &Char"_s, u"editorCharacters"_s, m_draft.editorCharacters, 50, 120);
    addLines(form, u"Num &Result Line"_s, u"resultLines"_s, m_draft.resultLines, 5, 40);
    SQLOptions::SectionLines &lines = m_draft.sectionLines;
    addLines(form, u"Num Report &Title Line"_s, u"titleLines"_s, lines.reportTitle, 1, kMostSectionLines);
    addLines(form, u"Num Report &Header Line"_s, u"headerLines"_s, lines.reportHeader, 1, kMostSectionLines);
    addLines(form, u"Num Page Hea&der Line"_s, u"pageHeaderLines"_s, lines.pageHeader, 1, kMostSectionLines);
    addLines(form, u"Num Page &Footer Line"_s, u"pageFooterLines"_s, lines.pageFooter, 1, kMostSectionLines);
    addLines(form, u"Num Report F&ooter Line"_s, u"footerLines"_s, lines.reportFooter, 1, kMostSectionLines);
    addLines(form, u"Num Report &Version Line"_s, u"versionLines"_s, lines.reportVersion, 1, kMostSectionLines);
    return page;
}

QWidget *SQLOptionsDlg::makePrint()
{
    auto *page = new QWidget;
    QFormLayout &form = *formIn(page);
    addMargin(form, u"&Left Margin"_s, u"leftMargin"_s, m_draft.margins.left);
    addMargin(form, u"&Top Margin"_s, u"topMargin"_s, m_draft.margins.top);
    addMargin(form, u"&Right Margin"_s, u"rightMargin"_s, m_draft.margins.right);
    addMargin(form, u"&Bottom Margin"_s, u"bottomMargin"_s, m_draft.margins.bottom);
    auto *separators = new QCheckBox(u"Draw &Separators"_s);
    separators->setObjectName(u"separators"_s);
    separators->setChecked(m_draft.drawSeparators);
    connect(separators, &QCheckBox::toggled, this, [this](bool isOn) {
        m_draft.drawSeparators = isOn;
        refresh();
    });
    form.addRow(separators);
    return page;
}

QWidget *SQLOptionsDlg::makeQueries()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    m_table = new JTableWin(prompts());
    m_table->setObjectName(u"queryButtons"_s);
    m_table->setAccessibleName(u"Query buttons"_s);
    m_table->setEntryColumn(u"ENTRY"_s, 6, u"%d"_s);
    m_table->setVisibleRows(QueryButtons::kLeastRows);
    m_table->setSource(&m_buttons);
    connect(&m_table->grid(), &QAbstractItemModel::dataChanged, this, [this] { refresh(); });
    layout->addWidget(m_table, 1);
    auto *row = new QHBoxLayout;
    addButton(*row, u"&Choose ..."_s, u"chooseButton"_s, u"Choose the query file of the current entry"_s,
              [this] { chooseFile(); });
    addButton(*row, u"&Remove"_s, u"removeButton"_s, u"Remove the current entry; those below move up"_s, [this] {
        const int current = m_table->currentSourceRow();
        if (current < m_buttons.files().size())
            m_buttons.remove(current);
        showButtons(current);
    });
    addButton(*row, u"&Up"_s, u"upButton"_s, u"Move the current entry up"_s, [this] { moveCurrent(-1); });
    addButton(*row, u"Do&wn"_s, u"downButton"_s, u"Move the current entry down"_s, [this] { moveCurrent(1); });
    row->addStretch(1);
    layout->addLayout(row);
    return page;
}

void SQLOptionsDlg::chooseFile()
{
    const QString path = m_files.openFile(kQueryChooser, u"Query File"_s, m_roots);
    if (path.isEmpty())
        return;
    const int current = m_table->currentSourceRow();
    m_buttons.setFile(current, SuitePath::fromMachine(path, m_roots).text());
    showButtons(current);
}

void SQLOptionsDlg::moveCurrent(int by)
{
    const int current = m_table->currentSourceRow();
    if (m_buttons.exchange(current, current + by))
        showButtons(current + by);
}

void SQLOptionsDlg::showButtons(int row)
{
    m_table->reload();
    m_table->setCurrentSourceRow(row);
}

bool SQLOptionsDlg::isModified() const
{
    const auto parts = [](const SQLOptions &options, const QStringList &buttons) {
        return std::make_tuple(options.editorLines, options.editorCharacters, options.resultLines, options.sectionLines,
                               options.margins, options.drawSeparators, buttons);
    };
    return parts(m_draft, m_buttons.files()) != parts(m_options, QueryButtons(m_options.queryButtons).files());
}

bool SQLOptionsDlg::store()
{
    // The recent list is not part of the dialog and may have changed meanwhile.
    m_draft.recentQueries = m_options.recentQueries;
    m_draft.queryButtons = m_buttons.files();
    m_options = m_draft;
    return true;
}

} // namespace query
