#include "ReportConversion.h"

#include "FieldCutter.h"
#include "LineConverter.h"
#include "MemoryCheck.h"
#include "Messages.h"

#include <brannock/ReportLog.h>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <tarnwick/Failures.h>
#include <tarnwick/Format.h>
#include <tarnwick/StringToValue.h>

namespace conversion {

using namespace Qt::StringLiterals;
using brannock::ReportEntry;

ReportConversion::ReportConversion(const brannock::Project &project)
    : m_project(project)
{
}

void ReportConversion::convertFile(const QString &machinePath, tarnwick::Progress *progress)
{
    TextSource text(machinePath);
    convert(text, progress);
    m_text = std::move(text);
}

void ReportConversion::convertAgain(tarnwick::Progress *progress)
{
    convert(m_text, progress);
}

void ReportConversion::convert(const TextSource &text, tarnwick::Progress *progress)
{
    auto restoring = qScopeGuard([this, promptsBefore = prompts, specBefore = spec] {
        prompts = promptsBefore;
        spec.assignSettings(specBefore);
    });
    Remarks remarks;
    applyFilenameFields(text.path(), remarks);
    constexpr qint64 kTexts = 200; // those that differ from line to line
    requireMemory(text.path(), text.lineCount() * (qint64(sizeof(ReportEntry)) + kTexts), u"Converting it"_s);
    QList<ReportEntry> entries;
    entries.reserve(text.lineCount());
    LineConverter converter(m_project, spec, prompts, remarks, text.path());
    tarnwick::ProgressLoop loop(progress, text.lineCount(), QFileInfo(text.path()).fileName());
    for (int i = 0; i < text.lineCount(); ++i) {
        loop.tick(i);
        const QStringView line = text.line(i);
        if (line.isEmpty())
            continue;
        ReportEntry &entry = entries.emplaceBack();
        converter.convert(i + 1, line, entry);
        entry.textLine = i + 1;
    }
    m_report.clear();
    m_report.entries = std::move(entries);
    m_remarks = std::move(remarks);
    restoring.dismiss();
}

QString ReportConversion::pathPart(const QString &machinePath, int part)
{
    const QFileInfo file(QFileInfo(machinePath).absoluteFilePath());
    switch (FilenamePart(part)) {
    case FilenamePart::Directory:
        return file.dir().dirName();
    case FilenamePart::Filename:
        return file.completeBaseName();
    case FilenamePart::Extension:
        return file.suffix();
    }
    return {};
}

// A name that has something else in these columns, such as a date, must not become the number of a cal: the report
// could not be read again, and several texts would meet in one report file.
void ReportConversion::applyCal(const QString &value, const QString &machinePath, Remarks &remarks)
{
    constexpr int kLeast = ConversionPrompts::kLeastCal;
    constexpr int kMost = ConversionPrompts::kMostCal;
    const int cal = tarnwick::leadingInteger(value);
    const bool isUsable = ConversionPrompts::isCal(cal);
    if (isUsable)
        prompts.cal = cal;
    if (!isUsable || !tarnwick::string_to_value<qint32>(value)) {
        remarks.add(
            machinePath, 0,
            tarnwick::format(u"the cal \"%S\" of the file's path is not a whole number from %d to %d; %d is used",
                             value, kLeast, kMost, prompts.cal),
            u"cal of the file name"_s);
    }
}

void ReportConversion::applyFilenameFields(const QString &machinePath, Remarks &remarks)
{
    for (ConvField &field : spec.filenameFields)
        field.value = cutColumns(pathPart(machinePath, field.part), field.firstColumn, field.lastColumn).toString();
    for (const ConvField &field : std::as_const(spec.filenameFields)) {
        switch (FilenameFieldType(field.type)) {
        case FilenameFieldType::Cal:
            applyCal(field.value, machinePath, remarks);
            break;
        case FilenameFieldType::OperType:
            prompts.operType = spec.mapOperType(field.value);
            break;
        case FilenameFieldType::Analyst:
            break; // an analyst in the file name has no effect
        }
    }
}

int ReportConversion::lineOfEntry(const brannock::Report &report, int entry)
{
    const int line = entry >= 0 && entry < report.numEntry() ? report[entry].textLine : 0;
    return line > 0 ? line : -1;
}

// The entries are in the order of their lines; those that the user has inserted have no line.
int ReportConversion::entryOfLine(const brannock::Report &report, int line)
{
    if (line <= 0)
        return -1;
    int low = 0;
    int high = report.numEntry();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        int place = middle;
        while (place < high && report[place].textLine == 0)
            ++place;
        if (place < high && report[place].textLine == line)
            return place;
        if (place < high && report[place].textLine < line)
            low = place + 1;
        else
            high = middle;
    }
    return -1;
}

tarnwick::SuitePath ReportConversion::target() const
{
    const QString name = tarnwick::format(u"%05d_%S.rep", prompts.cal, prompts.operType);
    return tarnwick::SuitePath(u"reports\\"_s + tarnwick::validFileName(name));
}

void ReportConversion::fill(QList<ReportEntry> &entries) const
{
    const tarnwick::JDateTime time = prompts.dateTime.isNull() ? tarnwick::JDateTime::now() : prompts.dateTime;
    const QString outage = m_project.outageName();
    const auto isIncomplete = [](const fenwright::UserInfo &user) { return !user.isValid(); };
    for (ReportEntry &entry : entries) {
        if (entry.isHeader())
            continue;
        if (entry.calNumber < 0)
            entry.calNumber = prompts.cal;
        if (entry.sec < 0)
            entry.sec = prompts.sec;
        if (!entry.site.isValid())
            entry.site = m_project.site;
        if (entry.outage.isEmpty())
            entry.outage = outage;
        if (!entry.probe.isValid()) {
            entry.probe.type = prompts.probe;
            entry.probe.serialNumber = prompts.serialNumber;
        }
        if (isIncomplete({entry.analystId, {}}))
            entry.analystId = prompts.analyst;
        if (isIncomplete({entry.operatorId, {}}))
            entry.operatorId = prompts.operatorId;
        if (entry.operType.isEmpty())
            entry.operType = prompts.operType;
        if (entry.entryTime.isNull())
            entry.entryTime = time;
    }
}

StoreResult ReportConversion::store(tarnwick::UserPrompts &user, bool isDryRun)
{
    const tarnwick::SuitePath path = target();
    const QString machinePath = path.machinePath(m_project.roots());
    if (QFileInfo::exists(machinePath) &&
        user.question(tarnwick::Buttons::YesNo, messages::kOverwrite, path.text()) != tarnwick::Answer::Yes)
        return StoreResult::Declined;
    if (isDryRun)
        return StoreResult::Stored;
    fill(m_report.entries);
    m_report.storeReport(machinePath, 1);
    m_report.path = machinePath;
    user.status(messages::kStored, path.text());
    noteStored(user);
    return StoreResult::Stored;
}

void ReportConversion::noteStored(tarnwick::UserPrompts &user) const
{
    if (m_project.folder.isEmpty())
        return;
    const auto note = [this] {
        const brannock::ReportLog log(m_project.folder);
        brannock::ReportLog::Entry entry;
        entry.id = log.begin(u"conversion"_s, m_text.path());
        entry.state = brannock::ReportLog::Entry::State::Stored;
        for (const ReportEntry &each : m_report.entries)
            entry.entries += each.isResult() ? 1 : 0;
        entry.stored = entry.entries;
        entry.problems = m_remarks.count();
        log.end(entry);
    };
    tarnwick::attempt(user, note, messages::kCouldNotLog);
}

} // namespace conversion
