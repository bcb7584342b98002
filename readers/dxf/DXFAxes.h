#pragma once

#include "calcore/Transform.h"
#include "readers/dxf/DXFRecord.h"

namespace belvor {

/// The object coordinate system that an extrusion direction stands for, by the arbitrary
/// axis rule: flat entities give their points in it.
class DXFAxes {
public:
    DXFAxes() noexcept = default;   // the world's own axes
    /// A direction of any length; the zero vector counts as +z.
    explicit DXFAxes(const Vector<3>& extrusion) noexcept;
    /// Groups 210, 220, 230; without a 210 the world's axes. Throws BadFile.
    static DXFAxes of(const DXFRecord& record);

    Point<3> toWorld(const Point<3>& p) const noexcept
    {
        if (world) return p;
        return Point<3>::origin() + (xAxis * p[0] + yAxis * p[1] + zAxis * p[2]);
    }
    UniformTransform<3> toWorld() const noexcept { return UniformTransform<3>::zxAxes(zAxis, xAxis); }

    const Vector<3>& x() const noexcept { return xAxis; }
    const Vector<3>& y() const noexcept { return yAxis; }
    const Vector<3>& z() const noexcept { return zAxis; }

private:
    Vector<3> xAxis{1, 0, 0}, yAxis{0, 1, 0}, zAxis{0, 0, 1};
    bool world = true;
};

}   // namespace belvor
