#include "scene/Light.h"

#include <utility>

namespace belvor {

ParallelLight::ParallelLight(double azimuth, double elevation, const Colour& intensity) noexcept
    : frame(azimuth, elevation),
      colour(intensity)
{}

Colour ParallelLight::illuminate(const Vector<3>& normal) const noexcept
{
    const double against = -dot(frame.forward, normal);
    const double factor = against > 0.0 ? against : 0.0;
    return {colour[0] * factor, colour[1] * factor, colour[2] * factor};
}

AmbientLight::AmbientLight(const Colour& sky, const Colour& groundLight) noexcept : ground(groundLight)
{
    for (std::size_t i = 0; i < 3; ++i) halfDifference[i] = (sky[i] - groundLight[i]) * 0.5;
}

Colour AmbientLight::illuminate(const Vector<3>& normal) const noexcept
{
    const double upward = 1.0 + normal[2];   // 0 facing down, 2 facing up
    return {ground[0] + upward * halfDifference[0], ground[1] + upward * halfDifference[1],
            ground[2] + upward * halfDifference[2]};
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

}   // namespace belvor
