#include "ReportProblems.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <tarnwick/CsvLine.h>

#include <algorithm>

namespace brannock {

using namespace Qt::StringLiterals;

QList<std::pair<QString, int>> countProblems(const QList<FileOutcome> &files)
{
    QHash<QString, int> numbers;
    for (const FileOutcome &file : files)
        for (const ReportProblem &problem : file.problems)
            ++numbers[problem.kind];
    QList<std::pair<QString, int>> counts;
    for (auto each = numbers.cbegin(); each != numbers.cend(); ++each)
        counts.append({each.key(), each.value()});
    std::sort(counts.begin(), counts.end(), [](const auto &left, const auto &right) {
        return left.second != right.second ? left.second > right.second : left.first < right.first;
    });
    return counts;
}

QByteArray problemsAsCsv(const QList<FileOutcome> &files)
{
    const auto number = [](int value) { return value == 0 ? QString() : QString::number(value); };
    QString text = tarnwick::csvLine({u"FILE"_s, u"LINE"_s, u"ENTRY"_s, u"FIELD"_s, u"KIND"_s, u"PROBLEM"_s});
    for (const FileOutcome &file : files)
        for (const ReportProblem &problem : file.problems)
            text += tarnwick::csvLine(
                {file.file, number(problem.line), number(problem.entry), problem.field, problem.kind, problem.text});
    return text.toUtf8();
}

QByteArray outcomesAsJson(const QList<FileOutcome> &files)
{
    QJsonArray all;
    for (const FileOutcome &file : files) {
        QJsonArray problems;
        for (const ReportProblem &problem : file.problems)
            problems.append(QJsonObject{{u"line"_s, problem.line},
                                        {u"entry"_s, problem.entry},
                                        {u"field"_s, problem.field},
                                        {u"kind"_s, problem.kind},
                                        {u"text"_s, problem.text}});
        all.append(QJsonObject{{u"file"_s, file.file},
                               {u"entries"_s, file.entries},
                               {u"stored"_s, file.stored},
                               {u"skipped"_s, file.skipped},
                               {u"problems"_s, problems}});
    }
    return QJsonDocument(QJsonObject{{u"files"_s, all}}).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace brannock
