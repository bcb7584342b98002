#include "tests/window/PanelsTest.h"
#include "ui/panels/ControlsLayout.h"
#include "view/WindowLayout.h"

#include <commctrl.h>

#include <cstdlib>

namespace belvor::window {

/// At the scale of the desktop that the tests run on: ./test runs these at 96, 144 and 192 dots an inch.
class ScaleTest : public PanelsTest {
protected:
    static void SetUpTestSuite()
    {
        // Else this program would get the places of other windows as they were at 96 dots an inch.
        const auto aware = dpi::find<BOOL(WINAPI*)(HANDLE)>("SetProcessDpiAwarenessContext");
        if (aware) aware(reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-4)));   // per monitor, version 2
    }
    static PixelArea placeOf(HWND child)
    {
        RECT r{};
        GetWindowRect(child, &r);
        MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&r), 2);
        return {r.left, r.top, r.right - r.left, r.bottom - r.top};
    }
};

TEST_F(ScaleTest, StartsEmptyWithEverythingInPlace)
{
    start();
    if (const char* const wanted = std::getenv("BELVOR_DPI")) {
        EXPECT_EQ(scale.dotsPerInch, std::atoi(wanted));
    }
    EXPECT_EQ(program().title(), "Belvor");
    EXPECT_EQ(program().statusPart(0), textOf(Text::start));
    program().resizeClient(scale(600), scale(450));
    const HWND main = program().main(), controls = program().child(ID_CONTROLS),
               status = program().child(ID_STATUSBAR);
    EXPECT_FALSE(IsWindowEnabled(controls));
    dragMouse(drawing(), {{100, 100}, {200, 200}, {250, 150}});
    for (const std::uint32_t pixel : screenOf(drawing()).pixels)
        ASSERT_EQ(pixel, 0u) << "nothing is drawn yet, a drag neither";
    for (const WPARAM id : {ID_WHOLEMODEL, ID_CENTRELOOKAT, ID_PREVIOUSVIEW, ID_INCREASEZOOM})
        EXPECT_EQ(program().send(panel(ID_TOOLBAR), TB_ISBUTTONENABLED, id), 0) << id;

    WindowShape shape{scale(600), scale(450), placeOf(status).height, false, true, {}, scale};
    const WindowLayout whole = layOut(shape);
    EXPECT_EQ(whole.controls.width, scale(WindowLayout::controlsWidth));
    const ControlsLayout strip = layOutControls(clientSize(controls), scale);
    const std::tuple<HWND, int, const wchar_t*, const wchar_t*, PixelArea> children[] = {
        {main, ID_DISPLAY, L"Display", L"Drawing", whole.display},
        {main, ID_CONTROLS, L"Controls", L"ControlPanel", whole.controls},
        {main, ID_STATUSBAR, STATUSCLASSNAMEW, nullptr, whole.status},
        {controls, ID_PLAN, L"Plan", L"Plan", strip.plan},
        {controls, ID_ELEVATION, L"Plan", L"Elevation", strip.elevation},
        {controls, ID_SPHERE, L"Stereogram", L"Stereogram", strip.sphere},
        {controls, ID_EYESLIDE, L"EyeSlide", L"Eye", strip.eyeSlide},
        {controls, ID_TOOLBAR, TOOLBARCLASSNAMEW, nullptr, strip.toolbar},
        {controls, ID_SLIDERLAST, TRACKBAR_CLASSW, L"Light6", strip.sliders[6]},
    };
    for (const auto& [parent, number, windowClass, name, place] : children) {
        const HWND child = program().child(number, parent);
        EXPECT_EQ(FindWindowExW(parent, nullptr, windowClass, name), child) << number;
        EXPECT_EQ(placeOf(child), place) << number;
    }
    int parts[4] = {};
    EXPECT_EQ(program().sendRecord(status, SB_GETPARTS, 4, parts, sizeof parts), 4);
    EXPECT_TRUE(std::equal(parts, parts + 4, whole.partEnds));
    RECT last{};
    program().sendRecord(panel(ID_TOOLBAR), TB_GETITEMRECT, 3, &last, sizeof last);
    EXPECT_TRUE(last.bottom <= strip.toolbar.height && last.bottom >= strip.toolbar.height * 9 / 10
                && last.right <= strip.toolbar.width)
        << "the buttons fill the toolbar";

    for (const bool shown : {false, true}) {
        program().command(ID_SHOWCONTROLS);
        EXPECT_EQ(IsWindowVisible(controls) != FALSE, shown);
        shape.showControls = shown;
        EXPECT_EQ(placeOf(drawing()), layOut(shape).display) << shown;
    }
    EXPECT_EQ(close(), 0) << "no view to save, no question";
}

TEST_F(ScaleTest, MarkersAreTakenWithinTheirScaledReach)
{
    startWith(boxModel());
    program().resizeClient(scale(600), scale(450));
    load(from);
    const HWND sphere = panel(ID_SPHERE);
    const int reach = scale(10);
    const PixelPoint eye = planEye(), to{eye.x + 5, eye.y + scale(8)}, light = this->light(),
                     rim{disc().centre.x + 3 * disc().radiusX, disc().centre.y};
    dragging(panel(ID_PLAN), {eye.x - reach, eye.y}, to)();
    expectView(view(), from, "beside the marker");
    expectViews({
        {"plan", dragging(panel(ID_PLAN), {eye.x - reach + 1, eye.y}, to),
         planDrag(Thumbnail::plan, MarkerDrag::eye, to)},
        {"slide", dragging(panel(ID_EYESLIDE), {slideEye().x + reach - 1, slideEye().y}, onSlide(0.7)),
         slideDrag(MarkerDrag::eye, 0.7)},
        {"sphere", dragging(sphere, {light.x, light.y + reach - 1}, rim), sphereDrag(1, rim)},
    });
}

}   // namespace belvor::window
