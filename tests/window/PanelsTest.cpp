#include "app/state/Direction.h"
#include "tests/window/BoxView.h"
#include "tests/window/Input.h"
#include "ui/Messages.h"

#include <commctrl.h>

#include <numbers>

namespace belvor::window {

class PanelsTest : public BoxViewTest {
protected:
    static SIZE sizeOf(HWND window)
    {
        RECT client;
        GetClientRect(window, &client);
        return {client.right, client.bottom};
    }
    /// The pixel at which the plan or elevation panel draws a point.
    POINT pixel(int number, double h, double v) const
    {
        const SIZE size = sizeOf(panel(number));
        return {static_cast<LONG>(((h + 1) * size.cx + 1) / 2), static_cast<LONG>(((v + 1) * size.cy + 1) / 2)};
    }
    double across(int number, LONG px) const { return 2.0 * px / sizeOf(panel(number)).cx - 1; }
    double down(int number, LONG py) const { return 2.0 * py / sizeOf(panel(number)).cy - 1; }

    /// The pixel row of the eye slide for a coordinate, and back.
    struct Slide {
        double top, bottom;
        LONG row(double s) const { return static_cast<LONG>(((1 - s) * top + (s + 1) * bottom) * 0.5); }
        double coordinate(LONG y) const { return (2.0 * y - bottom - top) / (bottom - top); }
    };
    Slide slide() const
    {
        const int button = GetSystemMetrics(SM_CYVSCROLL);
        return {static_cast<double>(button), static_cast<double>(sizeOf(panel(ID_EYESLIDE)).cy - button - 1)};
    }
    static double squashed(double distance) { return std::atan(distance / 2) * 2 / std::numbers::pi; }
    static double unsquashed(double s) { return 2 * std::tan(s * std::numbers::pi / 2); }

    static void clickAt(HWND window, int px, int py)
    {
        moveMouse(window, px, py);
        pressButton();
        releaseButton();
    }
    static void clickMiddle(HWND window) { clickAt(window, sizeOf(window).cx / 2, sizeOf(window).cy / 2); }

