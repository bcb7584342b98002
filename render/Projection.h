#pragma once

#include "scene/Camera.h"

#include <cstddef>
#include <cstdint>

namespace belvor {

/// Projects the points `first` to `end` − 1, at most a block of them, which `pointAt` gives by their indices.
/// `block` then holds them too. Whether all are numbers and lie in front of the eye.
template <class PointAt>
bool projectPoints(const Camera& camera, std::size_t first, std::size_t end, PointAt pointAt,
                   Point<3>* projected, CoordinateBlock& block)
{
    const std::size_t count = end - first;
    for (std::size_t i = 0; i < count; ++i) {
        const Point<3>& position = pointAt(static_cast<std::uint32_t>(first + i));
        block.x[i] = position[0];
        block.y[i] = position[1];
        block.z[i] = position[2];
    }
    camera.project(block);
    bool inFront = true;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = block.x[i], y = block.y[i], depth = block.z[i];
        projected[first + i] = {x, y, depth};
        inFront &= x == x && y == y && depth < 0.0;
    }
    return inFront;
}

}   // namespace belvor
