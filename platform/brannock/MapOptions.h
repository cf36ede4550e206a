#pragma once
#include <tarnwick/ColourRef.h>
#include <tarnwick/JTablePrintArg.h>

namespace brannock {

/// Appearance of the tubesheet map on the screen and on paper.
struct MapOptions
{
    static constexpr int kSmallestTick = 4; ///< in points
    static constexpr int kLargestTick = 20;

    tarnwick::ColourRef mapColour{0xD0FFFD};  ///< the tubesheet itself
    tarnwick::ColourRef fillColour{0x000000}; ///< lines of tubes, stay rods and the tubesheet's edge
    tarnwick::ColourRef tickColour{0x000080};
    tarnwick::ColourRef selectColour{0x00FF00};
    tarnwick::ColourRef watermarkColour{0xC0C0C0};
    qint32 displayTickSize = 8; ///< in points, as stored; paint with displayTick()
    qint32 printTickSize = 7;   ///< in points, as stored; paint with printTick()

    /// Tick sizes within the limits, whatever the file holds.
    int displayTick() const;
    int printTick() const;

    /// The five colours and the two tick sizes.
    void serialize(tarnwick::JFile &file);
    bool operator==(const MapOptions &) const = default;
};

/// The printed page around the map.
struct PageOptions
{
    static constexpr double kLargestMargin = 5.0; ///< in inches
    static constexpr double kMarginStep = 0.05;

    tarnwick::PrintMargins margins{0.5, 0.5, 0.5, 0.5};
    bool drawTitleRect = true;
    bool drawLegendRect = true;
    bool drawMapRect = true;

    /// The four margins and the three flags, one byte each.
    void serialize(tarnwick::JFile &file);
    bool operator==(const PageOptions &) const = default;
};

} // namespace brannock
