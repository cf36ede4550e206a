#pragma once
#include <QString>
#include <tarnwick/JFile.h>

namespace fenwright {

/// Site, component and outage.
struct SiteInfo
{
    QString siteCode;
    QString siteName;
    QString unit;
    QString compCode;
    QString compName;
    QString model;
    QString outage;

    /// True if site code and component code are not empty.
    bool isValid() const { return !siteCode.isEmpty() && !compCode.isEmpty(); }
    /// Record version 1, then the seven texts in the order above.
    void serialize(tarnwick::JFile &file);
    bool operator==(const SiteInfo &) const = default;
};

/// The probe used for an entry. size in thousandths of an inch.
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