    LRESULT sliderPosition(int index) const { return program().send(panel(ID_SLIDER + index), TBM_GETPOS); }
    Program& program() const { return const_cast<PanelsTest*>(this)->WindowTest::program(); }
};

TEST_F(PanelsTest, StandWhereTheLayoutPutsThem)
{
    start();
    const LONG bar = [&] {
        RECT r;
        GetWindowRect(program().child(ID_STATUSBAR), &r);
        return r.bottom - r.top;
    }();
    program().resizeClient(clientWidth, 520 + bar);
    const struct { int number; const wchar_t* className; RECT place; } panels[] = {
        {ID_PLAN, L"Plan", {55, 0, 170, 115}},           {ID_ELEVATION, L"Plan", {55, 121, 170, 236}},
        {ID_SPHERE, L"Stereogram", {55, 242, 170, 389}}, {ID_EYESLIDE, L"EyeSlide", {6, 104, 49, 514}},
        {ID_TOOLBAR, TOOLBARCLASSNAMEW, {15, 0, 39, 92}},
        {ID_SLIDER, TRACKBAR_CLASSW, {57, 397, 168, 415}}, {ID_SLIDERLAST, TRACKBAR_CLASSW, {57, 507, 168, 525}},
    };
    for (const auto& p : panels) {
        RECT r;
        GetWindowRect(panel(p.number), &r);
        MapWindowPoints(nullptr, program().child(ID_CONTROLS), reinterpret_cast<POINT*>(&r), 2);
        EXPECT_TRUE(EqualRect(&r, &p.place)) << p.number << ": " << r.left << ' ' << r.top << ' ' << r.right << ' ' << r.bottom;
        wchar_t name[64];
        GetClassNameW(panel(p.number), name, 64);
        EXPECT_EQ(std::wstring(name), p.className) << p.number;
    }
}

TEST_F(PanelsTest, TheToolbarWorksOnceThereIsAModel)
{
    const int commands[] = {ID_WHOLEMODEL, ID_CENTRELOOKAT, ID_PREVIOUSVIEW, ID_INCREASEZOOM};
    start();
    for (const int command : commands) EXPECT_EQ(program().send(panel(ID_TOOLBAR), TB_ISBUTTONENABLED, static_cast<WPARAM>(command)), 0) << command;
    startWith(boxModel());
    for (const int command : commands) EXPECT_NE(program().send(panel(ID_TOOLBAR), TB_ISBUTTONENABLED, static_cast<WPARAM>(command)), 0) << command;

    const auto click = [&](int position) {
        RECT button{};
        program().sendRecordBehind(panel(ID_TOOLBAR), TB_GETITEMRECT, static_cast<WPARAM>(position), &button, sizeof button);
        clickAt(panel(ID_TOOLBAR), (button.left + button.right) / 2, (button.top + button.bottom) / 2);
    };
    click(3);
    EXPECT_NEAR(view().zoom, 0.364 * std::sqrt(2.0), 1e-5);
    click(2);
    EXPECT_NEAR(view().zoom, 0.364, 1e-5);
    ViewParameters aside;
    aside.lookAt = {0.2, 0.1, 0.3};
    show(aside);
    click(1);
    expectPoint(view().lookAt, 0, 0, 0, "centred");
    click(0);
    EXPECT_NEAR(view().zoom, 0.364, 1e-5);
}

TEST_F(PanelsTest, DraggingAMarkerMovesItInThatPlane)
{
    startWith(boxModel());
    ViewParameters from = view();
    from.eye = {-1.0, -0.9, 0.8};
    from.lookAt = {0.3, 0.1, -0.2};
    const struct { const char* why; int panel; bool eye, shift; } cases[] = {
        {"plan, eye", ID_PLAN, true, false},           {"plan, look-at", ID_PLAN, false, false},
        {"plan, eye with Shift", ID_PLAN, true, true}, {"plan, look-at with Shift", ID_PLAN, false, true},
        {"elevation, eye", ID_ELEVATION, true, false}, {"elevation, look-at with Shift", ID_ELEVATION, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        show(from);
        const int vertical = c.panel == ID_PLAN ? 1 : 2;
        const Point<3>& marker = c.eye ? from.eye : from.lookAt;
        const POINT press = pixel(c.panel, marker[0] * 0.5, marker[vertical] * -0.5), release = pixel(c.panel, 0.4, -0.35);
        if (c.shift) keyDown(VK_SHIFT);
        dragMouse(panel(c.panel), {press, {press.x + 9, press.y - 8}, release});
        if (c.shift) keyUp(VK_SHIFT);

        Point<3> dragged = marker, other = c.eye ? from.lookAt : from.eye;
        const double h = across(c.panel, release.x) * 2, v = down(c.panel, release.y) * -2;
        if (c.shift) {
            other[0] += h - dragged[0];
            other[vertical] += v - dragged[vertical];
        }
        dragged[0] = h;
        dragged[vertical] = v;
        const ViewParameters after = view();
        const Point<3>& isDragged = c.eye ? after.eye : after.lookAt;
        const Point<3>& isOther = c.eye ? after.lookAt : after.eye;
        expectPoint(isDragged, dragged[0], dragged[1], dragged[2], "the marker taken");
        expectPoint(isOther, other[0], other[1], other[2], "the other one");
    }
}

TEST_F(PanelsTest, APressBesideTheMarkersDragsNothing)
{
    startWith(boxModel());
    ViewParameters from = view();
    from.eye = {-1.0, -0.9, 0.8};
    show(from);
    const std::string before = savedParameters();
    const POINT lookAt = pixel(ID_PLAN, 0, 0);
    dragMouse(panel(ID_PLAN), {{lookAt.x + 10, lookAt.y}, {lookAt.x + 30, lookAt.y + 5}, {lookAt.x + 40, lookAt.y + 10}});
    EXPECT_EQ(savedParameters(), before) << "10 pixels are too far";
    dragMouse(panel(ID_PLAN), {{lookAt.x + 9, lookAt.y}, {lookAt.x + 30, lookAt.y + 5}, {lookAt.x + 40, lookAt.y + 10}});
    EXPECT_NE(savedParameters(), before) << "9 pixels are not";
}

TEST_F(PanelsTest, TheEyeSlideMovesAlongTheLineOfSight)
{
    startWith(boxModel());
    ViewParameters from = view();
    from.eye = {-1.2, -1.2, 0.9};
    const double distance = std::sqrt(1.2 * 1.2 * 2 + 0.9 * 0.9), s = squashed(distance);
    const HWND panelWindow = panel(ID_EYESLIDE);
    const int middle = sizeOf(panelWindow).cx / 2;
    const auto expectEyeAt = [&](double wanted, const char* why) {
        const double scale = wanted / distance;
        expectPoint(view().eye, -1.2 * scale, -1.2 * scale, 0.9 * scale, why);
    };

    show(from);
    clickMiddle(program().child(ID_ADVANCE, panelWindow));
    expectEyeAt(unsquashed(s * 0.9), "a tenth nearer");
    show(from);
    clickMiddle(program().child(ID_RETREAT, panelWindow));
    expectEyeAt(unsquashed(s * 1.1), "a tenth further");
    show(from);
    keyDown(VK_CONTROL);
    clickMiddle(program().child(ID_ADVANCE, panelWindow));
    keyUp(VK_CONTROL);
    expectEyeAt(unsquashed(s * 0.5), "half way with Ctrl");

    show(from);
    const LONG release = slide().row(0.7);
    dragMouse(panelWindow, {{middle, slide().row(s)}, {middle, slide().row(0.6)}, {middle + 3, release}});
    expectEyeAt(unsquashed(slide().coordinate(release)), "dragged");

    show(from);
    dragMouse(panelWindow, {{middle, slide().row(0)}, {middle, slide().row(-0.1)}, {middle, slide().row(-0.2)}});
    const double moved = -unsquashed(slide().coordinate(slide().row(-0.2))) / distance;
    expectPoint(view().lookAt, 1.2 * moved, 1.2 * moved, -0.9 * moved, "the look-at point beyond the centre");
    expectEyeAt(distance, "the eye stays");
}

TEST_F(PanelsTest, TheSphereTurnsTheEyeAndTheLights)
{
    startWith(boxModel());
    const ViewParameters from = view();
    const HWND sphere = panel(ID_SPHERE);
    const SIZE size = sizeOf(sphere);
    ASSERT_EQ(size.cx, 115) << "the pixels below belong to this size";
    const POINT light{49, 72}, eye{33, 81}, right{109, 57}, inside{70, 70};

    const struct { const char* why; WORD key; POINT to; double bearing, elevation; } cases[] = {
        {"to the rim", 0, right, 90, 0},
        {"far outside the rim", 0, {200, 57}, 90, 0},
        {"inside", 0, inside, 45, 58.1801948466054},
        {"to the grid with Shift", VK_SHIFT, inside, 45, 35.2643896827547},
        {"below the equator with Ctrl", VK_CONTROL, inside, 45, -58.1801948466054},
    };
    for (const auto& c : cases) {
        show(from);
        if (c.key) keyDown(c.key);
        dragMouse(sphere, {light, {60, 65}, c.to});
        if (c.key) keyUp(c.key);
        const ViewParameters after = view();
        EXPECT_NEAR(after.lights[0].bearing, c.bearing, 1e-3) << c.why;
        EXPECT_NEAR(after.lights[0].elevation, c.elevation, 1e-3) << c.why;
        EXPECT_EQ(after.lights[0].intensity, 0.6) << c.why;
    }

    show(from);
    const std::string before = savedParameters();
    moveMouse(sphere, light.x, light.y);
    pressButton();
    moveMouse(sphere, 80, 40);
    pressKeys({VK_ESCAPE});
    moveMouse(sphere, 90, 50);
    releaseButton();
    EXPECT_EQ(savedParameters(), before) << "Esc gives the drag up";

    dragMouse(sphere, {eye, {60, 80}, right});
    const double distance = 4.68668256792222;
    expectPoint(view().eye, distance, 0, 0, "the eye keeps its distance");

    const struct { const char* why; int button; WORD key; double bearing, elevation; } turns[] = {
        {"right", ID_EYERIGHT, 0, 1, 0}, {"left with Ctrl", ID_EYELEFT, VK_CONTROL, -5, 0},
        {"up with Ctrl", ID_EYEUP, VK_CONTROL, 0, 5}, {"down", ID_EYEDOWN, 0, 0, -1},
    };
    ViewParameters level = from;
    level.eye = {3, 0, 0};
    for (const auto& t : turns) {
        show(level);
        if (t.key) keyDown(t.key);
        clickMiddle(program().child(t.button, sphere));
        if (t.key) keyUp(t.key);
        const double b = (90 + t.bearing) * std::numbers::pi / 180, e = t.elevation * std::numbers::pi / 180;
        expectPoint(view().eye, 3 * std::sin(b) * std::cos(e), -3 * std::cos(b) * std::cos(e), 3 * std::sin(e), t.why);
    }
}

TEST_F(PanelsTest, SlidersSetIntensitiesAndFollowThem)
{
    startWith(boxModel());
    const LRESULT fresh[] = {7, 1, 9, 0, 0, 0, 0};
    for (int i = 0; i < 7; ++i) EXPECT_EQ(sliderPosition(i), fresh[i]) << i;

    clickAt(panel(ID_SLIDER), sizeOf(panel(ID_SLIDER)).cx - 14, 9);   // one page, four steps up
    EXPECT_EQ(sliderPosition(0), 11);
    EXPECT_EQ(view().skyIntensity, 1.0);
    for (const int index : {1, 4}) {
        program().send(panel(ID_SLIDER + index), TBM_SETPOS, TRUE, 21);
        program().send(program().child(ID_CONTROLS), WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0), handleParameter(panel(ID_SLIDER + index)));
    }
    ViewParameters bright = view();
    EXPECT_EQ(bright.groundIntensity, 10.0);
    EXPECT_EQ(bright.lights[2].intensity, 10.0);

    bright.groundIntensity = 0.0899;
    bright.lights[4].intensity = 1.0;
    bright.lights[0].intensity = 0.0;
    show(bright);
    const LRESULT shown[] = {11, 0, 0, 0, 21, 0, 11};
    for (int i = 0; i < 7; ++i) EXPECT_EQ(sliderPosition(i), shown[i]) << i;
}

TEST_F(PanelsTest, PointingAtAToolExplainsIt)
{
    startWith(boxModel());
    ViewParameters from = view();
    from.eye = {-1.2, -1.2, 0.9};
    show(from);
    const double s = squashed(std::sqrt(1.2 * 1.2 * 2 + 0.9 * 0.9));
    const int middle = sizeOf(panel(ID_EYESLIDE)).cx / 2;
    const struct { HWND window; POINT at; int tip, status; } tools[] = {
        {panel(ID_PLAN), pixel(ID_PLAN, -0.6, 0.6), 599, 1599},
        {panel(ID_PLAN), pixel(ID_PLAN, 0, 0), 600, 1600},
        {panel(ID_ELEVATION), pixel(ID_ELEVATION, -0.6, -0.45), 601, 1601},
        {panel(ID_ELEVATION), pixel(ID_ELEVATION, 0, 0), 602, 1602},
        {panel(ID_EYESLIDE), {middle, slide().row(s)}, 603, 1603},
        {panel(ID_EYESLIDE), {middle, slide().row(0)}, 604, 1604},
        {program().child(ID_ADVANCE, panel(ID_EYESLIDE)), {8, 8}, 589, 1589},
        {program().child(ID_RETREAT, panel(ID_EYESLIDE)), {8, 8}, 590, 1590},
        {panel(ID_SPHERE), {49, 72}, 516, 1607},
        {panel(ID_SPHERE), {33, 81}, 605, 1605},
        {panel(ID_SPHERE), {57, 57}, 606, 1606},
        {program().child(ID_EYELEFT, panel(ID_SPHERE)), {8, 8}, 591, 1591},
        {program().child(ID_EYERIGHT, panel(ID_SPHERE)), {8, 8}, 592, 1592},
        {program().child(ID_EYEUP, panel(ID_SPHERE)), {8, 8}, 593, 1593},
        {program().child(ID_EYEDOWN, panel(ID_SPHERE)), {8, 8}, 594, 1594},
        {panel(ID_SLIDER), {30, 9}, 514, 1514},
        {panel(ID_SLIDER + 2), {30, 9}, 516, 1516},
    };
    const auto tipShown = [&](const std::string& text) {
        for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
            if (IsWindowVisible(tip) && program().textOf(tip) == text) return true;
        return false;
    };
    for (const auto& tool : tools) {
        moveMouse(drawing(), 20, 20);
        EXPECT_TRUE(eventually([&] { return program().statusPart(0) != textOf(tool.status); }, 1500)) << tool.status << " stays";
        moveMouse(tool.window, tool.at.x, tool.at.y);
        moveMouse(tool.window, tool.at.x + 1, tool.at.y);
        EXPECT_TRUE(eventually([&] { return program().statusPart(0) == textOf(tool.status); }, 2000)) << tool.status << ": " << program().statusPart(0);
        EXPECT_TRUE(eventually([&] { return tipShown(textOf(tool.tip)); }, 500)) << "tooltip " << tool.tip;
    }
    moveMouse(drawing(), 20, 20);
}

TEST_F(PanelsTest, AnInterruptedDragLeavesTheScreenAsItWas)
{
    startWith(boxModel());
    ViewParameters from = view();
    from.eye = {-1.0, -0.9, 0.8};
    show(from);
    const std::string before = savedParameters();
    const double s = squashed(std::sqrt(1.0 + 0.81 + 0.64));
    const struct { const char* why; int panel; POINT press; } drags[] = {
        {"plan", ID_PLAN, pixel(ID_PLAN, -0.5, 0.45)},
        {"eye slide", ID_EYESLIDE, {sizeOf(panel(ID_EYESLIDE)).cx / 2, slide().row(s)}},
        {"sphere", ID_SPHERE, {49, 72}},
    };
    for (const auto& d : drags) {
        moveMouse(drawing(), 20, 20);
        Sleep(700);   // tooltips go
        const Picture untouched = screenOf(panel(d.panel));
        moveMouse(panel(d.panel), d.press.x, d.press.y);
        pressButton();
        moveMouse(panel(d.panel), 30, 40);
        EXPECT_NE(difference(screenOf(panel(d.panel)), untouched), "") << d.why << ": the drag shows";
        RedrawWindow(panel(d.panel), nullptr, nullptr, RDW_INVALIDATE);
        moveMouse(panel(d.panel), 24, 60);
        program().send(panel(d.panel), WM_CAPTURECHANGED, 0, 0);
        releaseButton();
        moveMouse(drawing(), 20, 20);
        EXPECT_TRUE(eventually([&] { return screenOf(panel(d.panel)) == untouched; }, 3000)) << d.why << ": " << difference(screenOf(panel(d.panel)), untouched);
    }
    EXPECT_EQ(savedParameters(), before);
}

}   // namespace belvor::window
