#pragma once

#include "render/Buffer.h"
#include "scene/Model.h"
#include "view/SceneBuilder.h"

#include <cstdint>
#include <string>

namespace belvor::bench {

/// A square hilly terrain of about `triangles` triangles with shared vertices.
Handle<Model> terrain(std::uint32_t triangles);
/// The same with curves of `chords` chords altogether, hundreds each, over and under the hills.
Handle<Model> terrainWithCurves(std::uint32_t triangles, std::uint32_t chords);
/// `boxes` buildings of six quadrilaterals each on a square plot, in 500 materials.
Handle<Model> city(std::uint32_t boxes);
/// `polygons` large polygons of 24 corners, one above the other, each a little tilted.
Handle<Model> stack(std::uint32_t polygons);

/// A terrain as a Things file, which is deleted at the end.
class ThingsFile {
public:
    explicit ThingsFile(std::uint32_t triangles);
    ThingsFile(const ThingsFile&) = delete;
    ThingsFile& operator=(const ThingsFile&) = delete;
    ~ThingsFile();

    const std::string path;
    double size = 0;   // bytes
};

/// The whole model from the usual side, for pictures of that size.
Scene wholeScene(const Model& model, int width, int height);

/// Counts what it is given and keeps nothing.
class CountingBuffer : public Buffer {
public:
    explicit CountingBuffer(int width) : Buffer(width) {}
    void lineDone(int) override
    {
        for (int i = 0; i < width(); ++i) covered += owner(i) != noFacet;
    }
    std::uint64_t covered = 0;
};

}   // namespace belvor::bench
