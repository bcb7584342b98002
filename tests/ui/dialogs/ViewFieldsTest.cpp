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

}   // namespace

TEST(ViewFields, ShowTheViewInUnitsOfTheUser)
{
    // A box from (0, 0, 0) to (2, 4, 6) metres as Whole Model shows it.
    const ViewFields box(wholeModel(freshView(), {800, 600}), {{1, 2, 3}, std::sqrt(14.0)}, {1000.0, 2});
    const auto shown = [&](int field, bool parallel = false) {
        return shownNumber(box.value(field, parallel).value(), ".");
    };
    std::string all;
    for (int field = 0; field < ViewFields::count; ++field) all += shown(field) + ' ';
    EXPECT_EQ(all,
              "-9736 -8736 1.177E+04 1000 2000 3000 40 0.4 0.1 0.6 -30 60 0 180 30 0 0 30 0 90 30 0 -90 30 ");
    EXPECT_EQ(shown(ViewFields::zoom, true), "6265");
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
    using Row = std::tuple<double, double, bool, double>;   // what is typed, the scale, parallel, the zoom
    // An angle, half a turn, which has no tangent, a negative angle, then widths: a negative one in negative
    // units.
    for (const auto& [typed, scale, parallel, zoom] :
         {Row{90, 10, false, 1}, Row{180, 10, false, view.zoom}, Row{-1, 10, false, view.zoom},
          Row{184, 10, true, 2}, Row{-184, -10, true, 2}, Row{infinity, 10, true, view.zoom}}) {
        const ViewFields fields(view, {{0, 0, 0}, 2.0}, {scale, 0});
        EXPECT_NEAR(fields.applied(view, typing({{6, typed}}), parallel).zoom, zoom, 1e-12) << typed;
    }
}

TEST(ViewFields, NumbersThatGiveNoFiniteViewAreIgnored)
{
    ViewParameters view = someView();
    view.lights.resize(2);
    using Row = std::tuple<double, double, std::size_t, double>;   // radius, scale, field, what is typed
    // The last row is of a light that there is not.
    for (const auto& [radius, scale, field, typed] :
         {Row{2, 1, 0, infinity}, Row{2, 0, 0, 5}, Row{2, 0, 3, 5}, Row{1e200, 1e200, 0, 5},
          Row{2, 1, 15, 1}}) {
        const ViewFields fields(view, {{0, 0, 0}, radius}, {scale, 0});
        EXPECT_EQ(fields.applied(view, typing({{field, typed}}), false), view) << radius << ", " << field;
        EXPECT_FALSE(fields.value(15, false));
    }
}

TEST(ViewFields, AnEyeTypedOntoTheLookAtPointIsIgnored)
{
    ViewParameters wanted = someView();
    wanted.skyIntensity = 0.9;   // what else was typed holds
    const ViewFields fields(someView(), {{1, 2, 3}, 2.0}, {10.0, 0});
    EXPECT_EQ(fields.applied(someView(), typing({{0, 12}, {1, 16}, {2, 36}, {7, 0.9}}), false), wanted);
}
