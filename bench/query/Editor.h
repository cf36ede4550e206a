#pragma once
#include <bench/SideBySide.h>
#include <bench/SilentPrompts.h>
#include <db/DatabaseSession.h>
#include <QTemporaryDir>
#include <query/dialogs/SQLDlg.h>
#include <tarnwick/FileChoice.h>

namespace bench {

inline constexpr qint64 kMillion = 1'000'000;

/// Rows in table order, and in the order of histories.
extern const QString kTableSql;
extern const QString kHistorySql;
/// Fifteen columns as an engineer looks at them.
extern const QString kExportSql;

class NoFiles : public tarnwick::FileChoice
{
public:
    QString openFile(const tarnwick::FileChooserInfo &, const QString &, const tarnwick::PathRoots &) override
    {
        return {};
    }
    QStringList openFiles(const tarnwick::FileChooserInfo &, const QString &, const tarnwick::PathRoots &) override
    {
        return {};
    }
    QString saveFile(const tarnwick::FileChooserInfo &, const QString &, const tarnwick::PathRoots &,
                     const QString &) override
    {
        return {};
    }
};

/// A project with so many rows in table 'report', and what queries need of a program.
class Project
{
public:
    explicit Project(qint64 rows);

    query::QueryEditor::Setup setup();

    QString path;
    QTemporaryDir folder;
    SilentPrompts prompts;
    db::DatabaseSession session{prompts};
    query::QueryContext context;
    NoFiles files;
};

/// The SQL editor, shown without a screen.
class Editor
{
public:
    explicit Editor(Project &project);

    /// EXECUTE. Returns the time until the first rows of this run were painted.
    Spent execute(const QString &sql);
    query::SQLDlg &dialog() { return *m_dialog; }

private:
    std::unique_ptr<query::SQLDlg> m_dialog;
};

/// Sets counters NAME_ms and NAME_cpu_ms: medians of the times.
void setTimes(benchmark::State &state, const std::string &name, const std::vector<Spent> &times);

} // namespace bench
