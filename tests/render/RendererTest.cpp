#include "render/Buffer.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace belvor {
namespace {

using test::boxText;
using test::placeOf;
using test::RecordingReporter;
using test::thingsModel;

/// Keeps every row: the material of each pixel as a digit, its depth and its facet's colour.
class KeptRows : public Buffer {
public:
    explicit KeptRows(int width) : Buffer(width) {}
    void lineDone(int row) override
    {
        EXPECT_EQ(row, static_cast<int>(picture.size()));
        std::string line;
        for (int i = 0; i < width(); ++i) {
            const std::uint32_t place = owner(i);
            line += place == noFacet ? '.' : static_cast<char>('0' + facet(place).material->index);
            depths.push_back(depth(i));
        }
        picture.push_back(line);
    }
    std::vector<std::string> picture;
    std::vector<double> depths;
};

struct Rendered {
    std::vector<std::string> picture;
    std::vector<double> depths;
};

Rendered render(Model& model, const Scene& scene, Reporter* reporter = nullptr)
{
    SilentReporter silent;
    const Handle<KeptRows> rows = makeHandle<KeptRows>(static_cast<int>(scene.camera->width));
    model.render(*scene.camera, *scene.lights, *rows, reporter ? *reporter : silent);
    return {rows->picture, rows->depths};
}

Scene scene(const Model& model, int width, int height, bool parallel = false)
{
    ViewParameters view = wholeModel(freshView(), {width, height});
    view.parallel = parallel;
    return buildScene(view, placeOf(model), {width, height}, width, height);
}

/// A camera inside the scene: a field of 2 × 1.5, 24 × 18 pixels, sky and ground light only.
Scene inside(const Point<3>& eye, double azimuth, const Model& model)
{
    const ModelPlace place = placeOf(model);
    const Handle<LightSet> lights = makeHandle<LightSet>();
    lights->set(1, makeHandle<AmbientLight>(Colour{0.4, 0.4, 0.4}, Colour{0.1, 0.1, 0.1}));
    return {makeHandle<PerspectiveCamera>(CameraView{24, 18, eye, azimuth, 0, 2, 1.5, place.centre, place.radius}), lights};
}

std::string quad(const std::string& corners) { return "Y 4 " + corners + " 0 1 1 Wall\n4 1 2 3 4\n"; }

}   // namespace

TEST(Renderer, DrawsTheBox)
{
    const std::vector<std::string> perspective = {
        "........................", ".........222............", ".......62222222.........", ".......66662222222......",
        ".......66666622233......", ".......66666666333......", "........6666666333......", "........6666663333......",
        "........6666663333......", "........6666663333......", "........6666663333......", "........6666663333......",
        "........6666663333......", "........666666333.......", "........666666333.......", "..........6666333.......",
        "............66333.......", ".............63........."};
    const std::vector<std::string> parallel = {
        "........................", ".........222............", ".......6222222..........", ".......666222222........",
        ".......66666222223......", ".......66666662333......", ".......66666663333......", ".......66666663333......",
        ".......66666663333......", ".......66666663333......", ".......66666663333......", ".......66666663333......",
        ".......66666663333......", ".......66666663333......", ".......66666663333......", ".........666663333......",
        "...........6663333......", ".............633........"};
    const Handle<Model> model = thingsModel(boxText);
    const Rendered first = render(*model, scene(*model, 24, 18));
    EXPECT_EQ(first.picture, perspective);
    EXPECT_NEAR(first.depths[9 * 24 + 12], -2.59131695768266, 1e-12);
    const Rendered second = render(*model, scene(*model, 24, 18, true));
    EXPECT_NEAR(second.depths[9 * 24 + 12], -12.877945846808, 1e-11);
    EXPECT_EQ(second.picture, parallel);

    // Turned edges, turned planes and the brightness stay behind, and change nothing.
    const Rendered again = render(*model, scene(*model, 24, 18));
    EXPECT_EQ(again.picture, first.picture);
    EXPECT_EQ(again.depths, first.depths);
}

