#include "PatternFill.h"

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

bool PatternFill::pick(const ellery::SteamGen &steamGen, const ellery::TubeStates &states)
{
    const Parameters &p = parameters;
    tubes.clear();
    fillCount = 0;
    if (p.rowIncrement < 1 || p.colIncrement < 1)
        return false;
    const QList<int> &order = steamGen.sortRowCol();
    for (qsizetype i = 0; i < order.size(); ++i) {
        const ellery::TubeAddress address = steamGen[order[i]].address;
        if (!isOnGrid(address.row, p.firstRow, p.rowIncrement))
            continue;
        const bool isLast = i + 1 == order.size() || steamGen[order[i + 1]].address.row != address.row;
        const bool isTaken = (p.includeFirstTube && address.col == 1) || (p.includeLastTube && isLast) ||
                             isOnGrid(address.col, p.firstCol, p.colIncrement);
        if (isTaken && p.filter.accepts(states, order[i]))
            tubes.append(order[i]);
    }
    tubes.squeeze();
    fillCount = qint32(tubes.size());
    return true;
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
