#include "Infos.h"

namespace fenwright {

namespace {
constexpr int kSiteInfoVersion = 1;
}

void SiteInfo::serialize(tarnwick::JFile &file)
{
    file.version(kSiteInfoVersion);
    for (QString *text : {&siteCode, &siteName, &unit, &compCode, &compName, &model, &outage})
        file.serialize(*text);
}

} // namespace fenwright
