#include "FillDialog.h"

#include <brannock/gui/ChooseSymbolDlg.h>
#include <brannock/gui/TubesheetMap.h>
#include <brannock/paint/TubeArt.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/Help.h>
#include <tarnwick/gui/ReturnKey.h>
#include <tarnwick/gui/StateKeeper.h>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace map {

namespace {

constexpr int kSymbolSide = 22;
constexpr int kIconGap = 6; ///< between symbol and text of the button
constexpr QSize kLeastPreview{240, 220};
constexpr QSize kFirstSize{720, 380};

/// A tube with its symbol, as on the map.
QIcon tubeIcon(const brannock::TubeMark &mark, const brannock::MapOptions &look, double ratio)
{
    const int side = int(kSymbolSide * ratio);
    QPixmap picture(int((kSymbolSide + kIconGap) * ratio), side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const brannock::TubeArt art = brannock::TubeArt::forPixels(look, side * 1.12);
    art.paintTube(painter, QPointF(side / 2.0, side / 2.0), mark, false);
    painter.end();
    picture.setDevicePixelRatio(ratio);
    return QIcon(picture);
}

} // namespace

FillDialog::FillDialog(FillEditor &editor, const FillDialogContext &context, const QString &name, const QString &title)
    : QDialog(context.parent)
    , m_editor(editor)
    , m_prompts(context.editing.runner.prompts())
    , m_colours(context.editing.roots, m_prompts)
    , m_look(context.look)
    , m_groups(new QVBoxLayout)
    , m_symbol(new QPushButton(u"&Symbol ..."_s))
    , m_label(new QLabel)
    , m_map(new brannock::TubesheetMap)
    , m_summary(new QLabel)
    , m_warning(new QLabel)
{
    setObjectName(name);
    setWindowTitle(title);
    auto *columns = new QHBoxLayout;
    columns->setSpacing(14);
    columns->addLayout(m_groups, 0);
    columns->addLayout(makePreview(), 1);
    m_groups->setSpacing(10);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addLayout(columns, 1);
    m_map->setOptions(context.look);
    m_map->setXOrientation(context.editing.document.state().xOrientation);
    m_map->setYOrientation(context.editing.document.state().yOrientation);
}

FillDialog::~FillDialog()
{
    m_editor.changed = nullptr;
    m_map->setSteamGen(nullptr);
}

QLayout *FillDialog::makePreview()
{
    m_map->setObjectName(u"preview"_s);
    m_map->setAccessibleName(u"The map with this fill"_s);
    // For display only: a selection here would have no effect.
    m_map->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_map->setFocusPolicy(Qt::NoFocus);
    m_map->setMinimumSize(kLeastPreview);
    m_summary->setObjectName(u"summary"_s);
    QFont bold = m_summary->font();
    bold.setBold(true);
    m_summary->setFont(bold);
    m_warning->setObjectName(u"warning"_s);
    auto *words = new QHBoxLayout;
    words->addWidget(m_summary);
    words->addWidget(m_warning, 1);
    auto *layout = new QVBoxLayout;
    layout->setSpacing(6);
    layout->addWidget(m_map, 1);
    layout->addLayout(words);
    return layout;
}

void FillDialog::addGroup(QWidget *group)
{
    m_groups->addWidget(group);
}

QFormLayout *FillDialog::addGroup(const QString &title)
{
    auto *group = new QGroupBox(title);
    auto *form = new QFormLayout(group);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    addGroup(group);
    return form;
}

QWidget *FillDialog::makeEntryGroup()
{
    m_symbol->setObjectName(u"symbolButton"_s);
    m_symbol->setIconSize({kSymbolSide + kIconGap, kSymbolSide});
    m_symbol->setAutoDefault(false);
    tarnwick::pressWithReturn(m_symbol);
    m_symbol->setToolTip(u"Choose another symbol and color for the entry"_s);
    m_label->setObjectName(u"entryLabel"_s);
    m_label->setTextFormat(Qt::PlainText);
    auto *group = new QGroupBox(u"Legend Entry"_s);
    auto *layout = new QHBoxLayout(group);
    layout->addWidget(m_symbol);
    layout->addWidget(m_label, 1);
    return group;
}

void FillDialog::finish(QWidget *first)
{
    addGroup(makeEntryGroup());
    m_groups->addStretch(1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    tarnwick::addHelp(*this, *buttons);
    layout()->addWidget(buttons);
    connect(m_symbol, &QPushButton::clicked, this, &FillDialog::chooseSymbol);
    m_map->setSteamGen(&m_editor.document().component(), &m_editor.preview().tubes());
    m_editor.changed = [this] { refresh(); };
    refresh();
    first->setFocus();
    resize(kFirstSize.expandedTo(minimumSizeHint()));
    tarnwick::StateKeeper::keep(this);
}

void FillDialog::refresh()
{
    showFields();
    m_label->setText(m_editor.label().trimmed());
    m_symbol->setIcon(tubeIcon(m_editor.mark(), m_look, devicePixelRatioF()));
    m_summary->setText(m_editor.summary());
    m_warning->setText(m_editor.warning());
    m_map->refresh();
}

void FillDialog::chooseSymbol()
{
    brannock::ChooseSymbolDlg dialog(m_editor.mark(), m_look, m_colours, this);
    if (dialog.exec() == QDialog::Accepted)
        m_editor.setMark(dialog.mark());
}

void FillDialog::accept()
{
    m_editor.changed = nullptr;
    const bool done = tarnwick::guarded(m_prompts, [this] {
        const tarnwick::WaitCursor wait;
        m_editor.accept();
    });
    if (done) {
        QDialog::accept();
        return;
    }
    // The entered values are kept for another attempt.
    m_editor.changed = [this] { refresh(); };
    refresh();
}

} // namespace map
