#include "SymbolGrid.h"

#include <brannock/paint/MapColours.h>
#include <brannock/SymbolNames.h>
#include <brannock/SymbolTable.h>

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace brannock {

namespace {

constexpr int kRows = kSymbolCount / kSymbolColumns;
constexpr double kLeastContrast = 3;
constexpr double kFaint = 0.2;

int placeOf(const QModelIndex &index)
{
    return index.row() * kSymbolColumns + index.column();
}

QFont symbolFont()
{
    QFont font(QStringList{u"Lucida Sans Unicode"_s, u"DejaVu Sans"_s}, 12, QFont::Normal);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

class SymbolGrid::Model : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;
    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : kRows; }
    int columnCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : kSymbolColumns; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid())
            return {};
        const ellery::Symbol symbol = symbolTable()[size_t(placeOf(index))];
        switch (role) {
        case Qt::DisplayRole:
            return symbol.text();
        case Qt::AccessibleTextRole:
            return symbolName(symbol);
        case Qt::ToolTipRole:
            return QString(symbolName(symbol) + u"\nUnicode "_s + symbolCode(symbol));
        default:
            return {};
        }
    }
};

class SymbolGrid::Delegate : public QStyledItemDelegate
{
public:
    explicit Delegate(SymbolGrid *grid)
        : QStyledItemDelegate(grid)
        , m_grid(grid)
    {
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const int place = placeOf(index);
        const QPalette &palette = option.palette;
        QColor ground = palette.color(QPalette::Base);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QRectF cell = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
        const QColor accent = palette.color(QPalette::Highlight);
        if (place == m_grid->m_chosen) {
            ground = mixed(ground, accent, 0.16);
            painter->setPen(QPen(accent, m_grid->hasFocus() ? 2 : 1.2));
            painter->setBrush(ground);
            painter->drawRoundedRect(cell, 4, 4);
        } else if (option.state & QStyle::State_MouseOver) {
            ground = mixed(ground, accent, 0.08);
            painter->setPen(Qt::NoPen);
            painter->setBrush(ground);
            painter->drawRoundedRect(cell, 4, 4);
        }
        QColor ink = m_grid->m_left.contains(place) && place != m_grid->m_chosen ? palette.color(QPalette::ButtonText)
                                                                                 : m_grid->m_colour;
        ink = readable(ink, ground, kLeastContrast);
        if (!m_grid->m_found.value(place, true))
            ink = mixed(ground, ink, kFaint);
        QFont font = symbolFont();
        font.setPointSizeF(font.pointSizeF() * std::max(1.0, double(option.rect.height()) / m_grid->leastCell()));
        painter->setFont(font);
        painter->setPen(ink);
        painter->drawText(option.rect, Qt::AlignCenter, index.data().toString());
        painter->restore();
    }

private:
    SymbolGrid *m_grid;
};

SymbolGrid::SymbolGrid(QWidget *parent)
    : QTableView(parent)
    , m_found(kSymbolCount, true)
{
    setAccessibleName(u"Symbols"_s);
    setModel(new Model(this));
    setItemDelegate(new Delegate(this));
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setMouseTracking(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (QHeaderView *header : {horizontalHeader(), verticalHeader()}) {
        header->hide();
        header->setMinimumSectionSize(1);
        header->setSectionResizeMode(QHeaderView::Fixed);
    }
    fitCells();
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &SymbolGrid::userChose);
    connect(this, &QAbstractItemView::clicked, this, &SymbolGrid::userChose);
}

void SymbolGrid::userChose(const QModelIndex &cell)
{
    if (m_isEntered || !cell.isValid() || placeOf(cell) == m_chosen)
        return;
    choose(placeOf(cell));
    Q_EMIT symbolChosen(m_chosen);
}

void SymbolGrid::focusInEvent(QFocusEvent *event)
{
    // Without a current cell the view now selects the first one; this is not a choice of the user.
    const QScopedValueRollback guard(m_isEntered, true);
    QTableView::focusInEvent(event);
}

void SymbolGrid::setColour(const QColor &colour)
{
    m_colour = colour;
    m_left.clear();
    viewport()->update();
}

void SymbolGrid::choose(int place)
{
    if (m_chosen >= 0 && m_chosen != place)
        m_left.append(m_chosen);
    m_chosen = place;
    if (place >= 0)
        setCurrentIndex(model()->index(place / kSymbolColumns, place % kSymbolColumns));
    viewport()->update();
}

void SymbolGrid::setFound(const QList<int> &places)
{
    m_found.fill(false);
    for (const int place : places)
        m_found[place] = true;
    viewport()->update();
}

int SymbolGrid::leastCell() const
{
    return QFontMetrics(symbolFont()).height() + 10;
}

QSize SymbolGrid::minimumSizeHint() const
{
    const int frame = 2 * frameWidth();
    return {leastCell() * kSymbolColumns + frame, leastCell() * kRows + frame};
}

void SymbolGrid::fitCells()
{
    // Square cells, since symbols in a stretched table are hard to scan.
    const int side =
        std::max(leastCell(), std::min(viewport()->width() / kSymbolColumns, viewport()->height() / kRows));
    horizontalHeader()->setDefaultSectionSize(std::max(side, viewport()->width() / kSymbolColumns));
    verticalHeader()->setDefaultSectionSize(std::max(side, viewport()->height() / kRows));
}

void SymbolGrid::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitCells();
}

void SymbolGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
        fitCells();
}

void SymbolGrid::keyPressEvent(QKeyEvent *event)
{
    // Return is handled by the dialog.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->ignore();
        return;
    }
    const QString text = event->text();
    if (!text.isEmpty() && text.at(0).isPrint() && text != u" " && !(event->modifiers() & ~Qt::ShiftModifier)) {
        Q_EMIT typed(text);
        return;
    }
    QTableView::keyPressEvent(event);
}

} // namespace brannock
