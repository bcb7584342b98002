#include "imagefile/ImageComparison.h"

#include "text/JsonText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace belvor {
namespace {

/// Beyond what two readings of one parameter file differ by.
constexpr double rounding = 1e-9;

bool areClose(const Vector<3>& a, const Vector<3>& b, double size) noexcept
{
    return (a - b).length() <= rounding * size;
}

/// A point that does not depend on the depth range, as that follows from the model.
Vector<3> placeOf(const CameraRecord& camera) noexcept
{
    return camera.kind == 0 ? camera.eye.vector() : camera.eye.vector() - camera.far * camera.forward;
}

bool sameCamera(const CameraRecord& a, const CameraRecord& b) noexcept
{
    const double size = 1.0 + placeOf(a).length() + std::max(std::abs(a.far), std::abs(b.far));
    return a.kind == b.kind && areClose(placeOf(a), placeOf(b), size) && areClose(a.right, b.right, 1.0)
           && areClose(a.up, b.up, 1.0) && areClose(a.forward, b.forward, 1.0)
           && areClose(a.firstPixel, b.firstPixel, size) && areClose(a.lastPixel, b.lastPixel, size);
}

}   // namespace

Text ImageComparison::obstacle(const ImageHeader& a, const ImageHeader& b)
{
    if (a.width != b.width || a.height != b.height || a.firstRow() != b.firstRow()
        || a.wholeHeight() != b.wholeHeight())
        return Text::sizesDiffer;
    return sameCamera(a.camera, b.camera) ? Text::none : Text::camerasDiffer;
}

ImageComparison::ImageComparison(const ImageHeader& a, const ImageHeader& b)
    : width(a.width),
      height(a.height),
      scaleA(a.camera),
      scaleB(b.camera),
      sameScale(a.camera.near == b.camera.near && a.camera.far == b.camera.far),
      slack(rounding * std::max(std::abs(a.camera.far), std::abs(b.camera.far))),
      counts(1),
      ofA(countsOf(a)),
      ofB(countsOf(b)),
      bits(static_cast<std::size_t>(a.width)),
      left(a.width),
      top(a.height)
{}

std::vector<std::uint32_t> ImageComparison::countsOf(const ImageHeader& image)
{
    std::vector<std::uint32_t> byNumber(65536);
    for (const ImageMaterial& material : image.materials) {
        const auto [entry, isNew] = indices.emplace(material.name, static_cast<std::uint32_t>(counts.size()));
        if (isNew) counts.push_back({material.name});
        byNumber[material.number] = entry->second;
    }
    return byNumber;
}

/// A code stands for distances from its own up to that of the next code.
bool ImageComparison::distancesDiffer(std::uint32_t a, std::uint32_t b) const noexcept
{
    if (sameScale || a == noDepthCode || b == noDepthCode) return a != b;
    const double ofPixelA = scaleA.distance(a), ofPixelB = scaleB.distance(b);
    return ofPixelA > ofPixelB + scaleB.step() + slack || ofPixelB > ofPixelA + scaleA.step() + slack;
}

std::span<const std::uint8_t> ImageComparison::compareRow(int row, const OmbrReader& a, const OmbrReader& b)
{
    for (std::size_t i = 0; i < bits.size(); ++i) {
        Count& inA = counts[ofA[a.material()[i]]];
        Count& inB = counts[ofB[b.material()[i]]];
        ++inA.inA;
        ++inB.inB;
        bits[i] = 0;
        if (!std::equal(&a.rgb()[3 * i], &a.rgb()[3 * i] + 3, &b.rgb()[3 * i])) bits[i] |= colourDiffers;
        if (distancesDiffer(a.depth()[i], b.depth()[i])) bits[i] |= distanceDiffers;
        if (&inA != &inB) bits[i] |= materialDiffers;
        if (bits[i] != 0) note(row, static_cast<int>(i), bits[i], inA, inB);
    }
    return bits;
}

void ImageComparison::note(int row, int column, std::uint8_t what, Count& a, Count& b)
{
    ++anyCount;
    colourCount += (what & colourDiffers) != 0;
    distanceCount += (what & distanceDiffers) != 0;
    materialCount += (what & materialDiffers) != 0;
    ++a.differing;
    if (&a != &b) ++b.differing;
    left = std::min(left, column);
    right = std::max(right, column);
    top = std::min(top, row);
    bottom = std::max(bottom, row);
}

std::string ImageComparison::toJson() const
{
    JsonText json;
    json.beginObject().key("width").value(width).key("height").value(height).key("differ").beginObject();
    json.key("colour").value(colourCount).key("distance").value(distanceCount);
    json.key("material").value(materialCount).key("any").value(anyCount).endObject().key("box");
    if (anyCount == 0) json.null();
    else json.beginList().value(left).value(top).value(right).value(bottom).endList();
    json.key("materials").beginList();
    for (const Count& count : counts) {
        if (count.inA == 0 && count.inB == 0) continue;
        json.beginObject().key("name");
        if (&count == counts.data()) json.null();
        else json.value(count.name);
        json.key("a")
            .value(count.inA)
            .key("b")
            .value(count.inB)
            .key("differ")
            .value(count.differing)
            .endObject();
    }
    return json.endList().endObject().text();
}

}   // namespace belvor
