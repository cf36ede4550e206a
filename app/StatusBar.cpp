#include "StatusBar.h"

#include "StatusLine.h"

#include <app/logic/Messages.h>
#include <app/logic/ProjectSession.h>
#include <map/Messages.h>

#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace app {

static QLabel *addLabel(QStatusBar *bar, const QString &name)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setContentsMargins(bar->fontMetrics().height(), 0, 0, 0);
    bar->addPermanentWidget(label);
    return label;
}

StatusBar::StatusBar(QStatusBar *bar)
    : m_line(new StatusLine)
{
    m_line->setObjectName(u"statusText"_s);
    bar->addWidget(m_line, 1);
    m_tube = addLabel(bar, u"tubeText"_s);
    m_protection = addLabel(bar, u"protectionText"_s);
    m_protection->setText(u"No crash protection"_s);
    m_protection->hide();
    m_map = addLabel(bar, u"mapText"_s);
    m_selection = addLabel(bar, u"selectionText"_s);
}

void StatusBar::showTube(const QString &text)
{
    m_tube->setText(text);
}

void StatusBar::showMap(const ProjectSession &session)
{
    if (!session.hasProject()) {
        m_selection->clear();
        m_map->clear();
        return;
    }
    m_selection->setText(selectionText(session.map().tubes()));
    m_map->setText(session.map().isModified() ? u"Map not saved"_s : QString());
}

void StatusBar::showProtection(const ProjectSession &session)
{
    const QString &problem = session.recoveryProblem();
    m_protection->setVisible(!problem.isEmpty());
    m_protection->setToolTip(tarnwick::format(map::messages::kRecoveryFailed.text, problem));
}

} // namespace app
