#include "TubeDlg.h"

#include "JQueryWin.h"

#include <brannock/gui/ReportEditor.h>
#include <query/Messages.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace query {

namespace {

enum Command : int { Print, Query };

constexpr CommandRow kRows[] = {
    {Print, u"&Print ...\tCtrl+P", u"Print the rows of this tab"},
    {Query, u"&Query ...", u"Show the query of this tab"},
};
constexpr MenuItem kBar[] = {openMenu(u"&File"), menuItem(Print), kCloseMenu, openMenu(u"&View"),
                             menuItem(Query),    kCloseMenu,      kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

QList<GridColumn> historyColumns()
{
    QList<GridColumn> columns;
    for (const auto &[title, width] : {std::pair{u"OUTAGE", 8},
                                       {u"CODE", 6},
                                       {u"VOLTS", 7},
                                       {u"GROWTH", 7},
                                       {u"PCNT", 5},
                                       {u"GROWTH", 7},
                                       {u"LOCATION", 14}}) {
        GridColumn column;
        column.title = QString::fromUtf16(title);
        column.width = width;
        column.align = columns.size() >= 2 && columns.size() < 6 ? ColumnAlign::Right : ColumnAlign::Left;
        columns.append(column);
    }
    return columns;
}

} // namespace

TubeDlg::TubeDlg(const Setup &setup)
    : JDialog(setup.session.prompts(), &kTable, u"tubeDlg"_s, setup.parent)
    , m_setup(setup)
    , m_listings(tubeListings(setup.options, setup.steamGen, setup.tube))
    , m_tabs(new QTabWidget)
    , m_report(new brannock::ReportEditor(prompts(), nullptr, {.isImport = false, .isReadOnly = true}))
    , m_isFilled(m_listings.size(), false)
    , m_history(historyColumns())
    , m_printing(prompts(), this)
{
    commands().bind(Print, [this] { print(); });
    commands().bind(Query, [this] { showQuery(); });
    commands().setText(Query, [this] { return QString(queryTitle() + u" ..."_s); });
    if (!m_setup.repairs.isEmpty()) {
        auto *repairs = new QLabel(m_setup.repairs.join(u'\n'));
        repairs->setObjectName(u"repairs"_s);
        repairs->setTextFormat(Qt::PlainText);
        repairs->setTextInteractionFlags(Qt::TextSelectableByMouse);
        body().addWidget(repairs);
    }
    m_tabs->setObjectName(u"tabs"_s);
    m_tabs->addTab(m_report, m_listings.constFirst().title);
    for (const TubeListing &listing : m_listings.mid(1)) {
        auto *rows = new JQueryWin(setup.session, setup.context, TableMode::Read);
        rows->setAccessibleName(listing.title);
        m_results.append(rows);
        m_tabs->addTab(rows, QString(listing.title).replace(u'&', u"&&"_s));
    }
    if (!m_setup.indications.isEmpty())
        makeHistoryTab();
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int tab) { run([&] { showTab(tab); }); });
    body().addWidget(m_tabs, 1);
    finish(&m_report->table(), {1000, 560});
    run([this] { showTab(0); });
}

TubeDlg::~TubeDlg()
{
    m_tabs->disconnect(this);
    if (m_historyTable)
        m_historyTable->setSource(nullptr);
}

QString TubeDlg::caption() const
{
    return tarnwick::format(u"Tube - %S", m_setup.steamGen.tubeName(m_setup.tube));
}

void TubeDlg::makeHistoryTab()
{
    for (const QStringList &cells : indicationRows(m_setup.indications)) {
        TextRows::Row row;
        row.cells = cells;
        m_history.rows.append(row);
    }
    m_historyTable = new JTableWin(prompts());
    m_historyTable->setObjectName(u"history"_s);
    m_historyTable->setAccessibleName(u"Past outages"_s);
    m_historyTable->setEntryColumn(u"ENTRY"_s, 5, u"%d"_s);
    m_historyTable->setSource(&m_history);
    m_tabs->addTab(m_historyTable, u"Past Outages"_s);
}

const TubeListing *TubeDlg::currentListing() const
{
    const int tab = m_tabs->currentIndex();
    return tab >= 0 && tab < m_listings.size() ? &m_listings[tab] : nullptr;
}

QString TubeDlg::queryTitle() const
{
    const TubeListing *listing = currentListing();
    return tarnwick::format(u"%S Query", listing ? listing->title : m_tabs->tabText(m_tabs->currentIndex()));
}

void TubeDlg::showTab(int tab)
{
    if (tab < 0 || tab >= m_listings.size() || std::exchange(m_isFilled[tab], true))
        return;
    const TubeListing &listing = m_listings[tab];
    if (tab == 0) {
        brannock::Report report;
        if (readTubeReport(m_setup.session, listing.sql, report))
            m_report->setReport(report);
        return;
    }
    JQueryWin &rows = *m_results[tab - 1];
    ProgressDialog progress(this, listing.title);
    bool hasRows = false;
    const auto execute = [&] { hasRows = rows.result().run(listing.title, listing.sql, &progress); };
    attemptCancellable(prompts(), execute, messages::kExecute);
    rows.rebuild();
    m_isFilled[tab] = hasRows; // else the tab tries again when it is shown next
    showMessage(hasRows ? tarnwick::format(messages::kEntries.text, rows.result().rowCount()) : QString());
}

void TubeDlg::showQuery()
{
    const TubeListing *listing = currentListing();
    if (!listing)
        prompts().information(messages::kNoTubeQuery);
    else
        prompts().information(messages::kTubeQuery, listing->title, listing->sql);
}

JMacro TubeDlg::printMacros() const
{
    JMacro macros = m_setup.context.currentSystemMacros();
    macros.merge(m_setup.context.userMacros);
    return macros;
}

void TubeDlg::print()
{
    const int tab = m_tabs->currentIndex();
    const TubeListing *listing = currentListing();
    if (listing && tab > 0) {
        m_results[tab - 1]->print(tubePrintLayout(*listing, false), printMacros(), caption());
        return;
    }
    const TubeListing shown = listing ? *listing : TubeListing{m_tabs->tabText(tab), caption()};
    const JTableWin &table = listing ? m_report->table() : *m_historyTable;
    if (m_printing.print({table, tubePrintLayout(shown, true), printMacros(), caption()}, TablePrinting::Rows::All))
        prompts().status(messages::kReportPrinting);
}

} // namespace query
