#pragma once

#include "imagefile/OmbrReader.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace belvor {

/// How two pictures of one camera differ, pixel by pixel. Materials are told apart by their names.
class ImageComparison {
public:
    /// What of a pixel differs, as bits.
    enum Difference : std::uint8_t { colourDiffers = 1, distanceDiffers = 2, materialDiffers = 4 };

    /// Why pictures cannot be compared; Text::none when they can.
    static Text obstacle(const ImageHeader& a, const ImageHeader& b);

    /// Of comparable pictures. Throws std::bad_alloc.
    ImageComparison(const ImageHeader& a, const ImageHeader& b);

    /// Compares that row, which both readers have read; the bits of each pixel, until the next call.
    std::span<const std::uint8_t> compareRow(int row, const OmbrReader& a, const OmbrReader& b);

    bool anyDiffers() const noexcept { return anyCount != 0; }
    /// The counts as a JSON object on one line.
    std::string toJson() const;

private:
    struct Count {
        std::string name;
        std::uint64_t inA = 0, inB = 0, differing = 0;
    };
    std::vector<std::uint32_t> countsOf(const ImageHeader& image);
    bool distancesDiffer(std::uint32_t a, std::uint32_t b) const noexcept;
    void note(int row, int column, std::uint8_t bits, Count& a, Count& b);

    const int width, height;
    const DepthScale scaleA, scaleB;
    const bool sameScale;
    const double slack;   // of distances, for rounding
    std::map<std::string, std::uint32_t> indices;
    std::vector<Count> counts;             // of no material first
    std::vector<std::uint32_t> ofA, ofB;   // the index in counts, by material number
    std::vector<std::uint8_t> bits;
    std::uint64_t colourCount = 0, distanceCount = 0, materialCount = 0, anyCount = 0;
    int left, top, right = -1, bottom = -1;   // of all pixels that differ
};

}   // namespace belvor
