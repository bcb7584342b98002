#pragma once

#include "render/Buffer.h"

#include <gtest/gtest.h>

#include <ios>
#include <limits>
#include <ostream>
#include <vector>

namespace belvor::test {

struct Pixel {
    std::uint32_t owner = Buffer::noFacet;
    double depth = std::numeric_limits<double>::max();
    friend bool operator==(const Pixel&, const Pixel&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Pixel& pixel)
    {
        return out << "facet " << pixel.owner << " at " << std::hexfloat << pixel.depth;
    }
};
using Image = std::vector<std::vector<Pixel>>;

/// Keeps what the renderer delivers.
class Keeper : public Buffer {
public:
    Keeper(int width, Image& target) : Buffer(width), image(target) {}
    void lineDone(int row) override
    {
        EXPECT_EQ(static_cast<std::size_t>(row), image.size()) << "rows come in order";
        auto& pixels = image.emplace_back();
        for (int i = 0; i < width(); ++i) pixels.push_back({owner(i), depth(i)});
    }

private:
    Image& image;
};

}   // namespace belvor::test
