#pragma once
#include <brannock/MapOptions.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/OptionFile.h>

namespace query {

/// The program's options, edited in one dialog and kept in one file.
class ArvoOptions : public tarnwick::OptionFile
{
public:
    /// A query whose rows the tube dialog shows in a tab.
    struct TubeInfoTab
    {
        QString name;
        QString sql;
        bool operator==(const TubeInfoTab &) const = default;
    };

    /// projectFormat: format of new databases, used for option files of version 1, which do not hold it.
    explicit ArvoOptions(int projectFormat = kDefaultFormat);

    static constexpr qint32 kDefaultFormat = 2002;
    brannock::PageOptions page;
    brannock::MapOptions map;
    qint32 databaseFormat = kDefaultFormat; ///< 1997, 2000 or 2002
    QList<TubeInfoTab> tubeInfoTabs;
    tarnwick::JMacro userMacros;
    /// Paths in the suite's form, most recent first.
    QStringList recentDatabases;
    QStringList recentMaps;

    /// Sets the format for option files of version 1. May be called before or after loading.
    void setProjectFormat(int year);

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;

private:
    int m_projectFormat;
    bool m_isWithoutFormat = false; ///< loaded from a file of version 1
};

} // namespace query
