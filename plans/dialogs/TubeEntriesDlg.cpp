#include "TubeEntriesDlg.h"

#include <tarnwick/AskToSave.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/MovingRows.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace plans {

TubeEntriesDlg::TubeEntriesDlg(const DialogSetup &setup, const EntriesKind &kind, EntriesEditor &editor, TubeGrid &grid)
    : JDialog(setup.session.prompts(), &kind.commands, QString::fromUtf16(kind.dialogName), setup.parent)
    , m_setup(setup)
    , m_kind(kind)
    , m_editor(editor)
    , m_grid(grid)
    , m_table(new JTableWin(prompts()))
    , m_order(new QComboBox)
    , m_summary(new QLabel)
    , m_printing(prompts(), this)
{
    commands().setConditions([this](int condition) { return whyNot(condition); });
    bindFiles();
    bindRows();
    bindDatabase();
}

void TubeEntriesDlg::releaseGrid()
{
    m_table->setSource(nullptr);
}

QString TubeEntriesDlg::whyNot(int condition) const
{
    if (condition == Connected && !m_setup.session.isOpen())
        return u"Connect to a database first."_s;
    if (condition == AnyEntry && m_grid.rowCount() == 0)
        return u"The %1 has no tubes."_s.arg(m_kind.noun);
    if (condition == AnySymbol && m_setup.tubes.symbolCount() == 0)
        return u"No tube on the map carries a symbol."_s;
    if (condition == AnySelected && m_setup.tubes.selectedCount() == 0)
        return u"No tubes are selected on the map."_s;
    return {};
}

void TubeEntriesDlg::bindFiles()
{
    commands().bind(OpenEntries, [this] {
        if (!mayReplace())
            return;
        const QString path = chooseFile();
        if (!path.isEmpty() && m_editor.open(path))
            showEntries();
    });
    commands().bind(SaveEntries, [this] { save(); });
    commands().bind(SaveEntriesAs, [this] { saveAs(); });
    commands().bind(PrintEntries, [this] { print(); });
}

void TubeEntriesDlg::bindRows()
{
    commands().bind(TypeTube, [this] { typeTube(); });
    commands().bind(PasteTubes, [this] { showEntries(m_editor.paste(QGuiApplication::clipboard()->text())); });
    commands().bind(MoveUp, [this] { move(-1); });
    commands().bind(MoveDown, [this] { move(1); });
    commands().bind(AddTubes, [this] { combine(Combine::Add, u"Add Tubes"_s); });
    commands().bind(RemoveTubes, [this] { combine(Combine::Remove, u"Remove Tubes"_s); });
    commands().bind(KeepTubes, [this] { combine(Combine::Intersect, u"Keep Only Tubes"_s); });
    actions().setPart(kTablePart, m_table);
}

void TubeEntriesDlg::bindDatabase()
{
    commands().bind(FetchEntries, [this] { fetch(); });
    commands().bind(UploadEntries, [this] {
        const QString name = m_editor.storedName();
        name.isEmpty() ? uploadAs() : upload(name);
    });
    commands().bind(UploadEntriesAs, [this] { uploadAs(); });
    commands().bind(DeleteEntries, [this] { m_editor.remove(); });
}

void TubeEntriesDlg::makeTitleBar()
{
    const ellery::SteamGen &component = m_editor.component();
    m_order->setObjectName(u"order"_s);
    m_order->addItems(
        {component.axisNames[int(ellery::Axis::Row)], component.axisNames[int(ellery::Axis::Col)], u"ENTRY"_s});
    auto *prompt = new QLabel(u"Order B&y"_s);
    prompt->setBuddy(m_order);
    titleBar().addWidget(prompt);
    titleBar().addWidget(m_order);
    titleBar().addStretch(1);
    connect(m_order, &QComboBox::activated, this, [this](int order) {
        run([this, order] {
            m_editor.setOrder(EntriesEditor::Order(order));
            showEntries();
        });
    });
}

void TubeEntriesDlg::makeTable(int frozenColumns)
{
    constexpr int kVisibleRows = 16;
    m_table->setObjectName(m_kind.tableName);
    m_table->setAccessibleName(QString::fromUtf16(m_kind.tableTitle));
    m_table->setVisibleRows(kVisibleRows);
    m_table->setFrozenColumns(frozenColumns);
    m_table->setSource(&m_grid);
    m_grid.changed = [this] {
        m_table->grid().noteAllChanged();
        showSummary();
        refresh();
    };
    body().addWidget(m_table, 1);
    new RowDragging(*m_table, [this](const QList<int> &rows, int before) { run([&] { moveRows(rows, before); }); });
    m_summary->setObjectName(u"summary"_s);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    body().addWidget(m_summary);
}

void TubeEntriesDlg::finishEntries(const QSize &size)
{
    showEntries();
    finish(m_table, size);
    keepDrafts(m_setup.project.folder, QString::fromUtf16(m_kind.noun));
}

