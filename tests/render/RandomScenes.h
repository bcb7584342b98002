#pragma once

#include "scene/Camera.h"
#include "scene/Model.h"

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace belvor::test {

/// Random scenes that are hard on the rules: lattice corners that fall on pixels and share planes, large
/// facets around the eye, outlines that cross themselves or are not flat, holes, loops of one and two
/// corners, facets that share an edge in either direction; and curves. The same in every build, which the
/// distributions of the library do not promise: no expression leaves the order of its numbers to the
/// compiler.
class RandomScenes {
public:
    explicit RandomScenes(std::uint64_t seed) : random(seed) {}

    Handle<Model> model()
    {
        const int facets = whole(1, whole(0, 9) == 0 ? 40 : 8);
        return model(facets, whole(0, 3));
    }
    /// Of `facets` facets; in the styles 0 and 1 their corners lie on lattices.
    Handle<Model> model(int facets, int wantedStyle)
    {
        const Handle<Model> made = makeHandle<Model>();
        Material material;
        material.index = 1;
        style = wantedStyle;
        for (int i = 0; i < facets; ++i) {
            material.colour = {real(0, 1), real(0, 1), real(0, 1)};
            const Material& added = made->addMaterial(std::to_string(i), material);
            if (i > 0 && whole(0, 3) == 0) addNeighbour(*made, added);
            else addFacet(*made, added);
            if (whole(0, 3) == 0) addCurve(*made, added);
        }
        return made;
    }

    Handle<Camera> camera(const Model& scene)
    {
        CameraView view{};
        scene.bounds(view.centre, view.radius);
        if (!(view.radius > 0.0)) view.radius = 1.0;
        view.width = static_cast<std::uint32_t>(whole(1, whole(0, 3) == 0 ? 6 : 60));
        view.height = static_cast<std::uint32_t>(whole(1, whole(0, 3) == 0 ? 6 : 60));
        view.azimuth = whole(0, 1) == 0 ? 90.0 * whole(-2, 4) : real(-180, 180);
        view.elevation = whole(0, 2) == 0 ? 45.0 * whole(-2, 2) : whole(0, 1) == 0 ? 0.0 : real(-90, 90);
        for (int axis = 0; axis < 3; ++axis)
            view.eye[axis] = style < 2 ? whole(-5, 5) * 0.5 : real(-1.5, 1.5) * view.radius;
        if (whole(0, 2) == 0)
            view.eye =
                scene.vertex(static_cast<std::uint32_t>(whole(0, static_cast<int>(scene.vertexCount()) - 1)))
                    .position;
        const bool parallel = whole(0, 1) == 0;
        const double field = parallel ? (style < 2 ? 1.0 * whole(2, 12) : real(0.3, 3.0) * view.radius)
                                      : std::exp(real(-3.0, 2.0));
        view.viewWidth = field;
        view.viewHeight = style < 2 ? field : field * real(0.5, 2.0);
        if (parallel) return makeHandle<ParallelCamera>(view);
        return makeHandle<PerspectiveCamera>(view);
    }

    int whole(int low, int high)
    {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    }
    double real(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(random() >> 11) * 0x1p-53);
    }

private:
    Point<3> corner()
    {
        switch (style) {
        case 0: return {1.0 * whole(-3, 3), 1.0 * whole(-3, 3), 1.0 * whole(-3, 3)};
        case 1: return {whole(-6, 6) * 0.5, whole(-6, 6) * 0.5, 1.0 * whole(0, 1)};
        default: return {real(-3, 3), real(-3, 3), real(-3, 3)};
        }
    }

    static Plane planeOf(const Point<3>& a, const Point<3>& b, const Point<3>& c)
    {
        const Vector<3> normal = (b - a).cross(c - a);
        return {normal.length() == 0.0 ? Vector<3>(0, 0, 1) : normal, a};
    }

    /// On the last edge of the facet before.
    void addNeighbour(Model& made, const Material& material)
    {
        const Edge& edge = made.edge(made.edgeCount() - 1);
        Point<3> corners[] = {made.vertex(edge.to).position, made.vertex(edge.from).position, corner()};
        if (whole(0, 1) == 0) std::swap(corners[0], corners[1]);
        made.addPolygon(material, planeOf(corners[0], corners[1], corners[2]), corners);
    }

    void addCurve(Model& made, const Material& material)
    {
        const double reach = std::array{0.01, 1.0, 1.0, 1e6}[static_cast<std::size_t>(whole(0, 3))];
        std::vector<Point<3>> points;
        const Point<3> start = corner();
        for (int i = whole(1, 6); i > 0; --i) points.push_back(start + corner().vector() * reach);
        made.addCurve(material, points);
    }

    void addFacet(Model& made, const Material& material)
    {
        // Corners in the plane of three random ones (so that a facet is flat, but for rounding), or anywhere.
        const Point<3> a = corner(), b = corner(), c = corner();
        const bool flat = whole(0, 3) != 0;
        const double reach = style == 3 ? 20.0 : 1.5;
        made.addFacet(material, planeOf(a, b, c));
        for (int loop = whole(0, 3) == 0 ? 2 : 1; loop > 0; --loop) {
            const std::uint32_t first = made.vertexCount();
            const int kind = whole(0, 120);   // few corners, more than a store of counts holds, or the usual
            const auto corners = static_cast<std::uint32_t>(kind < 6    ? whole(1, 2)
                                                            : kind == 6 ? whole(250, 260)
                                                                        : whole(3, 9));
            for (std::uint32_t i = 0; i < corners; ++i) {
                const double u = style < 2 ? 1.0 * whole(-1, 2) : real(-reach, reach),
                             v = style < 2 ? 1.0 * whole(-1, 2) : real(-reach, reach);
                made.addVertex(flat ? a + (b - a) * u + (c - a) * v : corner());
            }
            for (std::uint32_t i = 0; i < corners; ++i) made.addEdge(first + i, first + (i + 1) % corners);
        }
    }

    std::mt19937_64 random;
    int style = 0;
};

}   // namespace belvor::test
