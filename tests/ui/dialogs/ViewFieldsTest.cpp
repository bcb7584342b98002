#include "ui/dialogs/ViewFields.h"

#include "ui/dialogs/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace belvor {
namespace {

using Typed = ViewFields::Typed;

Typed typing(std::initializer_list<std::pair<int, double>> numbers)
{
    Typed typed;
    for (const auto& [field, number] : numbers) typed[static_cast<std::size_t>(field)] = number;
    return typed;
}

ViewParameters someView()
{
    ViewParameters view = freshView();
    view.eye = {-2.8694, -2.8694, 2.3447};
    view.lookAt = {0.1, -0.2, 0.3};
    view.zoom = 0.364;
    view.imageSaved = true;
    return view;
}

std::string shown(const ViewFields& fields, int field, bool parallel = false)
{
    return shownNumber(fields.value(field, parallel).value(), ".");
}

}   // namespace

TEST(ViewFields, ShowTheViewInUnitsOfTheUser)
{
    ViewParameters view;
    view.eye = {1, 0, 0};
    view.zoom = 1.0;
    const ViewFields fields(view, {{0, 0, 0}, 2.0}, {1000.0, 2});
    EXPECT_EQ(shown(fields, ViewFields::eye), "2000");
    EXPECT_EQ(shown(fields, ViewFields::zoom), "90");
    EXPECT_EQ(fields.radius(), 2000.0);

    // A box from (0, 0, 0) to (2, 4, 6) as Whole Model shows it.
    const ViewFields box(wholeModel(freshView(), {800, 600}), {{1, 2, 3}, std::sqrt(14.0)}, {1.0, 0});
    const struct { int field; const char* text; } cases[] = {
        {0, "-9.736"}, {1, "-8.736"}, {2, "11.77"}, {3, "1"}, {4, "2"}, {5, "3"}, {ViewFields::sky, "0.4"},
        {ViewFields::ground, "0.1"}, {9, "0.6"}, {10, "-30"}, {11, "60"}, {12, "0"}, {13, "180"}, {21, "0"}, {22, "-90"}, {23, "30"},
    };
    for (const auto& c : cases) EXPECT_EQ(shown(box, c.field), c.text) << "field " << c.field;
    EXPECT_EQ(shown(box, ViewFields::zoom, false), "40");
    EXPECT_EQ(shown(box, ViewFields::zoom, true), "6.265");
    EXPECT_EQ(shownNumber(box.radius(), "."), "3.742");
    EXPECT_EQ(box.centre(2), 3.0);
}

TEST(ViewFields, AnUntouchedDialogChangesNothing)
{
    const ViewParameters view = someView();
    for (const double scale : {1.0, 0.001, 0.0, 1e308}) {
        const ViewFields fields(view, {{1e5, -3, 7}, 1.0 / 3.0}, {scale, 0});
        EXPECT_EQ(fields.applied(view, {}, false), view) << "scale " << scale;
        EXPECT_FALSE(fields.applied(view, {}, false).imageSaved);
    }
}

TEST(ViewFields, WhatIsTypedBecomesTheView)
{
    const ViewParameters view = someView();
    const ViewFields fields(view, {{10, 20, 30}, 2.0}, {1000.0, 2});
    const ViewParameters moved = fields.applied(
        view, typing({{0, 12000}, {2, 30000}, {4, 26000}, {ViewFields::sky, 0.5}, {ViewFields::ground, 0.0}, {12, 1.5}, {13, 725}, {23, -100}}), false);
    ViewParameters expected = view;
    expected.eye = {1.0, view.eye[1], 0.0};
    expected.lookAt = {view.lookAt[0], 3.0, view.lookAt[2]};
    expected.skyIntensity = 0.5;
    expected.groundIntensity = 0.0;
    expected.lights[1].intensity = 1.5;
    expected.lights[1].bearing = 725;
    expected.lights[4].elevation = -100;
    EXPECT_EQ(moved, expected);
}

