#pragma once

#include "calcore/CoordinateBlock.h"
#include "calcore/Point.h"
#include "platform/Handle.h"
#include "scene/Material.h"
#include "scene/Ray.h"

#include <cstddef>
#include <vector>

namespace belvor {

/// Colours channel by channel, one for each normal of a block.
struct ColourBlock {
    double channels[3][CoordinateBlock::size];
};

/// A source of light. Intensities have 1.0 for full and may exceed it. Never changed after
/// construction.
class Light : public TSHandlable {
public:
    /// The light that reaches a surface with this unit normal, model coordinates.
    virtual Colour illuminate(const Vector<3>& normal) const noexcept = 0;
    /// Adds to each sum what illuminate() gives for its normal, the same to the last bit.
    virtual void addTo(ColourBlock& sums, const CoordinateBlock& normals) const noexcept = 0;
};

/// Light from a direction, as from the sun.
class ParallelLight : public Light {
public:
    /// The light travels along the direction of `azimuth` and `elevation`, degrees.
    ParallelLight(double azimuth, double elevation, const Colour& intensity) noexcept;
    Colour illuminate(const Vector<3>& normal) const noexcept override;
    void addTo(ColourBlock& sums, const CoordinateBlock& normals) const noexcept override;

private:
    Ray frame;
    Colour colour;
};

/// Light from all around: the sky's from above, the ground's from below.
class AmbientLight : public Light {
public:
    AmbientLight(const Colour& sky, const Colour& ground) noexcept;
    Colour illuminate(const Vector<3>& normal) const noexcept override;
    void addTo(ColourBlock& sums, const CoordinateBlock& normals) const noexcept override;

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
    /// The same of many normals, the same to the last bit.
    void illuminate(const CoordinateBlock& normals, ColourBlock& sums) const noexcept;

private:
    std::vector<Handle<Light>> slots;
};

}   // namespace belvor
