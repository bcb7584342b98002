#pragma once

#include "calcore/Point.h"
#include "platform/Handle.h"
#include "scene/Material.h"
#include "scene/Ray.h"

#include <cstddef>
#include <vector>

namespace belvor {

/// A source of light. Intensities have 1.0 for full and may exceed it. Never changed after
/// construction.
class Light : public TSHandlable {
public:
    /// The light that reaches a surface with this unit normal, model coordinates.
    virtual Colour illuminate(const Vector<3>& normal) const noexcept = 0;
};

/// Light from a direction, as from the sun.
class ParallelLight : public Light {
public:
    /// The light travels along the direction of `azimuth` and `elevation`, degrees.
    ParallelLight(double azimuth, double elevation, const Colour& intensity) noexcept;
    Colour illuminate(const Vector<3>& normal) const noexcept override;

private:
    Ray frame;
    Colour colour;
};

/// Light from all around: the sky's from above, the ground's from below.
class AmbientLight : public Light {
public:
    AmbientLight(const Colour& sky, const Colour& ground) noexcept;
    Colour illuminate(const Vector<3>& normal) const noexcept override;

private:
    Colour ground, halfDifference;
};

/// The lights of a scene by number; a slot may be empty.
class LightSet : public TSHandlable {
public:
    LightSet() { slots.reserve(20); }
    /// Puts `light` into slot `index`, growing the list with empty slots.
    void set(std::size_t index, Handle<Light> light);
    /// The light of a slot; none for an empty slot or an index beyond the list.
    Handle<Light> get(std::size_t index) const noexcept;
    /// The sum of all lights, without an upper limit.
    virtual Colour illuminate(const Vector<3>& normal) const noexcept;

private:
    std::vector<Handle<Light>> slots;
};

}   // namespace belvor
