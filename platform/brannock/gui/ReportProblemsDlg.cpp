#include "ReportProblemsDlg.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <tarnwick/FileWriter.h>
#include <tarnwick/gui/JTableWin.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace brannock {

namespace {

constexpr FileChooserInfo kProblemChooser{u"temp", u"All Files (*.*)", u".csv", u"Problems (*.csv)"};

enum Column { File, Line, Entry, Field, Kind, Text, kColumns };

QString summaryOf(const QList<FileOutcome> &files)
{
    qint64 entries = 0;
    qint64 stored = 0;
    for (const FileOutcome &file : files) {
        entries += file.entries;
        stored += file.stored;
    }
    QStringList kinds;
    for (const auto &[kind, count] : countProblems(files))
        kinds.append(u"%1: %L2"_s.arg(kind).arg(count));
    const QString numbers = format(u"%D of %D entries would be stored.", stored, entries);
    return numbers + u'\n' + (kinds.isEmpty() ? u"There are no problems."_s : kinds.join(u", "_s));
}

} // namespace

class ReportProblemsDlg::Rows : public GridSource
{
public:
    struct Row
    {
        int file;
        const ReportProblem *problem;
    };

    explicit Rows(const QList<FileOutcome> &files)
    {
        for (int i = 0; i < files.size(); ++i) {
            m_names.append(QFileInfo(files[i].file).fileName());
            m_tips.append(QDir::toNativeSeparators(files[i].file));
            for (const ReportProblem &problem : files[i].problems)
                m_rows.push_back({i, &problem});
        }
    }
    const Row &at(int row) const { return m_rows[size_t(row)]; }

    int rowCount() const override { return int(m_rows.size()); }
    int columnCount() const override { return kColumns; }
    GridColumn column(int column) const override
    {
        static constexpr struct
        {
            const char16_t *title;
            int width;
        } kTitles[] = {{u"FILE", 20}, {u"LINE", 7}, {u"ENTRY", 7}, {u"FIELD", 12}, {u"KIND", 18}, {u"PROBLEM", 60}};
        GridColumn result;
        result.title = QString::fromUtf16(kTitles[column].title);
        result.width = kTitles[column].width;
        result.align = column == Line || column == Entry ? ColumnAlign::Right : ColumnAlign::Left;
        return result;
    }
    QVariant value(int row, int column) const override
    {
        const int number = column == Line ? at(row).problem->line : column == Entry ? at(row).problem->entry : 0;
        if (column == Line || column == Entry)
            return number > 0 ? QVariant(number) : QVariant();
        return text(row, column);
    }
    QString text(int row, int column) const override
    {
        const auto &[file, problem] = at(row);
        switch (column) {
        case File:
            return m_names[file];
        case Line:
        case Entry: {
            const int number = column == Line ? problem->line : problem->entry;
            return number > 0 ? QString::number(number) : QString();
        }
        case Field:
            return problem->field;
        case Kind:
            return problem->kind;
        default:
            return problem->text;
        }
    }
    QString tip(int row, int column) const override
    {
        return column == File ? m_tips[at(row).file] : text(row, column);
    }

private:
    QStringList m_names;
    QStringList m_tips;
    std::vector<Row> m_rows;
};

ReportProblemsDlg::ReportProblemsDlg(const QList<FileOutcome> &files, UserPrompts &prompts, FileChoice &choice,
                                     const PathRoots &roots, QWidget *parent)
    : JDialog(prompts, nullptr, u"reportProblemsDlg"_s, parent)
    , m_files(files)
    , m_choice(choice)
    , m_roots(roots)
    , m_rows(std::make_unique<Rows>(m_files))
    , m_table(new JTableWin(prompts))
{
    auto *summary = new QLabel(summaryOf(files));
    summary->setObjectName(u"summary"_s);
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    body().addWidget(summary);
    m_table->setObjectName(u"problems"_s);
    m_table->setAccessibleName(u"Problems"_s);
    m_table->setEntryColumn(u"#"_s, 6);
    m_table->setSource(m_rows.get());
    body().addWidget(m_table, 1);
    const auto choose = [this] {
        if (const int row = m_table->currentSourceRow(); row >= 0) {
            const Rows::Row &chosen = m_rows->at(row);
            Q_EMIT problemChosen(chosen.file, chosen.problem->line, chosen.problem->entry);
        }
    };
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, choose);
    connect(m_table, &JTableWin::clicked, this, choose);
    connect(m_table, &JTableWin::rowActivated, this, choose);
    auto *row = new QHBoxLayout;
    addButton(*row, u"&Save ..."_s, u"saveButton"_s, u"Store the problems as a CSV file"_s, [this] { save(); });
    row->addStretch(1);
    body().addLayout(row);
    buttons().setStandardButtons(QDialogButtonBox::Close);
    finish(m_table, {900, 400});
}

ReportProblemsDlg::~ReportProblemsDlg()
{
    m_table->setSource(nullptr);
}

void ReportProblemsDlg::save()
{
    const QString path = m_choice.saveFile(kProblemChooser, u"Save Problems"_s, m_roots, u"problems.csv"_s);
    if (path.isEmpty())
        return;
    writeFileAtomically(path, problemsAsCsv(m_files));
    showMessage(u"Stored \"%1\"."_s.arg(QDir::toNativeSeparators(path)));
}

} // namespace brannock