void TubeEntriesDlg::showEntries(int firstRow)
{
    {
        m_isShowing = true;
        const auto end = qScopeGuard([this] { m_isShowing = false; });
        showFields();
        m_order->setCurrentIndex(int(m_editor.order()));
    }
    m_table->reload();
    if (m_grid.rowCount() > 0) {
        m_table->setCurrentSourceRow(m_grid.rowCount() - 1); // so that the row below comes first in sight
        m_table->setCurrentSourceRow(std::clamp(firstRow, 0, m_grid.rowCount() - 1));
    }
    showSummary();
}

void TubeEntriesDlg::showSummary()
{
    m_summary->setText(m_editor.summary());
}

QString TubeEntriesDlg::titled(QStringView verb, QStringView tail) const
{
    return verb + u' ' + QStringView(m_kind.word) + tail;
}

bool TubeEntriesDlg::saveAtOrigin()
{
    return m_editor.isFromFile() ? save() : upload(m_editor.storedName());
}

bool TubeEntriesDlg::mayReplace()
{
    return !m_editor.isModified() ||
           saveOrDiscard(
               prompts(), m_kind.changed, [this] { return saveAtOrigin(); }, m_editor.shownName());
}

bool TubeEntriesDlg::save()
{
    return m_editor.file().isEmpty() ? saveAs() : m_editor.store(m_editor.file());
}

bool TubeEntriesDlg::saveAs()
{
    if (!m_editor.isValid())
        return false;
    const QString path =
        m_setup.files.saveFile(m_kind.chooser, titled(u"Save"), m_setup.project.roots(), m_editor.fileName());
    return !path.isEmpty() && m_editor.store(path);
}

void TubeEntriesDlg::openFile(const QString &machinePath)
{
    run([this, &machinePath] {
        if (mayReplace() && m_editor.open(machinePath))
            showEntries();
    });
}

QString TubeEntriesDlg::chooseFile()
{
    return m_setup.files.openFile(m_kind.chooser, titled(u"Open"), m_setup.project.roots());
}

QString TubeEntriesDlg::chooseName(const QString &title, const QString &initial)
{
    return m_setup.chooseName(m_setup.session,
                              {.title = title,
                               .label = m_kind.word + u" Name"_s,
                               .column = u"name"_s,
                               .table = QString::fromUtf16(m_kind.databaseTable),
                               .initialName = initial},
                              this);
}

bool TubeEntriesDlg::upload(const QString &name)
{
    ProgressDialog progress(this, titled(u"Upload"));
    return m_editor.upload(name, &progress);
}

bool TubeEntriesDlg::uploadAs()
{
    const QString name = chooseName(titled(u"Upload", u" As"), m_editor.offeredName());
    return !name.isEmpty() && upload(name);
}

void TubeEntriesDlg::fetch()
{
    const QString name = chooseName(titled(u"Fetch"), {});
    if (name.isEmpty() || !mayReplace())
        return;
    ProgressDialog progress(this, titled(u"Fetch"));
    if (m_editor.fetch(name, &progress))
        showEntries();
}

void TubeEntriesDlg::combine(Combine how, const QString &title)
{
    const auto tubes = chooseTubes(m_setup, title, this);
    if (!tubes)
        return;
    const int before = m_grid.rowCount();
    m_editor.combine(*tubes, how);
    showEntries(how == Combine::Add ? before : 0);
}

void TubeEntriesDlg::typeTube()
{
    const ellery::SteamGen &component = m_editor.component();
    QStringList axes{component.axisNames[int(ellery::Axis::Row)], component.axisNames[int(ellery::Axis::Col)]};
    if (component.hasSections())
        axes.prepend(component.axisNames[int(ellery::Axis::Sec)]);
    const QString text = QInputDialog::getText(this, u"Type Tube"_s, axes.join(u' '));
    if (!text.trimmed().isEmpty())
        showEntries(m_editor.paste(text));
}

void TubeEntriesDlg::move(int by)
{
    if (const auto [rows, before] = rowsToMove(*m_table, by); !rows.isEmpty())
        moveRows(rows, before);
}

void TubeEntriesDlg::moveRows(const QList<int> &rows, int before)
{
    if (const int first = m_editor.moveEntries(rows, before); first >= 0)
        showMoved(*m_table, first, int(rows.size()));
}

void TubeEntriesDlg::print()
{
    JTablePrintArg layout;
    layout.title = m_kind.printTitle + u" - "_s + m_editor.shownName();
    layout.sections[JTablePrintArg::ReportTitle].text = layout.title + u'\n';
    layout.sections[JTablePrintArg::ReportHeader].text =
        m_editor.summary() + u'\n' + m_editor.description().trimmed() + u'\n';
    layout.sections[JTablePrintArg::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    m_printing.print({*m_table, layout, m_setup.printMacros(), m_editor.shownName()}, TablePrinting::Rows::All);
}

void TubeEntriesDlg::restoreDraft(const QByteArray &content)
{
    m_editor.restoreDraft(content);
    showEntries();
}

QString TubeEntriesDlg::draftName(const QByteArray &content) const
{
    return u"%1 \"%2\""_s.arg(m_kind.noun, m_editor.nameInDraft(content));
}

} // namespace plans
