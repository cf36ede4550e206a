#include "ArvoOptions.h"

namespace query {

using namespace Qt::StringLiterals;

namespace {

constexpr int kVersion = 2;
constexpr int kFirstVersionWithFormat = 2;
constexpr tarnwick::PrintMargins kMargins{0.5, 0.5, 0.5, 0.5};

void serializeTab(tarnwick::JFile &file, ArvoOptions::TubeInfoTab &tab)
{
    file.version(1);
    file.serialize(tab.name);
    file.serialize(tab.sql);
}

} // namespace

ArvoOptions::ArvoOptions(int projectFormat)
    : OptionFile(u"config\\arvo\\arvo.opt"_s, u"ARVO Options"_s, kVersion)
    , m_projectFormat(projectFormat)
{
    ArvoOptions::resetToDefaults();
}

void ArvoOptions::setProjectFormat(int year)
{
    m_projectFormat = year;
    if (m_isWithoutFormat)
        databaseFormat = year;
}

void ArvoOptions::resetToDefaults()
{
    m_isWithoutFormat = false;
    margins = kMargins;
    drawTitleRect = drawLegendRect = drawMapRect = true;
    databaseFormat = kDefaultFormat;
    watermarkColour = tarnwick::ColourRef(0xC0C0C0);
    mapColour = tarnwick::ColourRef(0xD0FFFD);
    fillColour = tarnwick::ColourRef(0x000000);
    tickColour = tarnwick::ColourRef(0x000080);
    selectColour = tarnwick::ColourRef(0x00FF00);
    displayTickSize = 8;
    printTickSize = 7;
    tubeInfoTabs.clear();
    userMacros.clear();
    recentDatabases.clear();
    recentMaps.clear();
}

void ArvoOptions::serializeBody(tarnwick::JFile &file, int version)
{
    constexpr int kSmallestTab = 12;
    margins.serialize(file);
    for (bool *flag : {&drawTitleRect, &drawLegendRect, &drawMapRect})
        file.serializeByte(*flag);
    m_isWithoutFormat = version < kFirstVersionWithFormat;
    if (!m_isWithoutFormat)
        file.serialize(databaseFormat);
    else
        databaseFormat = m_projectFormat;
    for (tarnwick::ColourRef *colour : {&watermarkColour, &mapColour, &selectColour, &fillColour, &tickColour})
        file.serialize(*colour);
    file.serialize(displayTickSize);
    file.serialize(printTickSize);
    file.list(tubeInfoTabs, kSmallestTab, serializeTab);
    userMacros.serialize(file);
    file.serialize(recentDatabases);
    file.serialize(recentMaps);
}

} // namespace query
