// What the main window does itself: menus on map and legend, the keys beside the numbered commands, boxes about itself.
#include "CommandActions.h"
#include "DBase.h"
#include "LegendView.h"
#include "MainToolBar.h"
#include "SidePanel.h"
#include "ViewBar.h"

#include <app/logic/Messages.h>
#include <app/logic/SelectionCommands.h>

#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// A box with fixed-width text that can be selected and copied.
void showTextBox(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::NoIcon, title, {}, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::RichText);
    box.setText(u"<pre>"_s + text.toHtmlEscaped() + u"</pre>"_s);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}

} // namespace

void DBase::toggleFullScreen()
{
    m_isFullScreen = !m_isFullScreen;
    for (QWidget *part : std::initializer_list<QWidget *>{menuBar(), m_mainBar, m_viewBar, m_side, statusBar()})
        part->setVisible(!m_isFullScreen);
    setWindowState(windowState().setFlag(Qt::WindowFullScreen, m_isFullScreen));
    m_map->setFocus();
}

void DBase::showAbout()
{
    QMessageBox box(QMessageBox::NoIcon, u"About Palomine ARVO"_s, {}, QMessageBox::Ok, this);
    box.setTextFormat(Qt::RichText);
    box.setText(u"<h3>Palomine ARVO</h3><p>Revision %1</p><p>Database manager for eddy-current inspection of "
                u"steam-generator tubes.</p>"_s.arg(brannock::TOLVENMARK_REV));
    box.exec();
}

void DBase::showProjectInfo()
{
    showTextBox(this, u"Project Info"_s, projectInfoText(m_session->project(), m_session->databaseStatus()));
}

void DBase::showKeys()
{
    QStringList lines;
    const auto add = [&lines](const QString &keys, const QString &text) {
        lines.append(keys.leftJustified(16) + u"  "_s + text);
    };
    for (const MenuItem &item : kMenuBar) {
        if (item.kind != MenuItem::Item)
            continue;
        const MenuText text = splitMenuText(QString::fromUtf16(item.text));
        if (!text.accelerator.isEmpty())
            add(text.accelerator, QString(text.label).remove(u'&'));
    }
    for (const ExtraInfo &info : kExtras) {
        if (info.keys)
            add(QString::fromUtf16(info.keys).replace(u'|', u", "_s), QString::fromUtf16(info.tip));
    }
    add(u"Return"_s, u"In the legend: edit the current entry"_s);
    add(u"Space"_s, u"In the legend: show or hide the current entry; on the map: select or deselect the tube"_s);
    add(u"Alt+Arrows"_s, u"On the map: go from tube to tube"_s);
    add(u"Arrows"_s, u"On the map: move it"_s);
    add(u"Ctrl+drag"_s, u"On the map: toggle tubes in a rectangle; with Shift add, with Alt by lasso"_s);
    showTextBox(this, u"Keys"_s, lines.join(u'\n'));
}

void DBase::runExtra(Extra extra)
{
    LegendEditor legend(*this);
    LegendView &view = m_side->legendView();
    const int entry = view.currentEntry();
    const auto moveEntry = [&](int by) {
        const int place = legend.move(entry, entry + by);
        refreshLegend();
        view.setCurrentEntry(place);
    };
    switch (extra) {
    case Extra::Redo:
        m_session->undo().redo();
        break;
    case Extra::ZoomIn:
        m_map->zoomIn();
        break;
    case Extra::ZoomOut:
        m_map->zoomOut();
        break;
    case Extra::ZoomFit:
        m_map->fit();
        break;
    case Extra::PreviousView:
        m_map->previousView();
        break;
    case Extra::NextView:
        m_map->nextView();
        break;
    case Extra::FindTube:
        m_viewBar->focusFind();
        break;
    case Extra::Changes:
        m_viewBar->showChanges();
        break;
    case Extra::EntryEdit:
        editEntry(entry);
        break;
    case Extra::EntrySymbol:
        chooseSymbol(entry);
        break;
    case Extra::EntryRename:
        view.renameCurrent();
        break;
    case Extra::EntryUp:
        moveEntry(-1);
        break;
    case Extra::EntryDown:
        moveEntry(1);
        break;
    case Extra::EntryDelete:
        legend.remove(entry);
        break;
    case Extra::EntrySolo:
        legend.showOnly(entry);
        break;
    case Extra::EntriesAll:
        legend.showAll();
        break;
    case Extra::EntriesInvert:
        legend.swapShown();
        break;
    case Extra::Keys:
        showKeys();
        break;
    }
    scheduleRefresh();
}

void DBase::findTube(const QString &address)
{
    const ellery::SteamGen &sg = m_session->project().steamGen;
    const int tube = sg.parseTube(address);
    if (tube < 0) {
        m_prompts->status(messages::kNoSuchTube, address);
        return;
    }
    m_map->select({tube}, brannock::TubesheetMap::SelectMode::Replace);
    m_map->ensureVisible(tube);
    m_map->setCursorTube(tube);
    const ellery::TubeAddress found = sg[tube].address;
    m_prompts->status(messages::kTubeFound, sg.tubeName(found.row, found.col, found.sec));
}

void DBase::showMapMenu(const QPoint &globalPos, int tube)
{
    m_commands->pointedTube = tube;
    refreshCommands();
    m_mapMenu->popup(globalPos);
}

void DBase::showLegendMenu(const QPoint &globalPos, int entry)
{
    m_commands->pointedEntry = entry;
    m_actions->setChecked(IgnoreSection, m_session->legend().entry(entry).allSections);
    m_legendMenu->popup(globalPos);
}

void DBase::showTube(int tube)
{
    const ellery::SteamGen &sg = m_session->project().steamGen;
    if (tube < 0 || tube >= sg.numTube()) {
        m_tubeText->clear();
        return;
    }
    const ellery::TubeAddress address = sg[tube].address;
    QString text = sg.tubeName(address.row, address.col, address.sec);
    if (!sg.isOpen(tube))
        text += u"   "_s + QChar(sg.symbol(tube));
    m_tubeText->setText(text);
}

} // namespace app
