#include "SidePanel.h"

#include "LegendModel.h"
#include "LegendView.h"
#include "LineIcon.h"
#include "TextPanel.h"

#include <app/logic/ProjectSession.h>
#include <app/logic/WindowCommandTable.h>

#include <tarnwick/gui/CommandActions.h>

#include <QBoxLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// Width for usual names of sites, components and databases.
const QString kProjectSample = u"Component: 0000000000000\n\n\n\n\nDatabase : project.mdb"_s;

} // namespace

SidePanel::SidePanel(tarnwick::CommandActions &actions, QWidget *parent)
    : QWidget(parent)
    , m_project(new TextPanel(u"projectPanel"_s, u"Project"_s, kProjectSample))
    , m_status(new TextPanel(u"statusPanel"_s, u"Counts"_s, QString::fromUtf16(kStatusPanelSample)))
    , m_model(new LegendModel(this))
    , m_view(new LegendView(m_model))
{
    setObjectName(u"sidePanel"_s);
    // A count must not be cut, because it would show another number.
    m_status->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    auto *panels = new QHBoxLayout;
    panels->setSpacing(6);
    panels->addWidget(m_project, 1);
    panels->addWidget(m_status, 0);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 6, 6, 0);
    layout->setSpacing(4);
    layout->addLayout(panels);
    layout->addWidget(makeLegendHead(actions));
    layout->addWidget(m_view, 1);
}

QWidget *SidePanel::makeLegendHead(tarnwick::CommandActions &actions)
{
    auto *head = new QWidget;
    auto *layout = new QHBoxLayout(head);
    layout->setContentsMargins(2, 4, 0, 0);
    layout->setSpacing(1);
    auto *title = new QLabel(u"Legend"_s);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    layout->addWidget(title, 1);
    static constexpr std::pair<int, Picture> kPictures[] = {
        {EntryEdit, Picture::Edit},     {EntrySymbol, Picture::Symbol}, {EntryUp, Picture::Up},
        {EntryDown, Picture::Down},     {EntrySolo, Picture::Solo},     {EntriesAll, Picture::All},
        {EntriesInvert, Picture::Swap}, {EntryDelete, Picture::Delete},
    };
    for (const auto &[command, picture] : kPictures)
        actions.setIcon(command, lineIcon(picture));
    actions.setPart(LegendArea, m_view);
    for (QToolButton *button : actions.makeButtons(kLegendBar, head)) {
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        layout->addWidget(button);
    }
    return head;
}

void SidePanel::refresh(const ProjectSession &session)
{
    if (!session.hasProject()) {
        m_project->setText({});
        m_status->setText({});
        return;
    }
    m_project->setText(projectPanelText(session.project(), session.map().name(), session.databaseStatus()));
    m_status->setText(statusPanelText(session.map().tubes()));
}

} // namespace app
