#include "bench/Scenes.h"

#include "platform/Files.h"
#include "platform/Process.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <random>
#include <vector>

namespace belvor::bench {
namespace {

void addPolygon(Model& model, const Material& material, const std::vector<std::uint32_t>& corners)
{
    Vector<3> normal;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Vector<3>& p = model.vertex(corners[i]).position.vector();
        normal += p.cross(model.vertex(corners[(i + 1) % corners.size()]).position.vector());
    }
    model.addFacet(material, Plane(normal, model.vertex(corners[0]).position));
    for (std::size_t i = 0; i < corners.size(); ++i)
        model.addEdge(corners[i], corners[(i + 1) % corners.size()]);
}

}   // namespace

Handle<Model> terrain(std::uint32_t triangles)
{
    const auto side = static_cast<std::uint32_t>(std::lround(std::sqrt(triangles / 2.0)));
    const Handle<Model> model = makeHandle<Model>();
    std::mt19937 random(7);
    std::uniform_real_distribution<double> roughness(-0.2, 0.2);
    for (std::uint32_t y = 0; y <= side; ++y)
        for (std::uint32_t x = 0; x <= side; ++x) {
            const double u = x * 20.0 / side, v = y * 20.0 / side;
            const double height = std::sin(u) * std::cos(0.7 * v) + 0.3 * std::sin(3.1 * u + v)
                                  + roughness(random) * 20.0 / side;
            model->addVertex({u, v, height});
        }
    const Material& material = model->findMaterial("earth");
    for (std::uint32_t y = 0; y < side; ++y)
        for (std::uint32_t x = 0; x < side; ++x) {
            const std::uint32_t a = y * (side + 1) + x, b = a + 1, c = b + side + 1, d = c - 1;
            addPolygon(*model, material, {a, b, c});
            addPolygon(*model, material, {a, c, d});
        }
    return model;
}

Handle<Model> terrainWithCurves(std::uint32_t triangles, std::uint32_t chords)
{
    const Handle<Model> model = terrain(triangles);
    const Material& material = model->findMaterial("paths");
    std::mt19937 random(17);
    std::uniform_real_distribution<double> anywhere(2.0, 18.0), height(-1.0, 1.5), turn(-0.3, 0.3);
    constexpr std::uint32_t perCurve = 500;
    for (std::uint32_t made = 0; made < chords; made += perCurve) {
        Point<3> at(anywhere(random), anywhere(random), height(random));
        double direction = anywhere(random);
        std::vector<Point<3>> points{at};
        for (std::uint32_t i = 0; i < perCurve; ++i) {
            direction += turn(random);
            at += Vector<3>(std::cos(direction), std::sin(direction), turn(random)) * 0.02;
            points.push_back(at);
        }
        model->addCurve(material, points);
    }
    return model;
}

Handle<Model> city(std::uint32_t boxes)
{
    const auto side = static_cast<std::uint32_t>(std::ceil(std::sqrt(boxes)));
    const Handle<Model> model = makeHandle<Model>();
    std::mt19937 random(11);
    std::uniform_real_distribution<double> size(0.3, 0.9), floors(0.5, 6.0);
    static constexpr std::uint32_t faces[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                                  {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
    for (std::uint32_t i = 0; i < boxes; ++i) {
        const double x = i % side, y = i / side, w = size(random), d = size(random), h = floors(random);
        const std::uint32_t first = model->vertexCount();
        for (const double z : {0.0, h}) {
            model->addVertex({x, y, z});
            model->addVertex({x + w, y, z});
            model->addVertex({x + w, y + d, z});
            model->addVertex({x, y + d, z});
        }
        const Material& material = model->findMaterial("material " + std::to_string(random() % 500));
        for (const auto& face : faces)
            addPolygon(*model, material,
                       {first + face[0], first + face[1], first + face[2], first + face[3]});
    }
    return model;
}

Handle<Model> stack(std::uint32_t polygons)
{
    const Handle<Model> model = makeHandle<Model>();
    std::mt19937 random(13);
    std::uniform_real_distribution<double> tilt(-0.2, 0.2), radius(3.0, 5.0);
    for (std::uint32_t i = 0; i < polygons; ++i) {
        const double a = tilt(random), b = tilt(random), r = radius(random);
        std::vector<std::uint32_t> corners;
        for (int k = 0; k < 24; ++k) {
            const double angle = k * std::numbers::pi / 12, x = r * std::cos(angle), y = r * std::sin(angle);
            corners.push_back(model->vertexCount());
            model->addVertex({x, y, a * x + b * y + i * 0.01});
        }
        addPolygon(*model, model->findMaterial("sheet " + std::to_string(i)), corners);
    }
    return model;
}

ThingsFile::ThingsFile(std::uint32_t triangles)
    : path(temporaryNameFor((std::filesystem::temp_directory_path() / "belvor-bench.thf").string()))
{
    const Handle<Model> model = terrain(triangles);
    std::FILE* const file = openFile(path, "wb");
    std::fprintf(file, "Y %u\n", model->vertexCount());
    for (std::uint32_t i = 0; i < model->vertexCount(); ++i) {
        const Point<3>& p = model->vertex(i).position;
        std::fprintf(file, "%.6f %.6f %.6f\n", p[0], p[1], p[2]);
    }
    std::fprintf(file, "0\n%u\n", model->facetCount());
    for (std::uint32_t i = 0; i < model->facetCount(); ++i) {
        const std::uint32_t first = model->facet(i).firstEdge;
        std::fprintf(file, "1 Earth\n3 %u %u %u\n", model->edge(first).from + 1,
                     model->edge(first + 1).from + 1, model->edge(first + 2).from + 1);
    }
    std::fclose(file);
    size = static_cast<double>(std::filesystem::file_size(path));
}

ThingsFile::~ThingsFile() { removeFile(path); }

Scene wholeScene(const Model& model, int width, int height)
{
    ModelPlace place;
    model.bounds(place.centre, place.radius);
    const ImageSize size{width, height};
    return buildScene(wholeModel(freshView(), size), place, size, width, height);
}

}   // namespace belvor::bench
