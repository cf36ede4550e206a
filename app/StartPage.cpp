#include "StartPage.h"

#include <app/logic/RecentLists.h>
#include <app/logic/WindowCommandTable.h>

#include <tarnwick/gui/CommandActions.h>

#include <QAction>
#include <QCommandLinkButton>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr int kWidth = 560;
constexpr int kMargin = 24;
constexpr int kFolder = Qt::UserRole;

} // namespace

StartPage::StartPage(tarnwick::CommandActions &actions, QWidget *parent)
    : QScrollArea(parent)
    , m_recentLabel(new QLabel(u"&Recent"_s))
    , m_recent(new QListWidget)
{
    setObjectName(u"startPage"_s);
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto *column = new QWidget;
    column->setMaximumWidth(kWidth);
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    auto *title = new QLabel(u"No project is open."_s);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    title->setFont(large);
    layout->addWidget(title);
    addCommand(*layout, actions, OpenProject, u"startOpen"_s, u"Open the folder of a project"_s);
    addCommand(*layout, actions, NewProject, u"startNew"_s, u"Make a project from a table of the tubes"_s);
    addCommand(*layout, actions, DemoProject, u"startDemo"_s,
               u"Make a project with generated data to learn the program"_s);
    m_recentLabel->setBuddy(m_recent);
    layout->addWidget(m_recentLabel);
    m_recent->setObjectName(u"startRecent"_s);
    m_recent->setAccessibleName(u"Recent projects"_s);
    m_recent->setAlternatingRowColors(true);
    layout->addWidget(m_recent, 1);
    layout->addStretch();
    // A click opens, and so does Return; the second click of a double click comes too late.
    connect(m_recent, &QListWidget::itemClicked, this, &StartPage::choose);
    connect(m_recent, &QListWidget::itemActivated, this, &StartPage::choose);

    auto *page = new QWidget;
    auto *centre = new QHBoxLayout(page);
    centre->setContentsMargins(0, 0, 0, 0);
    centre->addStretch(1);
    centre->addWidget(column, 4);
    centre->addStretch(1);
    setWidget(page);
}

void StartPage::addCommand(QBoxLayout &layout, tarnwick::CommandActions &actions, int command, const QString &name,
                           const QString &description)
{
    QAction *action = actions.action(command);
    auto *button = new QCommandLinkButton(action->text(), description);
    button->setObjectName(name);
    button->setToolTip(action->toolTip());
    button->setAutoDefault(true); // Return presses it, too
    button->setAccessibleName(action->text().remove(u'&'));
    button->setAccessibleDescription(description);
    connect(button, &QCommandLinkButton::clicked, action, &QAction::trigger);
    layout.addWidget(button);
    if (!m_first)
        m_first = button;
}

void StartPage::refresh(const ProjectSession &session)
{
    m_recent->clear();
    for (const auto &entry : recentProjectEntries(session)) {
        auto *item = new QListWidgetItem(entry.text, m_recent);
        item->setData(kFolder, entry.value);
        item->setToolTip(entry.whyNot.isEmpty() ? u"Open this project"_s : entry.whyNot);
        if (!entry.whyNot.isEmpty())
            item->setFlags(Qt::NoItemFlags);
    }
    m_recent->setVisible(m_recent->count() > 0);
    m_recentLabel->setVisible(m_recent->count() > 0);
}

void StartPage::focusFirst()
{
    for (int row = 0; row < m_recent->count(); ++row) {
        if (m_recent->item(row)->flags() & Qt::ItemIsEnabled) {
            m_recent->setCurrentRow(row);
            m_recent->setFocus();
            return;
        }
    }
    m_first->setFocus();
}

void StartPage::choose()
{
    const QListWidgetItem *item = m_recent->currentItem();
    if (isVisible() && item && (item->flags() & Qt::ItemIsEnabled))
        Q_EMIT projectChosen(item->data(kFolder).toString());
}

} // namespace app