TEST(Renderer, LightsTheBrightestChannelFully)
{
    const Handle<Model> model = thingsModel(boxText);
    const auto colourOf = [&](std::uint32_t facet) {
        const std::uint8_t* const c = model->colour(facet);
        return std::vector<int>{c[0], c[1], c[2]};
    };
    render(*model, scene(*model, 24, 18));
    const std::vector<int> wanted[] = {{146, 255, 237}, {255, 218, 165}, {110, 102, 141}, {88, 111, 78}, {141, 90, 122}, {62, 104, 111}};
    for (std::uint32_t i = 1; i < 6; ++i) EXPECT_EQ(colourOf(i), wanted[i]) << i;

    // All lights off: black, and no division by nothing.
    ViewParameters dark = wholeModel(ViewParameters(), {24, 18});
    dark.skyIntensity = dark.groundIntensity = 0;
    render(*model, buildScene(dark, placeOf(*model), {24, 18}, 24, 18));
    for (std::uint32_t i = 0; i < 6; ++i) EXPECT_EQ(colourOf(i), (std::vector<int>{0, 0, 0})) << i;

    // A dimmer scene than the last one is as bright.
    ViewParameters dim = wholeModel(freshView(), {24, 18});
    dim.lights[0].intensity *= 0.25;
    dim.skyIntensity *= 0.25;
    dim.groundIntensity *= 0.25;
    render(*model, buildScene(dim, placeOf(*model), {24, 18}, 24, 18));
    for (std::uint32_t i = 1; i < 6; ++i) EXPECT_EQ(colourOf(i), wanted[i]) << i;
}

TEST(Renderer, ClosesFacetsThatTheEyePlaneCuts)
{
    const struct { const char* why; const char* corners; const char* rows[18]; double firstDepth, lastDepth; int firstColumn; } cases[] = {
        {"a wall on the right", "1 -10 -1  1 10 -1  1 10 1  1 -10 1",
         {"......................11", ".....................111", "....................1111", "...................11111", "..................111111",
          ".................1111111", "................11111111", "...............111111111", "..............1111111111", "..............1111111111",
          "..............1111111111", "...............111111111", "................11111111", ".................1111111", "..................111111",
          "...................11111", "....................1111", ".....................111"},
         -2, -11, 14},
        {"a wall on the left", "-1 -10 -1  -1 10 -1  -1 10 1  -1 -10 1",
         {"111.....................", "1111....................", "11111...................", "111111..................", "1111111.................",
          "11111111................", "111111111...............", "1111111111..............", "11111111111.............", "11111111111.............",
          "11111111111.............", "1111111111..............", "111111111...............", "11111111................", "1111111.................",
          "111111..................", "11111...................", "1111...................."},
         -12, -2, 0},
    };
    for (const auto& c : cases) {
        const Handle<Model> model = thingsModel(quad(c.corners));
        const Rendered rendered = render(*model, inside({0, 0, 0}, 180, *model));
        EXPECT_EQ(rendered.picture, std::vector<std::string>(c.rows, c.rows + 18)) << c.why;
        const double* const row = &rendered.depths[9 * 24 + static_cast<std::size_t>(c.firstColumn)];
        EXPECT_NEAR(row[0], c.firstDepth, 1e-12) << c.why;
        EXPECT_NEAR(row[c.firstColumn == 0 ? 10 : 9], c.lastDepth, 1e-12) << c.why;
    }
}

TEST(Renderer, DrawsGroundAroundTheEye)
{
    const Handle<Model> model = thingsModel(quad("-10 -10 0  10 -10 0  10 10 0  -10 10 0"));
    const std::vector<std::string> level = render(*model, inside({0, 0, 1}, 180, *model)).picture;
    for (std::size_t row = 0; row < 18; ++row) EXPECT_EQ(level[row], std::string(24, row < 11 ? '.' : '1')) << row;
    const std::vector<std::string> turned = render(*model, inside({0, 0, 1}, 200, *model)).picture;
    EXPECT_EQ(turned[10], "......111...............");
    EXPECT_EQ(turned[9], std::string(24, '.'));
    EXPECT_EQ(turned[11], std::string(24, '1'));
}

