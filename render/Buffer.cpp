#include "render/Buffer.h"

namespace belvor {

Buffer::Buffer(int width) : surfaces(width) {}

void Buffer::clear() { surfaces.clear(); }

void Buffer::scanFacets(std::span<const ActiveFacet> active, const Camera& camera)
{
    surfaces.scanFacets(active, *facets, camera);
}

void Buffer::addLines(const LineRow& lineRow) noexcept
{
    if (lineRow.empty()) return;
    const std::span<std::uint32_t> owners = surfaces.owners();
    const std::span<double> depths = surfaces.depths();
    for (std::size_t i = 0; i < owners.size(); ++i) {
        if (lineRow.place(i) == LineRow::noPlace) continue;
        owners[i] = firstLine + lineRow.place(i);
        depths[i] = lineRow.depth(i);
    }
}

}   // namespace belvor
