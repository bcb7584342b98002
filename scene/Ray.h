#pragma once

#include "calcore/Point.h"
#include "platform/Handle.h"

namespace belvor {

/// An orthonormal viewing frame from two angles in degrees. Azimuth 0 and elevation 0 look
/// along −y with +z up; the azimuth turns towards +x. `right` is forward × up.
class Ray : public TSHandlable {
public:
    Ray(double azimuth, double elevation) noexcept;

    const Vector<3> right, up, forward;

private:
    struct Sines;
    explicit Ray(const Sines& sines) noexcept;
};

}   // namespace belvor
