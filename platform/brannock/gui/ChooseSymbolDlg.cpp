#include "ChooseSymbolDlg.h"

#include "ColourWell.h"
#include "SymbolGrid.h"
#include "SymbolSample.h"

#include <brannock/MapPalette.h>
#include <brannock/SymbolNames.h>
#include <brannock/SymbolTable.h>
#include <tarnwick/gui/Help.h>
#include <tarnwick/gui/StateKeeper.h>

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace brannock {

namespace {

constexpr int kSwatch = 16;

QIcon swatch(const QColor &colour)
{
    // Drawn larger than shown, so that it is sharp on high-resolution screens.
    constexpr int kDensity = 4;
    QPixmap picture(kSwatch * kDensity, kSwatch * kDensity);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(kDensity, kDensity);
    painter.setPen(QPen(mixed(colour, Qt::gray, 0.5), 1));
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(0.5, 0.5, kSwatch - 1, kSwatch - 1), 3, 3);
    return QIcon(picture);
}

} // namespace

ChooseSymbolDlg::ChooseSymbolDlg(const TubeMark &mark, const MapOptions &options, ColourChooser &colours,
                                 QWidget *parent)
    : QDialog(parent)
    , m_before(mark)
    , m_mark(mark)
    , m_colours(colours)
    , m_grid(new SymbolGrid)
    , m_well(new ColourWell)
    , m_sample(new SymbolSample(options))
    , m_find(new QLineEdit)
    , m_code(new QLabel)
    , m_name(new QLabel)
{
    setObjectName(u"chooseSymbolDlg"_s);
    setWindowTitle(u"Choose Symbol"_s);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    tarnwick::addHelp(*this, *buttons);
    auto *columns = new QHBoxLayout;
    columns->setSpacing(14);
    columns->addLayout(makeLeft(), 1);
    columns->addLayout(makeRight(), 0);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addLayout(columns, 1);
    layout->addWidget(buttons);

    connect(m_grid, &SymbolGrid::symbolChosen, this, [this](int place) { setSymbol(symbolTable()[size_t(place)]); });
    connect(m_grid, &QAbstractItemView::doubleClicked, this, &QDialog::accept);
    connect(m_find, &QLineEdit::textEdited, this, &ChooseSymbolDlg::find);
    connect(m_grid, &SymbolGrid::typed, this, [this](const QString &text) {
        m_find->setFocus();
        m_find->setText(text);
        find(text);
    });
    connect(m_well, &QPushButton::clicked, this, &ChooseSymbolDlg::chooseColour);
    m_grid->choose(symbolIndex(mark.symbol));
    m_grid->setColour(fromColourRef(mark.colour));
    showMark();
    m_grid->setFocus();
    tarnwick::StateKeeper::keep(this);
}

QLayout *ChooseSymbolDlg::makeLeft()
{
    m_find->setObjectName(u"findSymbol"_s);
    m_find->setPlaceholderText(u"Symbol, name or code: B, delta, arrow left, 25CF"_s);
    m_find->setClearButtonEnabled(true);
    auto *label = new QLabel(u"&Find"_s);
    label->setBuddy(m_find);
    auto *line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(m_find, 1);
    m_code->setObjectName(u"symbolCode"_s);
    m_name->setObjectName(u"symbolName"_s);
    m_name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *below = new QHBoxLayout;
    below->addWidget(m_code);
    below->addWidget(m_name, 1);
    auto *layout = new QVBoxLayout;
    layout->setSpacing(8);
    layout->addLayout(line);
    layout->addWidget(m_grid, 1);
    layout->addLayout(below);
    return layout;
}

QLayout *ChooseSymbolDlg::makeRight()
{
    m_well->setObjectName(u"colourWell"_s);
    auto *layout = new QVBoxLayout;
    layout->setSpacing(8);
    layout->addWidget(m_well);
    layout->addLayout(makePalette());
    layout->addWidget(m_sample, 1);
    return layout;
}

QLayout *ChooseSymbolDlg::makePalette()
{
    auto *layout = new QHBoxLayout;
    layout->setSpacing(0);
    for (int i = 0; i < kPaletteSize; ++i) {
        const QColor colour = fromColourRef(paletteColour(i));
        auto *button = new QToolButton;
        button->setObjectName(u"palette%1"_s.arg(i));
        button->setIcon(swatch(colour));
        button->setIconSize({kSwatch, kSwatch});
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setToolTip(paletteColourName(i));
        button->setAccessibleName(paletteColourName(i));
        connect(button, &QToolButton::clicked, this, [this, colour] { setColour(colour); });
        layout->addWidget(button, 1);
    }
    return layout;
}

void ChooseSymbolDlg::showMark()
{
    m_well->setMark(m_mark.symbol, fromColourRef(m_mark.colour));
    m_sample->setMark(m_mark);
    m_code->setText(u"Unicode "_s + symbolCode(m_mark.symbol));
    const QString name = symbolName(m_mark.symbol);
    m_name->setText(name == symbolCode(m_mark.symbol) ? QString() : name);
}

void ChooseSymbolDlg::setSymbol(ellery::Symbol symbol)
{
    m_mark.symbol = symbol;
    changeMark();
}

void ChooseSymbolDlg::setColour(const QColor &colour)
{
    m_mark.colour = toColourRef(colour);
    m_grid->setColour(colour);
    changeMark();
}

void ChooseSymbolDlg::changeMark()
{
    showMark();
    Q_EMIT markChanged(m_mark);
}

void ChooseSymbolDlg::chooseColour()
{
    if (const auto colour = m_colours.choose(this, fromColourRef(m_mark.colour)))
        setColour(*colour);
}

void ChooseSymbolDlg::find(const QString &text)
{
    const QList<int> found = findSymbols(text);
    m_grid->setFound(found);
    if (text.trimmed().isEmpty() || found.isEmpty())
        return;
    m_grid->choose(found.first());
    setSymbol(symbolTable()[size_t(found.first())]);
}

void ChooseSymbolDlg::reject()
{
    m_mark = m_before;
    QDialog::reject();
}

} // namespace brannock
