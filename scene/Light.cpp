#include "scene/Light.h"

#include <utility>

namespace belvor {

namespace {

// Each kind of light once, for a single normal and for a block of them.

Colour parallelLight(const Vector<3>& forward, const Colour& colour, const Vector<3>& normal) noexcept
{
    const double against = -dot(forward, normal);
    const double factor = against > 0.0 ? against : 0.0;
    return {colour[0] * factor, colour[1] * factor, colour[2] * factor};
}

Colour ambientLight(const Colour& ground, const Colour& halfDifference, const Vector<3>& normal) noexcept
{
    const double upward = 1.0 + normal[2];   // 0 facing down, 2 facing up
    return {ground[0] + upward * halfDifference[0], ground[1] + upward * halfDifference[1],
            ground[2] + upward * halfDifference[2]};
}

template <class LightOf>
void addAll(ColourBlock& sums, const CoordinateBlock& normals, LightOf lightOf) noexcept
{
    for (std::size_t i = 0; i < CoordinateBlock::size; ++i) {
        const Colour more = lightOf(Vector<3>(normals.x[i], normals.y[i], normals.z[i]));
        for (std::size_t channel = 0; channel < 3; ++channel) sums.channels[channel][i] += more[channel];
    }
}

}   // namespace

ParallelLight::ParallelLight(double azimuth, double elevation, const Colour& intensity) noexcept
    : frame(azimuth, elevation),
      colour(intensity)
{}

Colour ParallelLight::illuminate(const Vector<3>& normal) const noexcept
{
    return parallelLight(frame.forward, colour, normal);
}

void ParallelLight::addTo(ColourBlock& sums, const CoordinateBlock& normals) const noexcept
{
    addAll(sums, normals, [forward = frame.forward, own = colour](const Vector<3>& normal) {
        return parallelLight(forward, own, normal);
    });
}

AmbientLight::AmbientLight(const Colour& sky, const Colour& groundLight) noexcept : ground(groundLight)
{
    for (std::size_t i = 0; i < 3; ++i) halfDifference[i] = (sky[i] - groundLight[i]) * 0.5;
}

Colour AmbientLight::illuminate(const Vector<3>& normal) const noexcept
{
    return ambientLight(ground, halfDifference, normal);
}

void AmbientLight::addTo(ColourBlock& sums, const CoordinateBlock& normals) const noexcept
{
    addAll(sums, normals, [below = ground, half = halfDifference](const Vector<3>& normal) {
        return ambientLight(below, half, normal);
    });
}

void LightSet::set(std::size_t index, Handle<Light> light)
{
    if (index >= slots.size()) slots.resize(index + 1);
    slots[index] = std::move(light);
}

Handle<Light> LightSet::get(std::size_t index) const noexcept
{
    return index < slots.size() ? slots[index] : Handle<Light>();
}

Colour LightSet::illuminate(const Vector<3>& normal) const noexcept
{
    Colour sum{};
    for (const Handle<Light>& light : slots) {
        if (!light) continue;
        const Colour more = light->illuminate(normal);
        for (std::size_t i = 0; i < 3; ++i) sum[i] += more[i];
    }
    return sum;
}

void LightSet::illuminate(const CoordinateBlock& normals, ColourBlock& sums) const noexcept
{
    sums = {};
    for (const Handle<Light>& light : slots)
        if (light) light->addTo(sums, normals);
}

}   // namespace belvor
