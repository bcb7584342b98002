#pragma once

#include <cstdint>
#include <string>

namespace belvor::test {

/// A hash of the image files of the scenes 0 to `count` − 1, drawn by `threads` threads. The scenes
/// are random, from fixed seeds: facets small and large, concave, through the eye's plane, cameras
/// and lights from angles. `path` is a file to write again and again, removed at the end. Every
/// build, compiler and processor gives the same hash.
std::uint64_t hashOfScenes(int count, unsigned threads, const std::string& path);

/// Of 200 scenes.
constexpr int sceneCount = 200;
constexpr std::uint64_t knownHash = 0xb404c9f7ab963c50u;

}   // namespace belvor::test
