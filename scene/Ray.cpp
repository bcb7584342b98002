#include "scene/Ray.h"

#include "calcore/Angle.h"

namespace belvor {

struct Ray::Sines {
    Sines(double azimuth, double elevation) noexcept
        : sinA(Angle::degrees(azimuth).sin()),
          cosA(Angle::degrees(azimuth).cos()),
          sinE(Angle::degrees(elevation).sin()),
          cosE(Angle::degrees(elevation).cos())
    {}
    double sinA, cosA, sinE, cosE;
};

Ray::Ray(double azimuth, double elevation) noexcept : Ray(Sines(azimuth, elevation)) {}

Ray::Ray(const Sines& s) noexcept
    : right(-s.cosA, -s.sinA, 0.0),
      up(-s.sinA * s.sinE, s.cosA * s.sinE, s.cosE),
      forward(s.sinA * s.cosE, -s.cosA * s.cosE, s.sinE)
{}

}   // namespace belvor
