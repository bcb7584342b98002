#include "scene/Model.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace belvor {

Model::Model() = default;

namespace {

Point<3> middleOf(const Extent<3>& extent)
{
    Point<3> middle = extent.lo() + (extent.hi() - extent.lo()) * 0.5;
    for (int axis = 0; axis < 3; ++axis)
        if (!std::isfinite(middle[axis])) middle[axis] = extent.lo()[axis] * 0.5 + extent.hi()[axis] * 0.5;
    return middle;
}

/// What the store of edge counts says.
constexpr std::uint8_t fewEdges(std::uint32_t count) noexcept
{
    return count < Model::manyEdges ? static_cast<std::uint8_t>(count) : Model::manyEdges;
}

}   // namespace

/// The points that the bounds are made of.
template <class Visit>
void Model::forEachPoint(Visit visit) const
{
    vertexStore.forEach([&visit](const Vertex& vertex) { visit(vertex.position); });
    if (facetCount() != 0 && !curvesInBounds) return;
    curveStore.forEach([this, &visit](const Curve& curve) {
        for (std::uint32_t i = 0; curve.bounded && i < curve.pointCount; ++i)
            visit(curvePoints[curve.firstPoint + i]);
    });
}

/// The radius where squares are beyond what a number can hold; at most the largest number.
double Model::radiusOfFar(const Point<3>& centre) const
{
    constexpr double half = 0.5, most = std::numeric_limits<double>::max();
    double longest = 0.0;   // component of a spoke, halved so that it is finite
    const auto halfSpoke = [&](const Point<3>& point) {
        return point.vector() * half - centre.vector() * half;
    };
    forEachPoint([&](const Point<3>& point) {
        for (int axis = 0; axis < 3; ++axis) longest = std::max(longest, std::fabs(halfSpoke(point)[axis]));
    });
    if (!(longest <= most)) return most;
    double largest = 0.0;
    forEachPoint([&](const Point<3>& point) {
        const Vector<3> spoke = halfSpoke(point);
        const Vector<3> scaled(spoke[0] / longest, spoke[1] / longest, spoke[2] / longest);
        largest = std::max(largest, dot(scaled, scaled));
    });
    const double size = std::sqrt(largest);
    return size * longest > most * half ? most : size * longest / half;
}

Extent<3> Model::extent() const
{
    Extent<3> box = Extent<3>::nothing();
    forEachPoint([&box](const Point<3>& point) { box += point; });
    return box;
}

void Model::bounds(Point<3>& centre, double& radius) const
{
    const Extent<3> box = extent();
    centre = box.degenerate() ? Point<3>::origin() : middleOf(box);
    double largest = 0.0;   // the root of the largest square is the largest of the roots
    forEachPoint([&largest, middle = centre](const Point<3>& point) {
        const Vector<3> spoke = point - middle;
        largest = std::max(largest, dot(spoke, spoke));
    });
    radius = std::sqrt(largest);
    if (!std::isfinite(radius)) radius = radiusOfFar(centre);
}

void Model::statistics(Statistics& counts) const
{
    counts = {vertexCount(), edgeCount(), facetCount(), static_cast<std::uint32_t>(materialsByKey.size())};
}

Vertex& Model::addVertex(const Point<3>& position) { return vertexStore.append(position); }

Facet& Model::addFacet(const Material& material, const Plane& plane)
{
    edgeCountStore.append(std::uint8_t{0});
    return facetStore.append(plane, &material, edgeCount(), 0u);
}

void Model::addEdge(std::uint32_t from, std::uint32_t to)
{
    edgeStore.append(Edge{from, to});
    const std::uint32_t facet = facetCount() - 1;
    edgeCountStore[facet] = fewEdges(++facetStore[facet].edgeCount);
}

void Model::addFacet(const Material& material, const Plane& plane, std::span<const Edge> edges)
{
    const auto count = static_cast<std::uint32_t>(edges.size());
    edgeCountStore.append(fewEdges(count));
    facetStore.append(plane, &material, edgeCount(), count);
    edgeStore.append(edges);
}

void Model::addVertices(std::span<const Point<3>> positions)
{
    vertexStore.appendAll(static_cast<std::uint32_t>(positions.size()),
                          [positions](std::uint32_t i) { return Vertex{positions[i]}; });
}

void Model::addFacets(const Material& material, std::span<const Plane> planes,
                      std::span<const std::uint8_t> edgeCounts, std::span<const Edge> edges)
{
    const auto count = static_cast<std::uint32_t>(planes.size());
    edgeCountStore.appendAll(count, [edgeCounts](std::uint32_t i) { return edgeCounts[i]; });
    std::uint32_t first = edgeCount();
    facetStore.appendAll(count, [&](std::uint32_t i) {
        return Facet{planes[i], &material, std::exchange(first, first + edgeCounts[i]), edgeCounts[i]};
    });
    edgeStore.append(edges);
}

void Model::addPolygon(const Material& material, const Plane& plane, std::span<const Point<3>> corners)
{
    const auto sides = static_cast<std::uint32_t>(corners.size());
    edgeCountStore.append(fewEdges(sides));
    facetStore.append(plane, &material, edgeCount(), sides);
    edgeStore.appendLoop(vertexCount(), sides);
    const auto addCorners = [this]<std::size_t size>(std::span<const Point<3>, size> loop) {
        vertexStore.appendAll(static_cast<std::uint32_t>(loop.size()),
                              [loop](std::uint32_t i) { return Vertex{loop[i]}; });
    };
    // Nearly all have four corners: told so, the compiler writes the loop out.
    if (corners.size() == 4) addCorners(corners.first<4>());
    else addCorners(corners);
}

void Model::addCurve(const Material* material, std::span<const Point<3>> points, bool bounded)
{
    const std::uint32_t first = curvePoints.size();
    const auto count = static_cast<std::uint32_t>(points.size());
    curvePoints.appendAll(count, [points](std::uint32_t i) { return points[i]; });
    curveStore.append(material, first, count, bounded);
}

Material& Model::findMaterial(std::string_view key)
{
    const auto found = materialsByKey.lower_bound(key);
    if (found != materialsByKey.end() && found->first == key) return found->second;
    std::string name(key);
    Material made = MaterialSequence::ofProgram().next(name);
    return materialsByKey.emplace_hint(found, std::move(name), std::move(made))->second;
}

Material& Model::addMaterial(std::string_view key, Material material)
{
    return materialsByKey.emplace(std::string(key), std::move(material)).first->second;
}

}   // namespace belvor
