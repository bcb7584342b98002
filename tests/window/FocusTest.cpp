#include "tests/window/WindowTest.h"
#include "ui/Messages.h"
#include "ui/panels/PlanGeometry.h"
#include "ui/panels/SlideScale.h"
#include "ui/panels/SphereProjection.h"
#include "view/ViewCommands.h"
#include "view/ViewEdits.h"

#include <commctrl.h>

#include <cmath>

namespace belvor::window {

/// Where the keyboard works.
class FocusTest : public WindowTest {
protected:
    HWND focus()
    {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(program().main(), nullptr), &info);
        return info.hwndFocus;
    }
    bool awaitFocus(HWND wanted)
    {
        return eventually([&] { return focus() == wanted; }, 2000);
    }
    HWND button(int parent, int number) { return program().child(number, panel(parent)); }
    void tabTo(HWND wanted)
    {
        for (int i = 0; i < 30 && focus() != wanted; ++i) program().send(focus(), WM_KEYDOWN, VK_TAB);
        ASSERT_EQ(focus(), wanted);
    }
};

TEST_F(FocusTest, TabGoesRoundTheStripAndBack)
{
    startWith(boxModel());
    std::vector<HWND> ring{drawing(),
                           panel(ID_TOOLBAR),
                           panel(ID_EYESLIDE),
                           button(ID_EYESLIDE, ID_ADVANCE),
                           button(ID_EYESLIDE, ID_RETREAT),
                           panel(ID_PLAN),
                           panel(ID_ELEVATION),
                           panel(ID_SPHERE),
                           button(ID_SPHERE, ID_EYEUP),
                           button(ID_SPHERE, ID_EYELEFT),
                           button(ID_SPHERE, ID_EYERIGHT),
                           button(ID_SPHERE, ID_EYEDOWN)};
    for (int slider = ID_SLIDER; slider <= ID_SLIDERLAST; ++slider) ring.push_back(panel(slider));
    for (std::size_t i = 0; i <= ring.size(); ++i) {
        program().send(focus(), WM_KEYDOWN, VK_TAB);
        EXPECT_EQ(focus(), ring[i % ring.size()]) << i;
    }
    pressKeys({VK_SHIFT, VK_TAB});
    EXPECT_TRUE(awaitFocus(ring.back())) << "backwards";
}

TEST_F(FocusTest, KeysChooseAndPressTheButtonsOfTheToolbar)
{
    startWith(boxModel());
    tabTo(panel(ID_TOOLBAR));
    const auto key = [&](WORD code) { program().send(panel(ID_TOOLBAR), WM_KEYDOWN, code); };
    ViewParameters from = wholeModel(freshView(), {});
    from.lookAt = {0.3, 0.1, -0.2};
    show(from);
    const ViewParameters centred = centreLookAt(from);
    key(VK_DOWN);
    key(VK_SPACE);
    expectView(view(), centred, "the second button");
    key(VK_END);
    key(VK_RETURN);
    expectView(view(), increaseZoomAngle(centred), "the last");
    key(VK_UP);
    key(VK_SPACE);
    expectView(view(), centred, "the one before: the view before");
    key(VK_HOME);
    key(VK_UP);   // there is none above the first
    key(VK_SPACE);
    expectView(view(), wholeModel(freshView(), {}), "the first");
}