TEST(ViewFields, TheZoomIsReadInTheProjectionThatIsChosen)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const ViewParameters view = someView();
    const ViewFields fields(view, {{0, 0, 0}, 2.0}, {10.0, 0});
    const struct { const char* why; double typed; bool parallel; double zoom; } cases[] = {
        {"an angle", 90, false, 1.0},
        {"an angle of nothing", 0, false, 0.0},
        {"nearly a half turn", 179, false, std::tan(179 * std::numbers::pi / 360)},
        {"a half turn has no tangent", 180, false, view.zoom},
        {"a negative angle", -1, false, view.zoom},
        {"an infinite angle", infinity, false, view.zoom},
        {"a width", 184, true, 2.0},
        {"a negative width", -92, true, -1.0},
        {"an infinite width", infinity, true, view.zoom},
    };
    for (const auto& c : cases) {
        const ViewParameters result = fields.applied(view, typing({{ViewFields::zoom, c.typed}}), c.parallel);
        EXPECT_NEAR(result.zoom, c.zoom, 1e-12 * std::abs(c.zoom)) << c.why;
        EXPECT_EQ(result.parallel, c.parallel) << c.why;
    }
    EXPECT_EQ(fields.applied(view, {}, true).zoom, view.zoom) << "another projection alone keeps the zoom";
}

TEST(ViewFields, NumbersThatLeadNowhereAreIgnored)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const ViewParameters view = someView();
    const struct { const char* why; double radius, scale; Typed typed; bool parallel; } cases[] = {
        {"infinite position", 2, 1, typing({{0, infinity}}), false},
        {"infinite light", 2, 1, typing({{9, infinity}, {10, -infinity}, {ViewFields::sky, infinity}}), false},
        {"scale 0: no position, no width", 2, 0, typing({{0, 5}, {3, 5}}), false},
        {"the product of scale and radius overflows", 1e200, 1e200, typing({{0, 5}}), false},
        {"the quotient overflows", 1e-200, 1e-100, typing({{0, 1e300}}), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ViewFields(view, {{0, 0, 0}, c.radius}, {c.scale, 0}).applied(view, c.typed, c.parallel), view) << c.why;
    const ViewFields unscaled(view, {{0, 0, 0}, 2.0}, {0.0, 0});
    EXPECT_EQ(unscaled.applied(view, typing({{ViewFields::zoom, 5}}), true).zoom, view.zoom);
}

TEST(ViewFields, AModelWithoutSizeHasPositionsOfRadiusOne)
{
    ViewParameters view;
    view.eye = {0, -4, 0};
    const ViewFields fields(view, {{5, 5, 5}, 0.0}, {1.0, 0});
    EXPECT_EQ(shown(fields, 1), "1");
    EXPECT_EQ(fields.radius(), 0.0);
    EXPECT_EQ(fields.applied(view, typing({{1, 3}}), false).eye, Point<3>(0, -2, 0));
}

/// Another model was loaded while the dialog was open: what was not typed is that model's.
TEST(ViewFields, OnlyWhatWasTypedReachesAViewThatHasChanged)
{
    const ViewParameters before = someView();
    const ViewFields fields(before, {{0, 0, 0}, 1.0}, {1.0, 0});
    ViewParameters now = wholeModel(freshView(), {800, 600});
    now.parallel = false;
    EXPECT_EQ(fields.applied(now, {}, false), now);
    ViewParameters expected = now;
    expected.skyIntensity = 0.9;
    EXPECT_EQ(fields.applied(now, typing({{ViewFields::sky, 0.9}}), false), expected);
}

TEST(ViewFields, LightsBeyondTheRowsAreKeptAndRowsWithoutALightAreEmpty)
{
    ViewParameters view = someView();
    view.lights.push_back({1, 2, 3});
    const ViewFields fields(view, {}, {});
    EXPECT_EQ(fields.applied(view, typing({{9, 0.25}}), false).lights.back(), view.lights.back());
    view.lights.resize(2);
    const ViewFields few(view, {}, {});
    EXPECT_TRUE(few.value(14, false).has_value());
    EXPECT_FALSE(few.value(15, false).has_value());
    EXPECT_EQ(few.applied(view, typing({{15, 1.0}}), false), view);
}

}   // namespace belvor
