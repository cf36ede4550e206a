#pragma once
#include <QtGlobal>

namespace demo {

enum class Kind {
    Recirculating, ///< U-bend tubes, semicircular bundle
    OnceThrough    ///< straight tubes, circular bundle divided into sections
};

/// Options of a demo project. The same options always give identical files.
struct DemoOptions
{
    Kind kind = Kind::Recirculating;
    /// Approximate number of tubes; 0: about 3,400 in 46 rows and 94 columns, once-through about 15,500.
    int tubes = 0;
    /// Exact number of results over all outages, including the texts of the present one; 0: as many as full inspections
    /// give.
    qint64 entries = 0;
    int outages = 3;
    /// Number of sections of the tubesheet; 0: none, once-through 4.
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

} // namespace demo
