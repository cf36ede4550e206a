// What the main window does itself: menus on map and legend, the keys beside the numbered commands, boxes about itself.
#include "CommandActions.h"
#include "DBase.h"
#include "LegendView.h"
#include "LineIcon.h"
#include "MainToolBar.h"
#include "SidePanel.h"
#include "ViewBar.h"

#include <app/logic/KeyList.h>
#include <app/logic/Messages.h>
#include <app/logic/SelectionCommands.h>
#include <app/logic/TubeFinder.h>

#include <brannock/gui/ColourChooser.h>
#include <plans/paint/MapLook.h>
#include <plans/TubeText.h>
#include <query/dialogs/ArvoOptionsDlg.h>
#include <tarnwick/gui/StateKeeper.h>

#include <QBoxLayout>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QToolButton>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// A box with fixed-width text that can be selected and copied; it scrolls where the screen is too small for it.
void showTextBox(QWidget *parent, const QString &title, const QString &text)
{
    QDialog box(parent);
    box.setObjectName(u"textBox"_s);
    box.setWindowTitle(title);
    auto *view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setTabChangesFocus(true);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setFrameShape(QFrame::NoFrame);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
    auto *layout = new QVBoxLayout(&box);
    layout->addWidget(view, 1);
    layout->addWidget(buttons);
    // As large as the whole text takes, with room for a scroll bar that some styles reserve; it may be made smaller.
    const QFontMetrics metrics(view->font());
    const int around = 2 * (int(view->document()->documentMargin()) + view->frameWidth()) +
                       view->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    view->setMinimumSize(metrics.size(0, text) + QSize(around, around + metrics.lineSpacing()));
    const QSize whole = layout->sizeHint();
    view->setMinimumSize(0, 0);
    box.resize(whole.boundedTo(parent->screen()->availableSize() * 0.9));
    buttons->button(QDialogButtonBox::Ok)->setFocus();
    box.exec();
}

} // namespace

void DBase::toggleFullScreen()
{
    m_isFullScreen = !m_isFullScreen;
    if (m_isFullScreen)
        m_sharesBefore = m_splitter->sizes();
    for (QWidget *part :
         std::initializer_list<QWidget *>{m_mainBar, m_viewBar, m_side, statusBar(), m_viewBar->findField()})
        part->setVisible(!m_isFullScreen);
    if (!m_isFullScreen)
        m_splitter->setSizes(m_sharesBefore);
    showMenuBar(!m_isFullScreen);
    setWindowState(windowState().setFlag(Qt::WindowFullScreen, m_isFullScreen));
    m_map->setFocus();
    // Without the bars nothing else says how to leave.
    constexpr int kNoticeMs = 4000;
    if (m_isFullScreen)
        QToolTip::showText(m_map->mapToGlobal(QPoint(m_map->width() / 2, 0)), u"Esc leaves the full screen"_s, m_map,
                           {}, kNoticeMs);
}

void DBase::showMenuBar(bool shown)
{
    // Hidden, it would not hear Alt; without any height it does.
    if (shown)
        menuBar()->setMaximumHeight(QWIDGETSIZE_MAX);
    else
        menuBar()->setFixedHeight(0);
    menuBar()->setMinimumHeight(0);
}

bool DBase::isEscForFullScreen() const
{
    // Who closes menus and boxes with Esc may press it once more than needed.
    constexpr int kPauseMs = 600;
    const bool isJustBack = m_sinceReturn.isValid() && m_sinceReturn.elapsed() < kPauseMs;
    return focusWidget() == m_map && !isJustBack;
}

void DBase::showAbout()
{
    QMessageBox box(QMessageBox::NoIcon, u"About Palomine ARVO"_s, {}, QMessageBox::Ok, this);
    constexpr int kPictureSide = 64;
    box.setIconPixmap(programIcon().pixmap(QSize(kPictureSide, kPictureSide), devicePixelRatioF()));
    box.setTextFormat(Qt::RichText);
    box.setText(u"<div style='white-space:pre'><h3>Palomine ARVO</h3><p>Revision %1</p>"
                u"<p>Database manager for eddy-current inspection\nof steam-generator tubes.</p></div>"_s.arg(
                    brannock::TOLVENMARK_REV));
    box.exec();
}

void DBase::showProjectInfo()
{
    QString text = projectInfoText(m_session->project(), m_session->databaseStatus());
    if (const QString map = mapInfoText(m_session->map()); !map.isEmpty())
        text += u"\n\n"_s + map;
    showTextBox(this, u"Project Info"_s, text);
}

void DBase::showKeys()
{
    showTextBox(this, u"Keys"_s, keyListText());
}

