#include "LegendPart.h"

#include "CommandRunner.h"
#include "FillCommands.h"
#include "LegendModel.h"
#include "LegendView.h"
#include "SidePanel.h"

#include <app/logic/Messages.h>
#include <app/logic/WindowCommandTable.h>

#include <map/TubeText.h>
#include <tarnwick/CommandHandlers.h>

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace app {

LegendPart::LegendPart(map::MapDocument &document, const map::FillRunner &runner, FillCommands &fills, SidePanel &panel,
                       CommandRunner &commands, QObject *parent)
    : QObject(parent)
    , m_document(document)
    , m_prompts(runner.prompts())
    , m_commands(document, runner)
    , m_fills(fills)
    , m_view(panel.legendView())
{
    LegendModel &model = panel.legendModel();
    connect(&model, &LegendModel::showRequested, this, [this, &commands](int place, bool shown) {
        commands.attempt([this, place, shown] { m_commands.setShown(place, shown); });
    });
    connect(&model, &LegendModel::moveRequested, this,
            [this, &commands](int from, int to) { commands.attempt([this, from, to] { move(from, to); }); });
    connect(&model, &LegendModel::renameRequested, this, [this, &commands](int place, const QString &label) {
        commands.attempt([this, place, &label] { m_commands.rename(place, label); });
    });
    connect(&m_view, &LegendView::entryActivated, this,
            [this, &commands](int place) { commands.perform([this, place] { m_fills.edit(place); }); });
    connect(&m_view, &LegendView::symbolRequested, this,
            [this, &commands](int place) { commands.perform([this, place] { m_fills.chooseMark(place); }); });
}

void LegendPart::move(int from, int to)
{
    m_view.setCurrentEntry(m_commands.move(from, to));
}

void LegendPart::bind(tarnwick::CommandHandlers &handlers)
{
    bindEntry(handlers);
    handlers.bind(EntriesAll, [this] { m_commands.showAll(); });
    handlers.bind(EntriesInvert, [this] { m_commands.swapShown(); });
    handlers.bind(DeleteAllEntries, [this] { m_commands.removeAll(); });
    handlers.bind(CopyTubes, [this] { copyTubes(); });
}

void LegendPart::bindEntry(tarnwick::CommandHandlers &handlers)
{
    const auto bind = [this, &handlers](int command, const std::function<void(int)> &work) {
        handlers.bind(command, [this, work] { work(m_view.currentEntry()); });
    };
    bind(EntryEdit, [this](int place) { m_fills.edit(place); });
    bind(EntrySymbol, [this](int place) { m_fills.chooseMark(place); });
    bind(EntryRename, [this](int) { m_view.renameCurrent(); });
    bind(EntryUp, [this](int place) { move(place, place - 1); });
    bind(EntryDown, [this](int place) { move(place, place + 1); });
    bind(EntryDelete, [this](int place) { m_commands.remove(place); });
    bind(EntrySelect, [this](int place) { m_commands.selectTubes(place); });
    bind(EntrySolo, [this](int place) { m_commands.showOnly(place); });
}

void LegendPart::copyTubes()
{
    const map::TubeText text(m_document.component(), map::TubeText::Form::Tabs);
    QString copied;
    if (m_view.hasFocus() && m_view.currentEntry() >= 0)
        copied = text.ofEntry(m_document.entry(m_view.currentEntry()));
    else if (m_document.selection().isEmpty())
        copied = text.ofMap(m_document.entries());
    else
        copied = text.ofTubes(m_document.selection());
    if (copied.isEmpty()) {
        m_prompts.status(messages::kNothingToCopy);
        return;
    }
    QGuiApplication::clipboard()->setText(copied);
    const auto count = int(copied.count(u'\n'));
    m_prompts.status(messages::kCopiedTubes, count == 1 ? u"1 tube"_s : tarnwick::format(u"%D tubes", count));
}

} // namespace app
