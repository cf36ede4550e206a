#pragma once
#include <QString>
#include <tarnwick/JFile.h>

namespace fenwright {

/// Where and when: the site, the component, the outage.
struct SiteInfo
{
    QString siteCode;
    QString siteName;
    QString unit;
    QString compCode;
    QString compName;
    QString model;
    QString outage;

    /// Site code and component code are there.
    bool isValid() const { return !siteCode.isEmpty() && !compCode.isEmpty(); }
    /// Record version 1, then the seven texts in the order above.
    void serialize(tarnwick::JFile &file);
    bool operator==(const SiteInfo &) const = default;
};

/// The probe an entry was measured with. size in thousandths of an inch.
struct ProbeInfo
{
    QString type; ///< "BOBBIN", "RPC", ...
    QString model;
    int size = 0;
    QString serialNumber;

    bool isValid() const { return !type.isEmpty(); }
    bool operator==(const ProbeInfo &) const = default;
};

/// An analyst or operator.
struct UserInfo
{
    QString id;
    QString name;

    bool isValid() const { return !id.isEmpty(); }
    bool operator==(const UserInfo &) const = default;
};

} // namespace fenwright
