#include "ui/dialogs/ViewFields.h"

#include "ui/dialogs/NumberText.h"
#include "view/ViewCommands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace belvor;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

ViewFields::Typed typing(std::initializer_list<std::pair<std::size_t, double>> numbers)
{
    ViewFields::Typed typed;
    for (const auto& [field, number] : numbers) typed[field] = number;
    return typed;
}

ViewParameters someView()
{
    ViewParameters view = freshView();
    view.eye = {-2.8694, -2.8694, 2.3447};
    view.lookAt = {0.1, -0.2, 0.3};
    view.zoom = 0.364;
    return view;
}

std::string shown(const ViewFields& fields, int field, bool parallel = false)
{
    return shownNumber(fields.value(field, parallel).value(), ".");
}

}   // namespace

TEST(ViewFields, ShowTheViewInUnitsOfTheUser)
{
    // A box from (0, 0, 0) to (2, 4, 6) metres as Whole Model shows it.
    const ViewFields box(wholeModel(freshView(), {800, 600}), {{1, 2, 3}, std::sqrt(14.0)}, {1000.0, 2});
    const std::tuple<int, const char*> cases[] = {
        {0, "-9736"}, {1, "-8736"}, {2, "1.177E+04"}, {3, "1000"}, {5, "3000"},
        {6, "40"},    {7, "0.4"},   {8, "0.1"},       {9, "0.6"},  {10, "-30"},
        {11, "60"},   {12, "0"},    {13, "180"},      {22, "-90"}, {23, "30"},
    };
    for (const auto& [field, text] : cases) EXPECT_EQ(shown(box, field), text) << "field " << field;
    EXPECT_EQ(shown(box, ViewFields::zoom, true), "6265");
    EXPECT_EQ(shownNumber(box.radius(), "."), "3742");
    EXPECT_EQ(box.centre(2), 3000.0);
}

TEST(ViewFields, OnlyTypedFieldsChangeTheCurrentView)
{
    ViewParameters now = wholeModel(freshView(), {800, 600});   // another model was loaded meanwhile
    now.imageSaved = true;
    ViewParameters expected = now;
    expected.eye = {1.0, now.eye[1], 0.0};
    expected.lookAt[1] = 3.0;
    expected.skyIntensity = 0.5;
    expected.groundIntensity = 0.0;
    expected.lights[1] = {725, now.lights[1].elevation, 1.5};
    expected.lights[4].elevation = -100;
    const ViewFields fields(someView(), {{10, 20, 30}, 2.0}, {1000.0, 2});
    const auto typed =
        typing({{0, 12000}, {2, 30000}, {4, 26000}, {7, 0.5}, {8, 0.0}, {12, 1.5}, {13, 725}, {23, -100}});
    EXPECT_EQ(fields.applied(now, typed, false), expected);
    EXPECT_EQ(fields.applied(now, {}, false), now);
    expected = now;
    expected.parallel = true;
    EXPECT_EQ(fields.applied(now, {}, true), expected) << "another projection alone keeps the zoom";
    EXPECT_FALSE(fields.applied(now, {}, false).imageSaved);
}

TEST(ViewFields, TheZoomIsReadInTheChosenProjection)
{
    const ViewParameters view = someView();
    // Columns: why, typed, scale, parallel, zoom.
    const std::tuple<const char*, double, double, bool, double> cases[] = {
        {"an angle", 90, 10, false, 1.0},
        {"a half turn has no tangent", 180, 10, false, view.zoom},
        {"a negative angle", -1, 10, false, view.zoom},
        {"a width", 184, 10, true, 2.0},
        {"a negative width in negative units", -184, -10, true, 2.0},
        {"an infinite width", infinity, 10, true, view.zoom},
    };
    for (const auto& [why, typed, scale, parallel, zoom] : cases) {
        const ViewFields fields(view, {{0, 0, 0}, 2.0}, {scale, 0});
        EXPECT_NEAR(fields.applied(view, typing({{6, typed}}), parallel).zoom, zoom, 1e-12) << why;
    }
}

TEST(ViewFields, NumbersThatGiveNoFiniteViewAreIgnored)
{
    ViewParameters view = someView();
    view.lights.resize(2);
    // Columns: why, radius, scale, typed.
    const std::tuple<const char*, double, double, ViewFields::Typed> cases[] = {
        {"infinite position", 2, 1, typing({{0, infinity}})},
        {"scale 0", 2, 0, typing({{0, 5}, {3, 5}})},
        {"the product of scale and radius overflows", 1e200, 1e200, typing({{0, 5}})},
        {"a row without a light", 2, 1, typing({{15, 1.0}})},
    };
    for (const auto& [why, radius, scale, typed] : cases) {
        const ViewFields fields(view, {{0, 0, 0}, radius}, {scale, 0});
        EXPECT_EQ(fields.applied(view, typed, false), view) << why;
        EXPECT_FALSE(fields.value(15, false)) << why;
    }
}

TEST(ViewFields, AnEyeTypedOntoTheLookAtPointIsIgnored)
{
    const ViewParameters view = someView();
    const ViewFields fields(view, {{1, 2, 3}, 2.0}, {10.0, 0});
    const ViewParameters next = fields.applied(view, typing({{0, 12}, {1, 16}, {2, 36}, {7, 0.9}}), false);
    EXPECT_EQ(next.eye, view.eye);
    EXPECT_EQ(next.skyIntensity, 0.9) << "what else was typed holds";
}
