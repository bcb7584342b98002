#include "tests/window/WindowTest.h"
#include "ui/WindowScale.h"
#include "ui/panels/ControlsLayout.h"
#include "ui/panels/PlanGeometry.h"
#include "ui/panels/SlideScale.h"
#include "ui/panels/SphereProjection.h"
#include "view/ViewCommands.h"
#include "view/ViewEdits.h"
#include "view/WindowLayout.h"

#include <commctrl.h>

#include <cstdlib>

namespace belvor::window {

/// At the scale of the desktop that the tests run on: ./test runs these at 96, 144 and 192 dots an inch.
class ScaleTest : public WindowTest {
protected:
    static void SetUpTestSuite()
    {
        // Else this program would get the places of other windows as they were at 96 dots an inch.
        const auto aware = dpi::find<BOOL(WINAPI*)(HANDLE)>("SetProcessDpiAwarenessContext");
        if (aware) aware(reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-4)));   // per monitor, version 2
    }
    PixelSize pixels(HWND window) { return {sizeOf(window).cx, sizeOf(window).cy}; }
    PixelArea placeOf(HWND child)
    {
        RECT r{};
        GetWindowRect(child, &r);
        MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&r), 2);
        return {r.left, r.top, r.right - r.left, r.bottom - r.top};
    }
    const PixelScale scale{dpi::ofDesktop()};
};

TEST_F(ScaleTest, EverythingHasTheSizeOfTheMonitorsScale)
{
    startWith(boxModel());
    if (const char* const wanted = std::getenv("BELVOR_DPI")) {
        EXPECT_EQ(scale.dotsPerInch, std::atoi(wanted));
    }
    program().resizeClient(scale(600), scale(450));
    const HWND controls = program().child(ID_CONTROLS);
    EXPECT_EQ(placeOf(controls).width, scale(WindowLayout::controlsWidth));
    const ControlsLayout strip = layOutControls(pixels(controls), scale);
    const std::pair<int, PixelArea> places[] = {
        {ID_TOOLBAR, strip.toolbar},     {ID_EYESLIDE, strip.eyeSlide}, {ID_PLAN, strip.plan},
        {ID_ELEVATION, strip.elevation}, {ID_SPHERE, strip.sphere},     {ID_SLIDERLAST, strip.sliders[6]},
    };
    for (const auto& [number, area] : places) EXPECT_EQ(placeOf(panel(number)), area) << number;
    RECT last{};
    program().sendRecord(panel(ID_TOOLBAR), TB_GETITEMRECT, 3, &last, sizeof last);
    EXPECT_LE(last.bottom, strip.toolbar.height) << "the buttons fit the toolbar";
    EXPECT_GE(last.bottom, strip.toolbar.height * 9 / 10) << "and fill it";
    EXPECT_LE(last.right, strip.toolbar.width);
}

TEST_F(ScaleTest, MarkersAreTakenWithinTheirScaledReach)
{
    startWith(boxModel());
    program().resizeClient(scale(600), scale(450));
    ViewParameters from = wholeModel(freshView(), {});
    from.eye = {-1.013, -0.907, 0.8};   // not between two pixels: the file keeps six digits
    from.lookAt = {0.3, 0.1, -0.2};
    const auto load = [&] {
        const std::string path = inFolder("scaled.bvp");
        from.write(path, boxCentre, boxRadius);
        loadParameters(readFile(path));
    };
    load();
    const HWND plan = panel(ID_PLAN), slide = panel(ID_EYESLIDE), sphere = panel(ID_SPHERE);
    const ViewMarkers markers = viewMarkers(from, Thumbnail::plan);
    const PixelPoint eye = eyePixel(markers, pixels(plan));
    const int reach = scale(10);
    const auto drag = [&](HWND window, PixelPoint press, PixelPoint release) {
        dragMouse(window, {{press.x, press.y}, {release.x, release.y}});
    };
    drag(plan, {eye.x - reach, eye.y}, {eye.x + 5, eye.y + 30});
    expectView(view(), from, "beside the marker");
    const PixelPoint to{eye.x + 5, eye.y + scale(8)};
    drag(plan, {eye.x - reach + 1, eye.y}, to);
    expectView(view(),
               moveMarkers(from, Thumbnail::plan,
                           draggedMarkers(markers, MarkerDrag::eye, pixels(plan), to.x, to.y)),
               "plan");
    load();
    const SlideScale along(pixels(slide), metricOf(slide, SM_CYVSCROLL), scale);
    const EyeSlideRecord record = eyeSlideRecord(from);
    const int down = along.toPixel(0.7);
    drag(slide, {along.x + reach - 1, along.toPixel(record.eye)}, {along.x, down});
    expectView(view(), moveAlongSight(from, draggedSlide(record, MarkerDrag::eye, along, down)), "slide");
    load();
    const SphereDisc disc(pixels(sphere), scale);
    const PixelPoint light = disc.toPixel({-30, 60}), rim{disc.centre.x + 3 * disc.radiusX, disc.centre.y};
    const SphereDirection asked = disc.toDirection(rim.x, rim.y, {});
    drag(sphere, {light.x, light.y + reach - 1}, rim);
    expectView(view(), turn(from, {asked.bearing, asked.elevation, 1}), "sphere");
}

}   // namespace belvor::window
