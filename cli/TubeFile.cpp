#include "TubeFile.h"

#include <conversion/TextSource.h>
#include <plans/QueryFill.h>
#include <QDir>
#include <QFileInfo>
#include <query/Messages.h>
#include <query/PlainText.h>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>

namespace cli {

using namespace Qt::StringLiterals;

QString placeToWrite(const Target &target, const QString &argument)
{
    const QString path = target.pathOf(argument);
    if (const QDir folder = QFileInfo(path).absoluteDir(); !folder.exists())
        throw tarnwick::Error(u"The folder %1 does not exist."_s.arg(folder.path()));
    return path;
}

void checkTubesEnding(const QString &argument)
{
    if (QFileInfo(argument).suffix().compare("csv"_L1, Qt::CaseInsensitive) != 0)
        throw UsageError(u"--tubes needs a name that ends in .csv."_s);
}

void writeTubes(const Target &target, const QString &argument, const QString &text)
{
    tarnwick::writeFileAtomically(placeToWrite(target, argument), text.toUtf8());
}

namespace {

/// Index of the tube that a line names, or -1. hasNumber: the line begins with the number of the entry.
int tubeOfLine(const ellery::SteamGen &steamGen, const QString &line, bool hasNumber)
{
    QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    if (hasNumber && !words.isEmpty())
        words.removeFirst();
    const qsizetype axes = steamGen.hasSections() ? 3 : 2;
    if (words.size() < axes)
        return -1;
    const int sec = steamGen.hasSections() ? steamGen.stringToSec(words.takeFirst()) : 0;
    return steamGen.findTube(
        ellery::TubeAddress::of(sec, steamGen.stringToRow(words[0]), steamGen.stringToCol(words[1])));
}

/// The line with a blank for each character that cannot be printed.
QString printable(QStringView line)
{
    QString text = line.toString();
    for (QChar &character : text) {
        if (!character.isPrint() && !character.isSurrogate())
            character = u' ';
    }
    return text;
}

/// "row=2 col=999": how a record names its tube.
QString addressIn(const plans::QueryRecords &records, int record)
{
    static const QStringList names{u"sec"_s, u"row"_s, u"col"_s};
    QStringList parts;
    for (int column = 0; column < records.columnCount(); ++column) {
        const QString &name = records.columnName(column);
        if (names.contains(name, Qt::CaseInsensitive))
            parts.append(name + u'=' + query::plainText(records.value(record, column)));
    }
    return parts.join(u' ');
}

} // namespace

QList<qint32> readTubeList(Target &target, const QString &argument)
{
    const QString path = target.pathOf(argument);
    const conversion::TextSource file(path);
    const ellery::SteamGen &steamGen = target.project().steamGen;
    const bool hasNumbers = QFileInfo(path).suffix().compare("lst"_L1, Qt::CaseInsensitive) == 0;
    QList<qint32> tubes;
    std::vector<bool> taken(size_t(steamGen.numTube()));
    for (int i = 0; i < file.lineCount(); ++i) {
        const QString line = printable(file.line(i));
        if (line.trimmed().isEmpty() || line.startsWith(u'#') || line.startsWith(u'!'))
            continue;
        const int tube = tubeOfLine(steamGen, line, hasNumbers);
        if (tube < 0) {
            printError(
                u"warning: line %1 of the list: tube \"%2\" does not exist\n"_s.arg(i + 1).arg(line.simplified()));
        } else if (!taken[size_t(tube)]) {
            taken[size_t(tube)] = true;
            tubes.append(tube);
        }
    }
    return tubes;
}

std::optional<query::QueryDocument> readQuery(Target &target, const QString &argument)
{
    query::QueryDocument document;
    const auto read = [&] { query::readQueryFile(document, target.pathOf(argument), target.project().roots()); };
    if (!tarnwick::attempt(target.prompts(), read, query::messages::kReadFile))
        return std::nullopt;
    return document;
}

std::optional<QList<qint32>> runTubeQuery(Target &target, const query::QueryDocument &query)
{
    const auto records = target.fillRunner().queries().run(query.name, query.sql);
    if (!records)
        return std::nullopt;
    plans::QueryFill fill;
    fill.parameters.query = query;
    const ellery::TubeStates unmarked;
    plans::FillResult result;
    QStringList missing;
    const auto pick = [&] {
        result = fill.pick({target.project().steamGen, unmarked, records.get()});
        for (const int record : std::as_const(result.recordsWithoutTube))
            missing.append(addressIn(*records, record));
    };
    if (!tarnwick::attempt(target.prompts(), pick, query::messages::kExecute))
        return std::nullopt;
    for (const plans::FillRemark &remark : std::as_const(result.remarks)) {
        if (remark.kind == plans::FillRemark::Kind::Error) {
            target.prompts().showError(tarnwick::kErrorSeverity, remark.number, remark.text);
            return std::nullopt;
        }
    }
    for (qsizetype i = 0; i < missing.size(); ++i)
        printError(
            u"warning: record %1 of the query: tube \"%2\" does not exist\n"_s.arg(result.recordsWithoutTube[i] + 1)
                .arg(missing[i]));
    return result.tubes;
}

} // namespace cli
