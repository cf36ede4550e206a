#include "PatternFill.h"

#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

constexpr int kOwnVersion = 1;

/// Numbers first, first + increment, first + 2 increment, ...
bool isOnGrid(qint64 number, qint64 first, qint64 increment)
{
    return number >= first && (number - first) % increment == 0;
}

} // namespace

void PatternFill::Parameters::serialize(tarnwick::JFile &file)
{
    file.serialize(filter.region);
    file.serialize(filter.tube);
    file.serialize(rowIncrement);
    file.serialize(colIncrement);
    file.serialize(firstRow);
    file.serialize(firstCol);
    file.serializeByte(includeFirstTube);
    file.serializeByte(includeLastTube);
}

PatternFill::PatternFill()
{
    typeKey = u"PATTERN"_s;
}

QString PatternFill::className() const
{
    return u"PatternFill"_s;
}

void PatternFill::serialize(tarnwick::JFile &file, int version)
{
    MapFill::serialize(file, version);
    file.version(kOwnVersion);
    parameters.serialize(file);
}

FillResult PatternFill::pick(const FillInput &input) const
{
    const Parameters &p = parameters;
    const ellery::SteamGen &component = input.component;
    FillResult result;
    if (p.rowIncrement < 1 || p.colIncrement < 1)
        return result;
    const QList<int> &order = component.sortRowCol();
    for (qsizetype i = 0; i < order.size(); ++i) {
        const ellery::TubeAddress address = component[order[i]].address;
        if (!isOnGrid(address.row, p.firstRow, p.rowIncrement))
            continue;
        const bool isLast = i + 1 == order.size() || component[order[i + 1]].address.row != address.row;
        const bool isTaken = (p.includeFirstTube && address.col == 1) || (p.includeLastTube && isLast) ||
                             isOnGrid(address.col, p.firstCol, p.colIncrement);
        if (isTaken && p.filter.accepts(input.tubes, order[i]))
            result.tubes.append(order[i]);
    }
    result.tubes.squeeze();
    result.fillCount = qint32(result.tubes.size());
    return result;
}

QString PatternFill::entryLabel() const
{
    return tarnwick::format(u"Pattern %dx%d", parameters.rowIncrement, parameters.colIncrement);
}

QString PatternFill::undoLabel() const
{
    return u"Pattern Fill"_s;
}

PatternFillOptions::PatternFillOptions()
    : OptionFile(u"config\\arvo\\pattern_fill.opt"_s, u"PatternFill Options"_s, 1)
{
}

void PatternFillOptions::serializeBody(tarnwick::JFile &file, int)
{
    parameters.serialize(file);
}

void PatternFillOptions::resetToDefaults()
{
    parameters = {};
}

} // namespace plans
