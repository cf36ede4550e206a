#pragma once
#include <QByteArray>
#include <QList>
#include <QString>

namespace brannock {

/// A problem in a file of results, found before or while its entries are stored.
struct ReportProblem
{
    int line = 0;  ///< of a text file, from 1; 0: none
    int entry = 0; ///< position in the report, from 1; 0: the whole file
    QString field; ///< name of the field in report files; empty: none
    QString kind;  ///< a few words: "unknown tube"
    QString text;  ///< a sentence

    bool operator==(const ReportProblem &) const = default;
};

/// What an upload or a conversion did with one file, or would do with it. entries = stored + skipped.
struct FileOutcome
{
    QString file;
    int entries = 0; ///< results in the file
    int stored = 0;
    int skipped = 0; ///< not stored, for any reason
    QList<ReportProblem> problems;
};

/// Number of problems of each kind, the most frequent first.
QList<std::pair<QString, int>> countProblems(const QList<FileOutcome> &files);

/// One line per problem below a line of titles: FILE,LINE,ENTRY,FIELD,KIND,PROBLEM. Numbers that are 0 are empty.
QByteArray problemsAsCsv(const QList<FileOutcome> &files);
/// {"files":[{"file","entries","stored","skipped","problems":[{"line","entry","field","kind","text"}]}]}
QByteArray outcomesAsJson(const QList<FileOutcome> &files);

} // namespace brannock
