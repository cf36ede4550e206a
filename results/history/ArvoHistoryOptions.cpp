#include "ArvoHistoryOptions.h"

namespace results {

using namespace Qt::StringLiterals;
using tarnwick::JFile;

namespace {

constexpr int kFileVersion = 1;
constexpr int kElementVersion = 1;
// Fixed parts of an element: version, byte counts of texts, numbers and flags.
constexpr int kSmallestOutage = 12;
constexpr int kSmallestDefect = 28;

void serializeOutage(JFile &file, OutageChoice &choice)
{
    file.version(kElementVersion);
    file.serialize(choice.outage);
    file.serialize(choice.keep);
}

void serializeDefect(JFile &file, DefectChoice &choice)
{
    file.version(kElementVersion);
    file.serialize(choice.code);
    file.serialize(choice.count);
    file.serialize(choice.volts);
    file.serialize(choice.percent);
    file.serialize(choice.keep);
}

} // namespace

ArvoHistoryOptions::ArvoHistoryOptions()
    : OptionFile(u"config\\arvo\\history.opt"_s, u"ARVO History Options"_s, kFileVersion)
{
    ArvoHistoryOptions::resetToDefaults();
}

void ArvoHistoryOptions::resetToDefaults()
{
    historyFile = u"history\\palomine\\project.hst"_s;
    filter = {};
}

void ArvoHistoryOptions::serializeBody(JFile &file, int)
{
    file.serialize(historyFile);
    filter.serialize(file);
}

void HistoryFilter::serialize(JFile &file)
{
    auto number = qint32(mode);
    file.serialize(number);
    if (number < qint32(OutageMode::LatestSelected) || number > qint32(OutageMode::All))
        file.fail(u"the outage mode %1 does not exist"_s.arg(number));
    mode = OutageMode(number);
    file.list(outages, kSmallestOutage, serializeOutage);
    file.list(defects, kSmallestDefect, serializeDefect);
}

} // namespace results