TEST(Renderer, GivesTiesToTheLaterFacet)
{
    const std::string corners = "0 0 0 4 0 0 4 4 0 0 4 0";
    const Handle<Model> model = thingsModel("Y 4 " + corners + " 0 3 1 A\n4 1 2 3 4\n1 B\n4 4 3 2 1\n1 C\n4 1 2 3 4\n");
    const std::vector<std::string> picture = render(*model, scene(*model, 24, 18)).picture;
    std::string all;
    for (const std::string& row : picture) all += row;
    EXPECT_EQ(all.find_first_of("12"), std::string::npos);
    EXPECT_NE(all.find('3'), std::string::npos);
}

TEST(Renderer, LeavesHolesOpen)
{
    const Handle<Model> model = thingsModel("Y 8 0 0 0 9 0 0 9 9 0 0 9 0 3 3 0 6 3 0 6 6 0 3 6 0 0 2 2 P\n4 1 2 3 4 4 5 6 7 8\n");
    const std::vector<std::string> picture = render(*model, buildThumbnailScene(Thumbnail::plan, placeOf(*model), 24, 24)).picture;
    EXPECT_EQ(picture[12][12], '.') << "in the hole";
    EXPECT_EQ(picture[12][8], '1');
    EXPECT_EQ(picture[12][16], '1');
}

TEST(Renderer, DrawsNothingOfACornerThatIsNoNumber)
{
    for (const double odd : {std::nan(""), HUGE_VAL, 1e308, -1e308}) {
        Model model;
        for (const Point<3>& p : {Point<3>(0, 0, 0), Point<3>(1, 0, 0), Point<3>(odd, 1, 0), Point<3>(0, 0, 1)}) model.addVertex(p);
        model.addFacet(model.findMaterial("a"), Plane(Vector<3>(0, 0, 1), 0.0));
        for (std::uint32_t i = 0; i < 3; ++i) model.addEdge(i, (i + 1) % 3);
        const Scene view = inside({0.2, -3, 0.5}, 180, model);
        const Rendered rendered = render(model, view);
        ASSERT_EQ(rendered.picture.size(), 18u);
        if (std::isnan(odd)) {
            for (const std::string& row : rendered.picture) EXPECT_EQ(row, std::string(24, '.'));
        }
    }
}

TEST(Renderer, ReportsItsStagesAndStopsAtOnce)
{
    std::ostringstream text;
    text << "Y 600";
    for (int i = 0; i < 600; ++i) text << ' ' << i % 25 << ' ' << i / 25 << " 0";
    text << " 0 130";
    for (int i = 0; i < 130; ++i) text << (i < 34 || i % 2 == 0 ? " 1 A\n9 1 2 3 4 5 6 7 8 9" : " 1 A\n8 1 2 3 4 5 6 7 8");
    const Handle<Model> model = thingsModel(text.str());
    const Scene view = scene(*model, 24, 18);
    RecordingReporter reporter;
    render(*model, view, &reporter);
    const double edges = model->edgeCount();
    std::vector<std::tuple<int, int, double>> wanted;
    for (const double i : {0.0, 256.0, 512.0}) wanted.emplace_back(2, 0, i / 1800);
    for (double i = 0; i < edges; i += 256) wanted.emplace_back(2, 0, i / (3 * edges) + 1.0 / 3.0);
    // The first pass finds the scene darker than the stored brightness: no sign of a second pass before it comes.
    for (const double i : {0.0, 64.0, 128.0}) wanted.emplace_back(2, 0, 2.0 / 3.0 + i / 390);
    for (const double i : {0.0, 64.0, 128.0}) wanted.emplace_back(2, 0, 5.0 / 6.0 + i / 780);
    for (double y = 0; y < 18; ++y) wanted.emplace_back(2, 1, y / 18);
    EXPECT_EQ(reporter.calls, wanted);

    RecordingReporter unchanged;
    render(*model, view, &unchanged);
    EXPECT_EQ(unchanged.calls.size(), wanted.size() - 3) << "an unchanged scene is shaded in one pass";

    for (const std::size_t call : {std::size_t{0}, std::size_t{3}, std::size_t{8}, unchanged.calls.size() - 1}) {
        RecordingReporter impatient(call);
        EXPECT_THROW(render(*model, view, &impatient), Reporter::Abandoned);
        EXPECT_EQ(impatient.calls.size(), call + 1);
    }
    const Rendered after = render(*model, view);
    EXPECT_EQ(after.picture.size(), 18u) << "usable after having been abandoned";
}

}   // namespace belvor
