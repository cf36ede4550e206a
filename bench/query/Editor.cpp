#include "Editor.h"

#include <bench/ReportTable.h>
#include <query/dialogs/JQueryWin.h>
#include <query/dialogs/QueryPage.h>

#include <algorithm>
#include <optional>
#include <QCoreApplication>
#include <QEvent>

namespace bench {

using namespace Qt::StringLiterals;

const QString kTableSql = u"SELECT * FROM report"_s;
const QString kHistorySql = u"SELECT * FROM report\n"
                            u"ORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC"_s;
const QString kExportSql = u"SELECT sec, row, col, defect, volts, phase, pcnt, chan, loc_land, loc_off, outage, "
                           u"cal_num, analyst_id, entry_time, file_name FROM report"_s;

Project::Project(qint64 rows)
    : path(reportDatabase(rows))
{
    context.roots = {folder.path(), folder.path()};
    context.roots.makeInstallationFolders();
    session.open(path, dao::OpenMode::ReadOnly);
}

query::QueryEditor::Setup Project::setup()
{
    return {.session = session,
            .context = context,
            .steamGen = resultsProject().steamGen,
            .files = files,
            .optionsName = u"sql"_s,
            .hasTransaction = true};
}

Editor::Editor(Project &project)
    : m_dialog(std::make_unique<query::SQLDlg>(query::SQLDlg::Setup{
          .editor = project.setup(), .mode = query::TableMode::Edit, .isFull = true, .parent = nullptr}))
{
    m_dialog->show();
    QCoreApplication::processEvents();
}

namespace {

/// Notes when rows of another run have been painted.
class FirstPaint : public QObject
{
public:
    explicit FirstPaint(query::JQueryWin &table)
        : m_table(table)
        , m_before(table.result().runNumber())
        , m_start(now())
    {
        table.viewport()->installEventFilter(this);
    }
    bool eventFilter(QObject *viewport, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || m_table.result().runNumber() == m_before ||
            m_table.grid().rowCount() == 0)
            return false;
        viewport->removeEventFilter(this);
        QCoreApplication::sendEvent(viewport, event); // paints
        m_painted = now();
        return true;
    }
    Spent spent() const
    {
        if (!m_painted)
            qFatal("no rows were painted");
        return {m_painted->wall - m_start.wall, m_painted->cpu - m_start.cpu};
    }

private:
    query::JQueryWin &m_table;
    quint64 m_before;
    Spent m_start;
    std::optional<Spent> m_painted;
};

double medianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

Spent Editor::execute(const QString &sql)
{
    m_dialog->page().sql().setSql(sql);
    FirstPaint paint(m_dialog->page().table());
    m_dialog->execute();
    QCoreApplication::processEvents();
    return paint.spent();
}

void setTimes(benchmark::State &state, const std::string &name, const std::vector<Spent> &times)
{
    constexpr double kMilliseconds = 1000;
    std::vector<double> wall;
    std::vector<double> cpu;
    for (const Spent &one : times) {
        wall.push_back(one.wall * kMilliseconds);
        cpu.push_back(one.cpu * kMilliseconds);
    }
    state.counters[name + "_ms"] = medianOf(wall);
    state.counters[name + "_cpu_ms"] = medianOf(cpu);
}

} // namespace bench
