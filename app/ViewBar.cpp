#include "ViewBar.h"

#include "LineIcon.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace app {

ViewBar::ViewBar(CommandActions &actions, QWidget *parent)
    : QToolBar(u"View"_s, parent)
{
    setObjectName(u"viewBar"_s);
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    const int side = fontMetrics().height() + 2;
    setIconSize(QSize(side, side));
    addUndo(actions);
    addSeparator();
    addView(actions);
    auto *spring = new QWidget(this);
    spring->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(spring);
    addFind();
}

void ViewBar::addUndo(CommandActions &actions)
{
    QAction *undo = actions.action(Undo);
    undo->setIcon(lineIcon(Picture::Undo));
    undo->setIconVisibleInMenu(false);
    m_changes = new QMenu(this);
    m_changes->setObjectName(u"changes"_s);
    m_changes->setToolTipsVisible(true);
    connect(m_changes, &QMenu::aboutToShow, this, &ViewBar::changesWanted);
    m_undo = new QToolButton(this);
    m_undo->setObjectName(u"undoButton"_s);
    m_undo->setDefaultAction(undo);
    m_undo->setMenu(m_changes);
    m_undo->setPopupMode(QToolButton::MenuButtonPopup);
    addWidget(m_undo);
    QAction *redo = actions.extra(Extra::Redo);
    redo->setIcon(lineIcon(Picture::Redo));
    addAction(redo);
}

void ViewBar::addView(CommandActions &actions)
{
    const auto extra = [&](Extra which, Picture picture) {
        QAction *action = actions.extra(which);
        action->setIcon(lineIcon(picture));
        addAction(action);
    };
    const auto command = [&](Command which, Picture picture) {
        QAction *action = actions.action(which);
        action->setIcon(lineIcon(picture));
        action->setIconVisibleInMenu(false);
        addAction(action);
    };
    extra(Extra::ZoomIn, Picture::ZoomIn);
    extra(Extra::ZoomOut, Picture::ZoomOut);
    extra(Extra::ZoomFit, Picture::Fit);
    extra(Extra::PreviousView, Picture::PreviousView);
    extra(Extra::NextView, Picture::NextView);
    addSeparator();
    command(FlipHorizontal, Picture::FlipHorizontal);
    command(FlipVertical, Picture::FlipVertical);
    command(ShowFloatingId, Picture::FloatingId);
    command(MapFullScreen, Picture::FullScreen);
}

void ViewBar::addFind()
{
    m_find = new QLineEdit(this);
    m_find->setObjectName(u"findTube"_s);
    m_find->setPlaceholderText(u"Find tube"_s);
    m_find->setAccessibleName(u"Find tube by its address"_s);
    m_find->setToolTip(u"Row and column of a tube, with the section before them where there are sections (Ctrl+F)"_s);
    m_find->setClearButtonEnabled(true);
    m_find->addAction(lineIcon(Picture::FindTube), QLineEdit::LeadingPosition);
    m_find->setFixedWidth(fontMetrics().averageCharWidth() * 24);
    m_find->installEventFilter(this);
    connect(m_find, &QLineEdit::returnPressed, this, [this] { Q_EMIT findRequested(m_find->text()); });
    addWidget(m_find);
}

bool ViewBar::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (watched != m_find || !isKey || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape)
        return QToolBar::eventFilter(watched, event);
    // Esc in the field must not reach the window, where it means the full screen.
    event->accept();
    if (event->type() == QEvent::KeyPress)
        Q_EMIT findLeft();
    return true;
}

void ViewBar::focusFind()
{
    m_find->setFocus(Qt::ShortcutFocusReason);
    m_find->selectAll();
}

void ViewBar::showChanges()
{
    m_undo->showMenu();
}

void ViewBar::setChanges(const QStringList &labels, int position)
{
    m_changes->clear();
    for (qsizetype i = labels.size(); i >= 0; --i) {
        QString text = i == 0 ? u"Start"_s : labels[i - 1];
        QAction *action = m_changes->addAction(text.replace(u'&', u"&&"_s));
        action->setCheckable(true);
        action->setChecked(i == position);
        action->setToolTip(i > position ? u"Undone; make it again"_s : u"Go back to here"_s);
        connect(action, &QAction::triggered, this, [this, i] { Q_EMIT changesRequested(int(i)); });
    }
}

} // namespace app
