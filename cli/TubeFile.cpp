#include "TubeFile.h"

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

static plans::TubeListFile parseList(Target &target, const QString &argument, bool hasEntryNumbers)
{
    using plans::TubeListFile;
    const QString path = target.pathOf(argument);
    const TubeListFile file =
        TubeListFile::read(path, target.project().steamGen, TubeListFile::hasEntryNumbers(path, hasEntryNumbers));
    for (const plans::ListFillLine &line : file.lines()) {
        const QString words = line.text.toString().simplified();
        if (line.isError() && !words.isEmpty())
            printError(u"warning: line %1 of the list: tube \"%2\" does not exist\n"_s.arg(line.line).arg(words));
    }
    for (const QString &remark : file.remarks())
        printError(u"warning: "_s + remark + u'\n');
    return file;
}

QList<qint32> readTubeList(Target &target, const QString &argument)
{
    QList<qint32> tubes;
    std::vector<bool> taken(size_t(target.project().steamGen.numTube()));
    const plans::TubeListFile file = parseList(target, argument, false);
    for (const plans::ListFillLine &line : file.lines()) {
        if (line.tube < 0 || taken[size_t(line.tube)])
            continue;
        taken[size_t(line.tube)] = true;
        tubes.append(line.tube);
    }
    return tubes;
}

plans::TubeList readList(Target &target, const QString &argument, bool hasEntryNumbers)
{
    const plans::TubeListFile file = parseList(target, argument, hasEntryNumbers);
    plans::TubeList list;
    list.name =
        tarnwick::SuitePath::fromMachine(target.pathOf(argument), target.project().roots()).relativeTo(u"tube_lists"_s);
    list.entries = file.tubes();
    list.description = file.notes();
    return list;
}

bool isStoredName(Target &target, const plans::NamedTables &tables, const QString &argument)
{
    return !QFileInfo::exists(target.pathOf(argument)) && QFileInfo::exists(target.databasePath()) &&
           target.connect(Target::Use::Read) && plans::countNamed(target.session().database(), tables, argument) > 0;
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
