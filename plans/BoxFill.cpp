#include "BoxFill.h"

#include "UntakenTubes.h"

#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

constexpr int kOwnVersion = 1;

} // namespace

BoxFill::BoxFill()
{
    typeKey = u"BOX"_s;
}

QString BoxFill::className() const
{
    return u"BoxFill"_s;
}

void BoxFill::serialize(tarnwick::JFile &file, int version)
{
    MapFill::serialize(file, version);
    file.version(kOwnVersion);
    file.serialize(parameters.radius);
}

FillResult BoxFill::pick(const FillInput &input) const
{
    FillResult result;
    UntakenTubes untaken(input.component, input.tubes);
    for (const qint32 centre : input.tubes.selection()) {
        const ellery::Tube &tube = input.component[centre];
        result.tubes += untaken.take(double(tube.x), double(tube.y), parameters.radius);
        if (untaken.isEmpty())
            break;
    }
    result.tubes.squeeze();
    result.fillCount = qint32(result.tubes.size());
    return result;
}

QString BoxFill::entryLabel() const
{
    return tarnwick::format(u"Radius %.3f", parameters.radius);
}

QString BoxFill::undoLabel() const
{
    return u"Box Fill"_s;
}

BoxFillOptions::BoxFillOptions()
    : OptionFile(u"config\\arvo\\box_fill.opt"_s, u"BoxFill Options"_s, 1)
{
}

void BoxFillOptions::serializeBody(tarnwick::JFile &file, int)
{
    file.serialize(parameters.radius);
}

void BoxFillOptions::resetToDefaults()
{
    parameters = {};
}

} // namespace plans
