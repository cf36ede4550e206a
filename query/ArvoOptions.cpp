#include "ArvoOptions.h"

namespace query {

using namespace Qt::StringLiterals;

namespace {

constexpr int kVersion = 2;
constexpr int kFirstVersionWithFormat = 2;

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
    page = {};
    map = {};
    databaseFormat = kDefaultFormat;
    tubeInfoTabs.clear();
    userMacros.clear();
    recentDatabases.clear();
    recentMaps.clear();
}

void ArvoOptions::serializeBody(tarnwick::JFile &file, int version)
{
    constexpr int kSmallestTab = 12;
    page.serialize(file);
    m_isWithoutFormat = version < kFirstVersionWithFormat;
    if (!m_isWithoutFormat)
        file.serialize(databaseFormat);
    else
        databaseFormat = m_projectFormat;
    map.serialize(file);
    file.list(tubeInfoTabs, kSmallestTab, serializeTab);
    userMacros.serialize(file);
    file.serialize(recentDatabases);
    file.serialize(recentMaps);
}

} // namespace query
