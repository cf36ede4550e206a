#pragma once
#include <gmock/gmock.h>
#include <plans/MapFill.h>
#include <plans/QuerySource.h>
#include <support/Printers.h>

namespace plans {

/// A component of a few tubes with their states.
struct TestBundle
{
    ellery::SteamGen component;
    ellery::TubeStates tubes;
    QList<FillRemark> remarks; ///< of the last computation

    /// Rows 1 to rows, columns 1 to cols, pitch 1, in each of the sections from 0.
    explicit TestBundle(int rows = 4, int cols = 5, int sections = 1)
    {
        QList<ellery::Tube> list;
        for (int sec = 0; sec < sections; ++sec) {
            for (int row = 1; row <= rows; ++row) {
                for (int col = 1; col <= cols; ++col)
                    list.append({{qint16(sec), qint16(row), qint16(col)}, float(col + sec * 100), float(row), false});
            }
        }
        setTubes(list);
    }
    void setTubes(const QList<ellery::Tube> &list)
    {
        component.setTubes(list);
        tubes = ellery::TubeStates(component.numTube());
    }
    int tube(int row, int col) const { return tube(0, row, col); }
    int tube(int sec, int row, int col) const { return component.findTube(ellery::TubeAddress::of(sec, row, col)); }
    /// Picks and takes.
    void compute(MapFill &fill, const QueryRecords *records = nullptr)
    {
        const FillResult result = fill.pick({component, tubes, records});
        fill.take(result);
        remarks = result.remarks;
    }
};

} // namespace plans
