#pragma once

#include "render/Sharing.h"

#include <cstdint>
#include <string>

namespace belvor::test {

/// A hash of the image files of the scenes 0 to `count` − 1, drawn by threads as in `sharing`. The scenes
/// are random, from fixed seeds: facets small and large, concave, through the eye's plane, cameras
/// and lights from angles. `path` is a file to write again and again, removed at the end. Every
/// build, compiler and processor gives the same hash.
std::uint64_t hashOfScenes(int count, const Sharing& sharing, const std::string& path);

/// Numbers of threads, by the vectors of this processor and by those that any processor of the build has.
inline const Sharing kindsOfSharing[] = {
    {1, 8}, {2, 8}, {3, 8}, {8, 8}, {1, 8, fillFacets}, {3, 8, fillFacets}};

/// Of 200 scenes.
constexpr int sceneCount = 200;
constexpr std::uint64_t knownHash = 0xb404c9f7ab963c50u;

}   // namespace belvor::test
