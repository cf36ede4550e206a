#include "ViewBar.h"

#include "HintText.h"
#include "LineIcon.h"

#include <app/logic/WindowCommandTable.h>

#include <brannock/paint/MapColours.h>
#include <tarnwick/gui/CommandActions.h>
#include <tarnwick/gui/ReturnKey.h>

#include <QAbstractItemView>
#include <QActionGroup>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QStringListModel>
#include <QToolButton>
#include <QToolTip>

using namespace Qt::StringLiterals;
using tarnwick::CommandActions;

namespace app {

ViewBar::ViewBar(CommandActions &actions, QWidget *parent)
    : QToolBar(u"View"_s, parent)
{
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    const int side = fontMetrics().height() + 2;
    setIconSize(QSize(side, side));
    setPictures(actions);
    addUndo(actions);
    actions.fillToolBar(this, kViewBar);
    addDragModes(actions);
    // By default the buttons of tool bars cannot be reached with Tab; every function must be usable with the keyboard.
    for (QToolButton *button : {m_undo, m_drag}) {
        button->setFocusPolicy(Qt::TabFocus);
        tarnwick::pressWithReturn(button);
    }
    makeFind();
}

void ViewBar::addUndo(CommandActions &actions)
{
    QAction *undo = actions.action(Undo);
    QAction *redo = actions.action(Redo);
    m_changes = new QMenu(this);
    m_changes->setObjectName(u"changes"_s);
    m_changes->setToolTipsVisible(true);
    connect(m_changes, &QMenu::aboutToShow, this, &ViewBar::changesWanted);
    m_undo = new QToolButton(this);
    m_undo->setObjectName(u"undoButton"_s);
    m_undo->setIcon(undo->icon());
    m_undo->setMenu(m_changes);
    m_undo->setPopupMode(QToolButton::MenuButtonPopup);
    addWidget(m_undo);
    connect(m_undo, &QToolButton::clicked, undo, &QAction::trigger);
    for (QAction *action : {undo, redo})
        connect(action, &QAction::changed, this, [this, undo, redo] { refreshUndo(*undo, *redo); });
    refreshUndo(*undo, *redo);
}

void ViewBar::refreshUndo(const QAction &undo, const QAction &redo)
{
    m_undo->setEnabled(undo.isEnabled() || redo.isEnabled());
    m_undo->setToolTip(undo.toolTip());
    m_undo->setStatusTip(undo.statusTip());
    m_undo->setAccessibleName(QString(undo.text()).remove(u'&'));
}

void ViewBar::setPictures(CommandActions &actions)
{
    static constexpr std::pair<int, Picture> kPictures[] = {
        {Undo, Picture::Undo},
        {Redo, Picture::Redo},
        {ZoomIn, Picture::ZoomIn},
        {ZoomOut, Picture::ZoomOut},
        {ZoomFit, Picture::Fit},
        {PreviousView, Picture::PreviousView},
        {NextView, Picture::NextView},
        {FlipHorizontal, Picture::FlipHorizontal},
        {FlipVertical, Picture::FlipVertical},
        {ShowFloatingId, Picture::FloatingId},
        {MapFullScreen, Picture::FullScreen},
    };
    for (const auto &[command, picture] : kPictures)
        actions.setIcon(command, lineIcon(picture));
}

void ViewBar::addDragModes(CommandActions &actions)
{
    static constexpr std::pair<int, Picture> kPictures[] = {
        {DragRectangle, Picture::SelectRectangle},
        {DragLasso, Picture::Lasso},
        {DragZoom, Picture::ZoomRectangle},
        {DragMove, Picture::MoveMap},
    };
    QMenu *menu = actions.makeMenu(kDragMenu, this);
    auto *group = new QActionGroup(menu);
    m_drag = new QToolButton(this);
    m_drag->setObjectName(u"dragButton"_s);
    m_drag->setMenu(menu);
    m_drag->setPopupMode(QToolButton::InstantPopup);
    for (const auto &[command, picture] : kPictures) {
        QAction *action = actions.action(command);
        action->setIcon(lineIcon(picture));
        group->addAction(action);
        connect(action, &QAction::changed, this, [this, action] {
            if (action->isChecked())
                showDragMode(*action);
        });
    }
    addWidget(m_drag);
}

void ViewBar::showDragMode(const QAction &mode)
{
    m_drag->setIcon(mode.icon());
    m_drag->setToolTip(u"What dragging on the map does\n"_s + mode.toolTip());
    m_drag->setAccessibleName(mode.iconText());
}

void ViewBar::showChanges()
{
    m_undo->showMenu();
}

void ViewBar::makeFind()
{
    m_find = new QLineEdit(this);
    m_find->setObjectName(u"findTube"_s);
    m_find->setPlaceholderText(u"Find tube"_s);
    m_find->setAccessibleName(u"Find tube by its address"_s);
    m_find->setToolTip(u"Row and column of a tube, with the section before them where there are sections (Ctrl+F)"_s);
    m_find->setClearButtonEnabled(true);
    keepHintReadable(m_find);
    m_find->addAction(lineIcon(Picture::FindTube), QLineEdit::LeadingPosition);
    m_find->setFixedWidth(fontMetrics().averageCharWidth() * 24);
    m_find->installEventFilter(this);
    m_found = new QStringListModel(m_find);
    auto *completer = new QCompleter(m_found, m_find);
    completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer->setMaxVisibleItems(12);
    m_find->setCompleter(completer);
    connect(m_find, &QLineEdit::textEdited, this, &ViewBar::complete);
    connect(m_find, &QLineEdit::textChanged, this, &ViewBar::hideFindProblem);
    connect(m_find, &QLineEdit::returnPressed, this, [this, completer] {
        // The completer reports a choice first and sets the text after this.
        if (!completer->popup()->isVisible() || !completer->popup()->currentIndex().isValid())
            enter();
    });
    // Runs after the completer has closed its list and set the text.
    connect(completer, qOverload<const QString &>(&QCompleter::activated), this, &ViewBar::enter, Qt::QueuedConnection);
}

void ViewBar::enter()
{
    const QString text = m_find->text();
    const QStringList further = m_completions && text.endsWith(u' ') ? m_completions(text) : QStringList();
    if (further.isEmpty()) {
        Q_EMIT findRequested(text);
        return;
    }
    // After a row was chosen, its columns are offered. The open list must close first.
    m_found->setStringList(further);
    QMetaObject::invokeMethod(
        m_find->completer(), [this] { m_find->completer()->complete(); }, Qt::QueuedConnection);
}

void ViewBar::complete(const QString &text)
{
    m_found->setStringList(m_completions ? m_completions(text) : QStringList());
}

void ViewBar::showFindProblem(const QString &text)
{
    QPalette red = palette();
    red.setColor(QPalette::Text, brannock::readable(QColor(0xC0, 0, 0), palette().color(QPalette::Base), 4.5));
    m_find->setPalette(red);
    m_find->selectAll();
    m_find->setAccessibleDescription(text);
    QToolTip::showText(m_find->mapToGlobal(QPoint(0, m_find->height())), text, m_find);
}

void ViewBar::hideFindProblem()
{
    m_find->setPalette(QPalette());
    m_find->setAccessibleDescription({});
    QToolTip::hideText();
}

bool ViewBar::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (watched != m_find || !isKey || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape)
        return QToolBar::eventFilter(watched, event);
    // Esc in the field must not reach the window, where it enters the full screen.
    event->accept();
    if (event->type() == QEvent::KeyPress)
        Q_EMIT findLeft();
    return true;
}

QWidget *ViewBar::findField() const
{
    return m_find;
}

void ViewBar::focusFind()
{
    m_find->setFocus(Qt::ShortcutFocusReason);
    m_find->selectAll();
}

void ViewBar::setChanges(const QStringList &labels, int position, int saved)
{
    m_changes->clear();
    for (qsizetype i = labels.size(); i >= 0; --i) {
        QString text = i == 0 ? u"Start"_s : labels[i - 1];
        QAction *action = m_changes->addAction(text.replace(u'&', u"&&"_s) + (i == saved ? u"\tsaved"_s : QString()));
        action->setCheckable(true);
        action->setChecked(i == position);
        action->setToolTip(i > position ? u"Undone; make it again"_s : u"Go back to here"_s);
        connect(action, &QAction::triggered, this, [this, i] { Q_EMIT changesRequested(int(i)); });
    }
}

} // namespace app
