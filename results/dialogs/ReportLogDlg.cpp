#include "ReportLogDlg.h"

#include <tarnwick/FileWriter.h>
#include <tarnwick/GridCopy.h>
#include <tarnwick/gui/JTableWin.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace results {

static constexpr FileChooserInfo kLogChooser{u"temp", u"All Files (*.*)", u".csv", u"Report Log (*.csv)"};

ReportLogDlg::ReportLogDlg(db::DatabaseSession &session, const brannock::Project &project, FileChoice &files,
                           QWidget *parent)
    : JDialog(session.prompts(), nullptr, u"reportLogDlg"_s, parent)
    , m_files(files)
    , m_roots(project.roots())
    , m_grid(brannock::ReportLog(project.folder), session.isOpen() ? &session.database() : nullptr)
    , m_table(new JTableWin(prompts()))
{
    auto *summary = new QLabel(m_grid.summary());
    summary->setObjectName(u"summary"_s);
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    body().addWidget(summary);
    m_table->setObjectName(u"log"_s);
    m_table->setAccessibleName(u"Uploads and conversions"_s);
    m_table->setEntryColumn(u"#"_s, 6);
    m_table->setSource(&m_grid);
    body().addWidget(m_table, 1);
    auto *row = new QHBoxLayout;
    addButton(*row, u"&Filter"_s, u"filterButton"_s, u"Show only the rows with a text, number or date (Ctrl+L)"_s,
              [this] { m_table->action(u"filter"_s)->trigger(); });
    addButton(*row, u"&Save ..."_s, u"saveButton"_s, u"Store the rows that are shown as a CSV file"_s,
              [this] { save(); });
    row->addStretch(1);
    body().addLayout(row);
    buttons().setStandardButtons(QDialogButtonBox::Close);
    finish(m_table, {1120, 500});
}

ReportLogDlg::~ReportLogDlg()
{
    m_table->setSource(nullptr);
}

void ReportLogDlg::save()
{
    const QString path = m_files.saveFile(kLogChooser, u"Save Report Log"_s, m_roots, u"report_log.csv"_s);
    if (path.isEmpty())
        return;
    writeFileAtomically(path, gridAsCsv(m_table->grid()).toUtf8());
    showMessage(u"Stored \"%1\"."_s.arg(QDir::toNativeSeparators(path)));
}

} // namespace results
