#include "ArvoOptionsDlg.h"

#include "MacroPage.h"
#include "TubeInfoPage.h"

#include <query/Messages.h>

#include <brannock/gui/ColourButton.h>
#include <brannock/paint/MapColours.h>

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QTabWidget>
#include <tarnwick/gui/Help.h>

using namespace Qt::StringLiterals;

namespace query {

namespace {

/// Form with labels above each other and fields as wide as they need.
QFormLayout *formIn(QWidget *page)
{
    auto *form = new QFormLayout(page);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setHorizontalSpacing(16);
    return form;
}

} // namespace

ArvoOptionsDlg::ArvoOptionsDlg(const ArvoOptions &options, const tarnwick::JMacro &systemMacros, bool hasSections,
                               tarnwick::UserPrompts &prompts, brannock::ColourChooser &chooser, QWidget *parent)
    : QDialog(parent)
    , m_edit(options, hasSections)
    , m_prompts(prompts)
    , m_chooser(chooser)
{
    setObjectName(u"arvoOptions"_s);
    setWindowTitle(options.title());
    auto *tabs = new QTabWidget;
    tabs->setObjectName(u"optionTabs"_s);
    m_userMacros = new MacroPage(new MacroModel(m_edit), u"userMacros"_s, true);
    tabs->addTab(makeMargins(), u"&Margins"_s);
    tabs->addTab(makeOptions(), u"Optio&ns"_s);
    tabs->addTab(new TubeInfoPage(m_edit), u"Tube In&fo"_s);
    tabs->addTab(new MacroPage(new MacroModel(systemMacros), u"systemMacros"_s, false), u"&System Macros"_s);
    tabs->addTab(m_userMacros, u"&User Macros"_s);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &ArvoOptionsDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ArvoOptionsDlg::reject);
    tarnwick::addHelp(*this, *buttons);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs, 1);
    layout->addWidget(buttons);
    // Wide enough for the widest pages: name and value of a macro, SQL of a tab.
    const int wide = fontMetrics().averageCharWidth() * 110;
    resize(sizeHint().expandedTo(QSize(wide, 0)));
}

QDoubleSpinBox *ArvoOptionsDlg::inches(const QString &name, double &value)
{
    auto *box = new QDoubleSpinBox;
    box->setObjectName(name);
    box->setDecimals(2);
    box->setRange(0, brannock::PageOptions::kLargestMargin);
    box->setSingleStep(brannock::PageOptions::kMarginStep);
    box->setSuffix(u"\""_s);
    box->setValue(value);
    connect(box, &QDoubleSpinBox::valueChanged, this, [&value](double inch) { value = inch; });
    return box;
}

QSpinBox *ArvoOptionsDlg::points(const QString &name, qint32 &value)
{
    auto *box = new QSpinBox;
    box->setObjectName(name);
    box->setRange(brannock::MapOptions::kSmallestTick, brannock::MapOptions::kLargestTick);
    box->setSuffix(u" pts"_s);
    box->setValue(value);
    connect(box, &QSpinBox::valueChanged, this, [this, &value](int size) {
        value = size;
        noteLook();
    });
    return box;
}

QWidget *ArvoOptionsDlg::makeMargins()
{
    auto *page = new QWidget;
    QFormLayout *form = formIn(page);
    tarnwick::PrintMargins &margins = m_edit.draft.page.margins;
    form->addRow(u"&Left Margin"_s, inches(u"leftMargin"_s, margins.left));
    form->addRow(u"&Top Margin"_s, inches(u"topMargin"_s, margins.top));
    form->addRow(u"&Right Margin"_s, inches(u"rightMargin"_s, margins.right));
    form->addRow(u"&Bottom Margin"_s, inches(u"bottomMargin"_s, margins.bottom));
    return page;
}

QWidget *ArvoOptionsDlg::makeOptions()
{
    auto *page = new QWidget;
    QFormLayout *form = formIn(page);
    ArvoOptions &draft = m_edit.draft;
    const auto addFlag = [&](const QString &text, const QString &name, bool &flag) {
        auto *box = new QCheckBox(text);
        box->setObjectName(name);
        box->setChecked(flag);
        connect(box, &QCheckBox::toggled, this, [&flag](bool on) { flag = on; });
        form->addRow(box);
    };
    addFlag(u"Draw &Title Rect"_s, u"titleRect"_s, draft.page.drawTitleRect);
    addFlag(u"Draw &Legend Rect"_s, u"legendRect"_s, draft.page.drawLegendRect);
    addFlag(u"Draw Map &Rect"_s, u"mapRect"_s, draft.page.drawMapRect);

    auto *format = new QComboBox;
    format->setObjectName(u"databaseFormat"_s);
    for (const ArvoOptionsEdit::DatabaseFormat &each : ArvoOptionsEdit::kDatabaseFormats)
        format->addItem(QString::fromUtf16(each.name), each.year);
    format->setCurrentIndex(format->findData(draft.databaseFormat));
    connect(format, &QComboBox::currentIndexChanged, this,
            [format, &draft] { draft.databaseFormat = format->currentData().toInt(); });
    form->addRow(u"MD&B File Format"_s, format);

    const auto addColour = [&](const QString &label, const QString &name, tarnwick::ColourRef &value) {
        auto *button = new brannock::ColourButton(m_chooser);
        button->setObjectName(name);
        button->setAccessibleName(QString(label).remove(u'&'));
        button->setColour(brannock::fromColourRef(value));
        connect(button, &brannock::ColourButton::colourChanged, this, [this, &value](const QColor &colour) {
            value = brannock::toColourRef(colour);
            noteLook();
        });
        form->addRow(label, button);
    };
    addColour(u"&Watermark Color"_s, u"watermarkColour"_s, draft.map.watermarkColour);
    addColour(u"M&ap Color"_s, u"mapColour"_s, draft.map.mapColour);
    addColour(u"F&ill Color"_s, u"fillColour"_s, draft.map.fillColour);
    addColour(u"Tic&k Color"_s, u"tickColour"_s, draft.map.tickColour);
    addColour(u"S&elect Color"_s, u"selectColour"_s, draft.map.selectColour);
    QSpinBox *displayTicks = points(u"displayTickSize"_s, draft.map.displayTickSize);
    QSpinBox *printTicks = points(u"printTickSize"_s, draft.map.printTickSize);
    form->addRow(u"&Display Tick Size"_s, displayTicks);
    form->addRow(u"&Print Tick Size"_s, printTicks);
    for (QWidget *field : std::initializer_list<QWidget *>{format, displayTicks, printTicks})
        field->setMinimumWidth(page->findChild<brannock::ColourButton *>()->sizeHint().width());
    return page;
}

void ArvoOptionsDlg::noteLook()
{
    Q_EMIT lookChanged(m_edit.draft.map);
}

void ArvoOptionsDlg::finishEditing()
{
    for (QAbstractSpinBox *box : findChildren<QAbstractSpinBox *>())
        box->interpretText();
    m_userMacros->finishEditing();
}

void ArvoOptionsDlg::accept()
{
    finishEditing();
    QDialog::accept();
}

void ArvoOptionsDlg::reject()
{
    finishEditing();
    if (m_edit.isModified()) {
        const tarnwick::Answer answer = m_prompts.question(tarnwick::Buttons::YesNoCancel, messages::kAskSaveChanges);
        if (answer == tarnwick::Answer::Cancel)
            return;
        if (answer == tarnwick::Answer::Yes)
            return QDialog::accept();
    }
    m_prompts.status(messages::kParametersUnchanged);
    QDialog::reject();
}

} // namespace query
