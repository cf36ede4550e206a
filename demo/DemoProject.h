#pragma once
#include <brannock/Project.h>
#include <QString>
#include <tarnwick/Progress.h>

namespace demo {

enum class Kind {
    Recirculating, ///< U-bend tubes, a half-round bundle
    OnceThrough    ///< straight tubes, a round bundle divided into sections
};

/// What kind of project to make. The same options give the same files, byte for byte.
struct DemoOptions
{
    Kind kind = Kind::Recirculating;
    /// About so many tubes; 0: some 3,400 in 46 rows and 94 columns, once-through some 15,500.
    int tubes = 0;
    /// Exactly so many results over all outages, texts of the present one included; 0: as many as full inspections
    /// give.
    qint64 entries = 0;
    int outages = 3;
    /// Sections of the tubesheet; 0: none, once-through 4.
    int sections = 0;
    quint64 seed = 1;
    /// Pitch of the U-bend bundle; the once-through bundle is always triangular.
    bool triangular = false;

    static constexpr int kLeastTubes = 10;
    static constexpr int kMostTubes = 100'000;
    static constexpr qint64 kMostEntries = 20'000'000;
    static constexpr int kMostOutages = 12;
    static constexpr int kMostSections = 12;
};

/// The project as it would be made in that folder, without a file of it: component, outages, users, probes.
brannock::Project inventProject(const DemoOptions &options, const QString &folder);

/// Makes a project of invented data: project.json, the component, reports of the earlier outages (reports\*.rep), text
/// reports of the present outage in two layouts (foreign, foreign2) with the specs that read them (report_formats),
/// queries, tube lists and plans.
///
/// The folder must not exist, or be empty. Throws tarnwick::Error for options out of range, tarnwick::FileError, and
/// tarnwick::Cancelled; what was made until then is removed.
void makeProject(const DemoOptions &options, const QString &folder, tarnwick::Progress *progress = nullptr);

} // namespace demo
