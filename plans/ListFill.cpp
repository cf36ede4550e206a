#include "ListFill.h"

#include "Messages.h"

#include <tarnwick/Paths.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

constexpr int kOwnVersion = 2;
constexpr int kTubeVersion = 2;
constexpr int kSmallestTube = 4 + 3 * 2;

} // namespace

void ListFillTube::serialize(tarnwick::JFile &file)
{
    const int version = file.version(kTubeVersion);
    file.serialize(row);
    file.serialize(col);
    file.serialize(sec);
    if (version >= 2) {
        file.serialize(entryNum);
        mark.serialize(file);
    }
}

ListFill::ListFill()
{
    typeKey = u"LIST FILL"_s;
}

QString ListFill::className() const
{
    return u"ListFill"_s;
}

void ListFill::serialize(tarnwick::JFile &file, int version)
{
    MapFill::serialize(file, version);
    const int own = file.version(kOwnVersion);
    file.serialize(parameters.name);
    file.list(parameters.entries, kSmallestTube, [](tarnwick::JFile &f, ListFillTube &tube) { tube.serialize(f); });
    if (own >= 2)
        file.serialize(parameters.description);
}

FillResult ListFill::pick(const FillInput &input) const
{
    FillResult result;
    result.fillCount = qint32(parameters.entries.size());
    std::vector<bool> taken(size_t(input.component.numTube()));
    bool invalid = false;
    for (const ListFillTube &entry : parameters.entries) {
        const int tube = input.component.findTube(entry.address());
        if (tube < 0) {
            invalid = true;
        } else if (!taken[size_t(tube)]) {
            result.tubes.append(tube);
            taken[size_t(tube)] = true;
        }
    }
    result.tubes.squeeze();
    if (invalid)
        result.remarks.append(remark(FillRemark::Kind::Error, messages::kListTubesMissing));
    return result;
}

QString ListFill::entryLabel() const
{
    const QString file = tarnwick::SuitePath(parameters.name).fileName();
    return file.isEmpty() ? undoLabel() : file;
}

QString ListFill::undoLabel() const
{
    return u"List Fill"_s;
}

ListFillOptions::ListFillOptions()
    : OptionFile(u"config\\arvo\\list_fill.opt"_s, u"ListFill Options"_s, 1)
{
}

void ListFillOptions::serializeBody(tarnwick::JFile &file, int)
{
    file.serialize(fileFilter);
    file.serializeByte(fileHasEntryNumbers);
}

void ListFillOptions::resetToDefaults()
{
    fileFilter = 0;
    fileHasEntryNumbers = false;
}

} // namespace plans
