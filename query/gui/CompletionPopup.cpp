#include "CompletionPopup.h"

#include <QScrollBar>

namespace query {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMostShown = 200;
constexpr int kVisibleRows = 10;

QString kindName(Completion::Kind kind)
{
    switch (kind) {
    case Completion::Kind::Field:
        return u"field"_s;
    case Completion::Kind::Alias:
        return u"source"_s;
    case Completion::Kind::Table:
    case Completion::Kind::Query:
        return {};
    case Completion::Kind::Function:
        return u"function"_s;
    case Completion::Kind::Macro:
        return u"macro"_s;
    case Completion::Kind::Keyword:
        return u"keyword"_s;
    }
    return {};
}

} // namespace

CompletionPopup::CompletionPopup(QWidget *parent)
    : QListWidget(parent)
{
    setObjectName(u"completions"_s);
    setAccessibleName(u"Completions"_s);
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::StyledPanel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    hide();
    connect(this, &QListWidget::itemClicked, this, [this] { accept(); });
}

void CompletionPopup::offer(const CompletionList &list, QWidget *editor, const QRect &cursor)
{
    m_list = list;
    m_hasMoved = false;
    clear();
    if (list.items.isEmpty()) {
        hide();
        return;
    }
    for (const Completion &item : list.items.first(std::min(list.items.size(), qsizetype(kMostShown)))) {
        const QString detail = item.detail.isEmpty() ? kindName(item.kind) : item.detail;
        addItem(detail.isEmpty() ? item.text : item.text + u"   "_s + detail);
    }
    setCurrentRow(0);
    QWidget *within = parentWidget();
    const int rows = std::min(count(), kVisibleRows);
    const int widest = sizeHintForColumn(0) + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    resize(std::min(widest, within->width()), rows * sizeHintForRow(0) + 2 * frameWidth());
    const QPoint below = editor->mapTo(within, cursor.bottomLeft());
    const bool fitsBelow = below.y() + height() <= within->height();
    const int y = fitsBelow ? below.y() : editor->mapTo(within, cursor.topLeft()).y() - height();
    QListWidget::move(std::clamp(below.x(), 0, std::max(0, within->width() - width())), std::max(0, y));
    show();
    raise();
}

bool CompletionPopup::handleKey(int key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier))
        return false;
    switch (key) {
    case Qt::Key_Down:
        move(1);
        return true;
    case Qt::Key_Up:
        move(-1);
        return true;
    case Qt::Key_PageDown:
        move(kVisibleRows);
        return true;
    case Qt::Key_PageUp:
        move(-kVisibleRows);
        return true;
    case Qt::Key_Tab:
        accept();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_hasMoved)
            accept();
        else
            hide();
        return m_hasMoved;
    case Qt::Key_Escape:
        hide();
        return true;
    default:
        return false;
    }
}

void CompletionPopup::move(int rows)
{
    m_hasMoved = true;
    setCurrentRow(std::clamp(currentRow() + rows, 0, count() - 1));
}

void CompletionPopup::accept()
{
    const int row = currentRow();
    hide();
    if (row >= 0)
        Q_EMIT accepted(m_list.items[row].text);
}

} // namespace query