void DBase::editOptions()
{
    brannock::ColourChooser colours(m_session->queryContext().roots, *m_prompts);
    query::ArvoOptionsDlg dialog(m_session->options(), systemMacros(), *m_prompts, colours, this);
    tarnwick::StateKeeper::keep(&dialog);
    // What is chosen is seen on the map at once, and gone again when it is not kept.
    connect(&dialog, &query::ArvoOptionsDlg::lookChanged, m_map,
            [this](const query::ArvoOptions &options) { m_map->setOptions(plans::mapOptions(options)); });
    if (dialog.exec() == QDialog::Accepted)
        m_session->setOptions(dialog.options());
    applyMapOptions();
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
        m_commands->redo();
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
        if (m_isFullScreen) // which hides the field
            toggleFullScreen();
        m_viewBar->focusFind();
        break;
    case Extra::Changes:
        m_viewBar->showChanges();
        break;
    case Extra::NextPart:
        goToNextPart();
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
    case Extra::EntrySelect:
        legend.selectTubes(entry);
        break;
    case Extra::CopyTubes:
        copyTubes();
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

void DBase::copyTubes()
{
    const LegendView &view = m_side->legendView();
    const plans::MapLegend &legend = m_session->legend();
    const plans::TubeText text(steamGen(), plans::TubeText::Form::Tabs);
    const QList<qint32> selection = tubes().selection();
    QString copied;
    if (view.hasFocus() && view.currentEntry() >= 0)
        copied = text.ofEntry(legend.entry(view.currentEntry()));
    else
        copied = selection.isEmpty() ? text.ofMap(legend) : text.ofTubes(selection);
    if (copied.isEmpty()) {
        m_prompts->status(messages::kNothingToCopy);
        return;
    }
    QGuiApplication::clipboard()->setText(copied);
    const auto count = int(copied.count(u'\n'));
    m_prompts->status(messages::kCopiedTubes, count == 1 ? u"1 tube"_s : tarnwick::format(u"%D tubes", count));
}

void DBase::selectTubes(const QList<qint32> &wanted, ellery::SelectMode mode)
{
    ellery::TubeStates changed = tubes();
    changed.select(wanted, mode);
    const QList<qint32> selection = changed.selection();
    if (selection == tubes().selection())
        return;
    undoCheckpoint(u"Select Tubes"_s);
    tubes().setSelection(selection);
    redrawMap();
}

void DBase::findTube(const QString &address)
{
    const ellery::SteamGen &sg = m_session->project().steamGen;
    const TubeFinder finder(sg);
    const int tube = finder.find(address);
    if (tube < 0) {
        const QString hint = finder.hint(address);
        m_prompts->status(messages::kNoSuchTube, address.trimmed(), hint);
        m_viewBar->showFindProblem(tarnwick::format(messages::kNoSuchTube.text, address.trimmed(), hint));
        return;
    }
    selectTubes({tube}, ellery::SelectMode::Replace);
    m_map->ensureVisible(tube);
    m_map->setCursorTube(tube);
    const ellery::TubeAddress found = sg[tube].address;
    m_prompts->status(messages::kTubeFound, sg.tubeName(found.row, found.col, found.sec));
}

void DBase::goToNextPart()
{
    const std::initializer_list<QWidget *> parts = {m_map, &m_side->legendView(), m_mainBar->firstButton(),
                                                    m_viewBar->findField()};
    const QWidget *focus = focusWidget();
    const auto holdsFocus = [focus](const QWidget *part) {
        return part == focus || part->isAncestorOf(focus) ||
               (qobject_cast<const QToolButton *>(part) && focus && part->parentWidget()->isAncestorOf(focus));
    };
    auto next = std::find_if(parts.begin(), parts.end(), holdsFocus);
    for (size_t tried = 0; tried < parts.size(); ++tried) {
        next = next == parts.end() || next + 1 == parts.end() ? parts.begin() : next + 1;
        if ((*next)->isVisible() && (*next)->isEnabled()) {
            (*next)->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
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
    m_tubeShown = tube;
    const ellery::SteamGen &sg = m_session->project().steamGen;
    if (tube < 0 || tube >= sg.numTube()) {
        m_tubeText->clear();
        return;
    }
    const ellery::TubeAddress address = sg[tube].address;
    QStringList parts{sg.tubeName(address.row, address.col, address.sec)};
    if (!tubes().isOpen(tube))
        parts << QString(QChar(tubes().symbol(tube))) << tipLines(tube);
    m_tubeText->setText(parts.join(u"   "));
}

} // namespace app