TEST_F(FocusTest, KeysMoveEveryMarkerAndThePicture)
{
    startWith(boxModel());
    ViewParameters from = wholeModel(freshView(), {});
    from.eye = {-1.0, -0.9, 0.8};
    from.lookAt = {0.3, 0.1, -0.2};
    const auto size = [&](HWND window) { return PixelSize{sizeOf(window).cx, sizeOf(window).cy}; };
    const ViewMarkers plan = viewMarkers(from, Thumbnail::plan),
                      side = viewMarkers(from, Thumbnail::elevation);
    const EyeSlideRecord slide = eyeSlideRecord(from);
    const SphereMarker eye = eyeMarker(from);
    const SlideScale scale(size(panel(ID_EYESLIDE)), GetSystemMetrics(SM_CYVSCROLL));
    const SphereDisc disc(size(panel(ID_SPHERE)));
    const SphereDirection turned = disc.nudged({eye.bearing, eye.elevation}, {-1, 0});
    const SphereDirection light = disc.nudged({-30, 60}, {0, 1});
    const struct {
        const char* why;
        HWND window;
        std::vector<WORD> keys;
        ViewParameters wanted;
    } cases[] = {
        {"plan, the eye",
         panel(ID_PLAN),
         {VK_RIGHT},
         moveMarkers(from, Thumbnail::plan,
                     nudgedMarkers(plan, MarkerDrag::eye, size(panel(ID_PLAN)), {1, 0}))},
        {"elevation, the look-at point",
         panel(ID_ELEVATION),
         {VK_SPACE, VK_UP},
         moveMarkers(from, Thumbnail::elevation,
                     nudgedMarkers(side, MarkerDrag::lookAt, size(panel(ID_PLAN)), {0, -1}))},
        {"slide, the eye",
         panel(ID_EYESLIDE),
         {VK_DOWN},
         moveAlongSight(from, nudgedSlide(slide, MarkerDrag::eye, scale, 1))},
        {"sphere, the eye", panel(ID_SPHERE), {VK_LEFT}, turn(from, {turned.bearing, turned.elevation, 0})},
        {"sphere, the light",
         panel(ID_SPHERE),
         {VK_SPACE, VK_DOWN},
         turn(from, {light.bearing, light.elevation, 1})},
        {"the picture", drawing(), {VK_RIGHT}, turn(from, {eye.bearing + 1, eye.elevation, 0})},
        {"the picture, closer", drawing(), {VK_PRIOR}, zoomBy(from, std::exp2(-1.0 / 8))},
        {"a button",
         button(ID_SPHERE, ID_EYEUP),
         {VK_RETURN},
         turn(from, {eye.bearing, eye.elevation + 1, 0})},
    };
    for (const auto& c : cases) {
        tabTo(panel(ID_TOOLBAR));   // the picture has no frame then
        show(from);
        tabTo(c.window);
        for (const WORD key : c.keys) program().send(c.window, WM_KEYDOWN, key);
        expectView(view(), c.wanted, c.why);
        if (c.keys.size() == 2) program().send(c.window, WM_KEYDOWN, VK_SPACE);
    }
}

TEST_F(FocusTest, TheChosenButtonKeepsItsRectangleWhenPartsOfItArePainted)
{
    startWith(boxModel());
    tabTo(panel(ID_TOOLBAR));
    const HWND toolbar = panel(ID_TOOLBAR);
    moveMouse(program().child(ID_STATUSBAR), 5, 5);
    Sleep(700);   // the toolbar fades its pointed-at button
    const Picture framed = screenOf(toolbar);
    RECT corner{4, 4, 12, 12};   // part of the first button
    for (int i = 0; i < 3; ++i) {
        RedrawWindow(toolbar, &corner, nullptr, RDW_INVALIDATE);
        eventually([&] { return !GetUpdateRect(toolbar, nullptr, FALSE); }, 2000);
        Sleep(50);
        EXPECT_EQ(difference(screenOf(toolbar), framed), "") << i;
    }
    program().send(toolbar, WM_KEYDOWN, VK_DOWN);
    EXPECT_TRUE(eventually([&] { return screenOf(toolbar) != framed; }, 2000)) << "the rectangle is seen";
}

TEST_F(FocusTest, SurvivesOtherWindowsAndAHiddenStrip)
{
    startWith(boxModel());
    const HWND slider = panel(ID_SLIDER + 1);
    tabTo(slider);
    const HWND dialog = program().openDialog(ID_ABOUT, "About Belvor");
    EXPECT_TRUE(eventually([&] { return focus() != slider; }, 2000));
    program().answer(dialog, IDOK);
    EXPECT_TRUE(awaitFocus(slider)) << "after a dialog";

    const HWND other = CreateWindowExW(0, L"STATIC", L"other program", WS_POPUP | WS_VISIBLE, 900, 600, 80,
                                       40, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    EXPECT_TRUE(eventually([&] { return focus() == nullptr || GetForegroundWindow() == other; }, 2000));
    SetForegroundWindow(program().main());
    EXPECT_TRUE(awaitFocus(slider)) << "after another program";
    DestroyWindow(other);

    program().command(ID_SHOWCONTROLS);
    EXPECT_EQ(focus(), program().main()) << "no key moves a hidden slider";
    program().command(ID_SHOWCONTROLS);
    EXPECT_EQ(focus(), slider) << "and back";
}

}   // namespace belvor::window
