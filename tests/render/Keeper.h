#pragma once

#include "errors/Reporter.h"
#include "render/Buffer.h"
#include "render/Frame.h"
#include "scene/Camera.h"
#include "scene/Light.h"

#include <gtest/gtest.h>

#include <array>
#include <ios>
#include <limits>
#include <ostream>
#include <vector>

namespace belvor::test {

/// All that a sink is given of a pixel.
struct Pixel {
    std::uint32_t owner = Buffer::noFacet;   // a facet; none for a line
    bool line = false;
    double depth = std::numeric_limits<double>::max();
    std::array<std::uint8_t, 3> colour{};
    std::uint16_t material = 0;
    friend bool operator==(const Pixel&, const Pixel&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Pixel& p)
    {
        return out << (p.line ? "line" : "facet ") << p.owner << " at " << std::hexfloat << p.depth << " of "
                   << p.material << ", " << int{p.colour[0]} << ' ' << int{p.colour[1]} << ' '
                   << int{p.colour[2]};
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
        auto& pixels = image.emplace_back(width());
        for (int i = 0; i < width(); ++i) {
            if (owner(i) == noFacet) continue;
            const bool line = hasLines() && isLine(owner(i));
            pixels[static_cast<std::size_t>(i)] = {line ? noFacet : owner(i), line, depth(i),
                                                   colour(owner(i)), material(owner(i))};
        }
    }

private:
    Image& image;
};

inline Image drawn(Frame& frame, const Model& model, const Camera& camera, const LightSet& lights,
                   const LineStyle& style = {})
{
    Image image;
    SilentReporter silent;
    frame.render(model, camera, lights, *makeHandle<Keeper>(static_cast<int>(camera.width), image), silent,
                 style);
    return image;
}

/// The first pixel in which two images of one size differ is told.
inline void expectSame(const Image& fast, const Image& slow, int seed)
{
    ASSERT_EQ(fast.size(), slow.size());
    for (std::size_t y = 0; y < slow.size(); ++y)
        for (std::size_t x = 0; x < slow[y].size(); ++x)
            ASSERT_EQ(fast[y][x], slow[y][x]) << "seed " << seed << ", pixel (" << x << ", " << y << ")";
}

}   // namespace belvor::test
