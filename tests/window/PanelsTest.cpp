#include "tests/window/WindowTest.h"
#include "ui/Messages.h"
#include "ui/display/ZoomDrag.h"
#include "ui/panels/PlanGeometry.h"
#include "ui/panels/SlideScale.h"
#include "ui/panels/SphereProjection.h"
#include "view/Intensity.h"
#include "view/SceneBuilder.h"
#include "view/ViewCommands.h"
#include "view/ViewEdits.h"
#include "view/ViewGestures.h"

#include <commctrl.h>

namespace belvor::window {

/// What the mouse does in the drawing area and the panels: the geometry and the edits have tests
/// of their own, these show that the windows lead from one to the other.
class PanelsTest : public WindowTest {
protected:
    PanelsTest()
    {
        from.eye = {-1.0, -0.9, 0.8};
        from.lookAt = {0.3, 0.1, -0.2};
    }
    PixelSize pixels(int number) { return {sizeOf(panel(number)).cx, sizeOf(panel(number)).cy}; }
    SlideScale slide() { return SlideScale(pixels(ID_EYESLIDE), GetSystemMetrics(SM_CYVSCROLL)); }
    PixelPoint onSlide(double position) { return {slide().x, slide().toPixel(position)}; }
    PixelPoint onDisc(double bearing, double elevation)
    {
        return SphereDisc(pixels(ID_SPHERE)).toPixel({bearing, elevation});
    }

    ViewParameters planDrag(Thumbnail which, MarkerDrag drag, PixelPoint to)
    {
        return moveMarkers(from, which,
                           draggedMarkers(viewMarkers(from, which), drag, pixels(ID_PLAN), to.x, to.y));
    }
    ViewParameters slideDrag(MarkerDrag drag, double to)
    {
        return moveAlongSight(from, draggedSlide(eyeSlideRecord(from), drag, slide(), onSlide(to).y));
    }
    ViewParameters sphereDrag(std::uint32_t item, PixelPoint to, SphereKeys keys)
    {
        const SphereDirection direction = SphereDisc(pixels(ID_SPHERE)).toDirection(to.x, to.y, keys);
        return turn(from, {direction.bearing, direction.elevation, item});
    }
    ViewParameters turned(SphereArrow arrow, bool large)
    {
        const SphereMarker eye = eyeMarker(from);
        const SphereDirection direction = turnedEye({eye.bearing, eye.elevation}, arrow, large);
        return turn(from, {direction.bearing, direction.elevation, 0});
    }
    ViewParameters clicked(int x, int y) const
    {
        const ModelPlace place{boxCentre, boxRadius};
        return lookAtPixel(from, *buildScene(from, place, {}, drawnWidth, drawnHeight).camera,
                           place.viewToModel(), x, y);
    }

    ViewParameters from = wholeModel(freshView(), {});
};

TEST_F(PanelsTest, ADragMakesTheViewThatItsPanelAsksFor)
{
    startWith(boxModel());
    const ViewMarkers plan = viewMarkers(from, Thumbnail::plan),
                      elevation = viewMarkers(from, Thumbnail::elevation);
    const EyeSlideRecord along = eyeSlideRecord(from);
    const SphereMarker eye = eyeMarker(from);
    const PixelSize square = pixels(ID_PLAN), area{drawnWidth, drawnHeight};
    const PixelPoint there{80, 37}, rim{109, 57}, inside{70, 70}, outside{-40, 100}, beside{640, 100};
    const struct {
        const char* why;
        HWND window;
        PixelPoint press, release;
        WORD key;
        ViewParameters wanted;
    } drags[] = {
        {"plan, eye", panel(ID_PLAN), eyePixel(plan, square), there, 0,
         planDrag(Thumbnail::plan, MarkerDrag::eye, there)},
        {"plan, look-at point with Shift, out of the panel", panel(ID_PLAN), lookAtPixel(plan, square),
         outside, VK_SHIFT, planDrag(Thumbnail::plan, MarkerDrag::lookAtKeepingDistance, outside)},
        {"elevation, look-at point", panel(ID_ELEVATION), lookAtPixel(elevation, square), there, 0,
         planDrag(Thumbnail::elevation, MarkerDrag::lookAt, there)},
        {"slide, eye", panel(ID_EYESLIDE), onSlide(along.eye), onSlide(0.7), 0,
         slideDrag(MarkerDrag::eye, 0.7)},
        {"slide, look-at point", panel(ID_EYESLIDE), onSlide(along.lookAt), onSlide(-0.2), 0,
         slideDrag(MarkerDrag::lookAt, -0.2)},
        {"sphere, light", panel(ID_SPHERE), onDisc(-30, 60), inside, 0, sphereDrag(1, inside, {})},
        {"sphere, light with Ctrl", panel(ID_SPHERE), onDisc(-30, 60), inside, VK_CONTROL,
         sphereDrag(1, inside, {false, true})},
        {"sphere, eye with Shift", panel(ID_SPHERE), onDisc(eye.bearing, eye.elevation), rim, VK_SHIFT,
         sphereDrag(0, rim, {true, false})},
        {"a click in the picture, within what counts as no drag",
         drawing(),
         {100, 50},
         {102, 51},
         0,
         clicked(100, 50)},
        {"a rectangle", drawing(), {300, 200}, {456, 228}, 0, zoomBy(from, zoomFactor({456, 228}, area))},
        {"a rectangle larger than the picture",
         drawing(),
         {200, 250},
         beside,
         0,
         zoomBy(from, zoomFactor(beside, area))},
    };
    for (const auto& d : drags) {
        show(from);
        if (d.key) keyDown(d.key);
        dragMouse(d.window, {{d.press.x, d.press.y}, {d.release.x, d.release.y}});
        if (d.key) keyUp(d.key);
        expectView(view(), d.wanted, d.why);
    }
    show(from);
    program().send(program().main(), UM_DISPLAYCLICK, static_cast<WPARAM>(-20), -10);
    expectView(view(), clicked(-20, -10), "numbers of another program keep their sign");
}

TEST_F(PanelsTest, AButtonMakesTheViewThatItStandsFor)
{
    start();
    const int commands[] = {ID_WHOLEMODEL, ID_CENTRELOOKAT, ID_PREVIOUSVIEW,
                            ID_INCREASEZOOM};   // top to bottom
    const HWND toolbar = panel(ID_TOOLBAR);
    for (const int c : commands)
        EXPECT_EQ(program().send(toolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(c)), 0) << c;
    startWith(boxModel());
    const EyeSlideRecord along = eyeSlideRecord(from);
    const HWND slidePanel = panel(ID_EYESLIDE), sphere = panel(ID_SPHERE);
    const struct {
        HWND window;
        int button;
        WORD key;
        ViewParameters wanted;
    } buttons[] = {
        {slidePanel, ID_ADVANCE, VK_CONTROL, moveAlongSight(from, steppedSlide(along, false, true, false))},
        {slidePanel, ID_RETREAT, VK_SHIFT, moveAlongSight(from, steppedSlide(along, true, false, true))},
        {sphere, ID_EYERIGHT, 0, turned(SphereArrow::right, false)},
        {sphere, ID_EYELEFT, VK_CONTROL, turned(SphereArrow::left, true)},
        {sphere, ID_EYEUP, VK_CONTROL, turned(SphereArrow::up, true)},
        {sphere, ID_EYEDOWN, 0, turned(SphereArrow::down, false)},
    };
    for (const auto& b : buttons) {
        show(from);
        if (b.key) keyDown(b.key);
        press(b.window, b.button);
        if (b.key) keyUp(b.key);
        expectView(view(), b.wanted, std::to_string(b.button));
    }
    show(from);
    const ViewParameters centred = centreLookAt(from), wider = increaseZoomAngle(centred);
    const struct {
        int position;
        const ViewParameters& wanted;
    } clicks[] = {
        {1, centred},
        {3, wider},
        {2, centred},
        {0, wholeModel(freshView(), {})},
    };
    for (const auto& c : clicks) {
        RECT r{};
        program().sendRecord(panel(ID_TOOLBAR), TB_GETITEMRECT, static_cast<WPARAM>(c.position), &r,
                             sizeof r);
        dragMouse(panel(ID_TOOLBAR), {{(r.left + r.right) / 2, (r.top + r.bottom) / 2}});
        expectView(view(), c.wanted, "toolbar " + std::to_string(c.position));
    }
}

TEST_F(PanelsTest, SlidersSetIntensitiesAndFollowThem)
{
    startWith(boxModel());
    const auto expectPositions = [&](std::initializer_list<LRESULT> wanted) {
        int slider = ID_SLIDER;
        for (const LRESULT position : wanted)
            EXPECT_EQ(program().send(panel(slider++), TBM_GETPOS), position) << slider - 1;
    };
    expectPositions({7, 1, 9, 0, 0, 0, 0});
    const std::string before = savedParameters();
    RECT thumb{};
    program().sendRecord(panel(ID_SLIDER), TBM_GETTHUMBRECT, 0, &thumb, sizeof thumb);
    dragMouse(panel(ID_SLIDER), {{(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2}});
    EXPECT_EQ(savedParameters(), before) << "a thumb that is pressed and let go changes nothing";
    dragMouse(panel(ID_SLIDER), {{sizeOf(panel(ID_SLIDER)).cx - 14, 9}});   // one page, four steps up
    program().send(panel(ID_SLIDER + 4), TBM_SETPOS, TRUE, 21);
    program().send(program().child(ID_CONTROLS), WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0),
                   handleParameter(panel(ID_SLIDER + 4)));
    ViewParameters bright = wholeModel(freshView(), {});
    bright.skyIntensity = 1.0;
    bright.lights[2].intensity = 10.0;
    expectView(view(), bright, "set");

    bright.groundIntensity = 0.0899;
    bright.lights[4].intensity = 1.0;
    bright.lights[0].intensity = 0.0;
    show(bright);
    expectPositions({11, 0, 0, 0, 21, 0, 11});
}

TEST_F(PanelsTest, AModelThatArrivesEndsADragWithoutARequest)
{
    startWith(boxModel());
    const std::string untouched = savedParameters(), other = inFolder("other.thf"),
                      image = inFolder("drag.omb");
    writeFile(other, readFile(boxModel()));
    from = wholeModel(freshView(), {});
    const SphereMarker eye = eyeMarker(from);
    RECT thumb{};
    program().sendRecord(panel(ID_SLIDER), TBM_GETTHUMBRECT, 0, &thumb, sizeof thumb);
    const struct {
        const char* why;
        HWND window;
        PixelPoint press;
    } drags[] = {
        {"plan", panel(ID_PLAN), eyePixel(viewMarkers(from, Thumbnail::plan), pixels(ID_PLAN))},
        {"slide", panel(ID_EYESLIDE), onSlide(eyeSlideRecord(from).eye)},
        {"sphere", panel(ID_SPHERE), onDisc(eye.bearing, eye.elevation)},
        {"slider", panel(ID_SLIDER), {(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2}},
        {"picture", drawing(), {300, 200}},
    };
    std::string next = other;
    for (const auto& d : drags) {
        saveAs(image);   // no question before the next model, which would end the drag by itself
        await("the picture", [&] { return !readFile(image).empty(); });
        moveMouse(d.window, d.press.x, d.press.y);
        pressButton();
        moveMouse(d.window, d.press.x + 30, d.press.y + 25);
        program().dropFile(next);
        awaitModel(next);
        releaseButton();
        EXPECT_EQ(savedParameters(), untouched) << d.why;
        next = next == other ? boxModel() : other;
    }
}

TEST_F(PanelsTest, PointingAtAToolExplainsIt)
{
    startWith(boxModel());
    show(from);
    const ViewMarkers plan = viewMarkers(from, Thumbnail::plan),
                      elevation = viewMarkers(from, Thumbnail::elevation);
    const SphereMarker eye = eyeMarker(from);
    const PixelSize square = pixels(ID_PLAN);
    const auto button = [&](int parent, int number) { return program().child(number, panel(parent)); };
    const struct {
        HWND window;
        PixelPoint at;
        int tip, status;
    } tools[] = {
        {panel(ID_PLAN), eyePixel(plan, square), 599, 1599},
        {panel(ID_ELEVATION), lookAtPixel(elevation, square), 602, 1602},
        {panel(ID_EYESLIDE), onSlide(eyeSlideRecord(from).eye), 603, 1603},
        {button(ID_EYESLIDE, ID_RETREAT), {8, 8}, 590, 1590},
        {panel(ID_SPHERE), onDisc(-30, 60), 516, 1607},
        {panel(ID_SPHERE), onDisc(eye.bearing, eye.elevation), 605, 1605},
        {button(ID_SPHERE, ID_EYELEFT), {8, 8}, 591, 1591},
        {panel(ID_SLIDER + 2), {30, 9}, 516, 1516},
    };
    const auto tipShown = [&](const std::string& text) {
        for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
            if (IsWindowVisible(tip) && program().textOf(tip) == text) return true;
        return false;
    };
    for (const auto& tool : tools) {
        moveMouse(drawing(), 20, 20);
        EXPECT_TRUE(eventually(
            [&] { return program().statusPart(0) != textOf(static_cast<Text>(tool.status)); }, 1500))
            << tool.status << " stays";
        moveMouse(tool.window, tool.at.x, tool.at.y);
        moveMouse(tool.window, tool.at.x + 1, tool.at.y);
        EXPECT_TRUE(program().awaitStatus(textOf(static_cast<Text>(tool.status))))
            << tool.status << ": " << program().statusPart(0);
        EXPECT_TRUE(eventually([&] { return tipShown(textOf(static_cast<Text>(tool.tip))); }, 500))
            << "tooltip " << tool.tip;
    }
    moveMouse(drawing(), 20, 20);
}

TEST_F(PanelsTest, AnInterruptedDragLeavesTheScreenAndTheViewAsTheyWere)
{
    startWith(boxModel());
    show(from);
    const std::string before = savedParameters();
    const auto endCapture = [&](HWND window) { program().send(window, WM_CAPTURECHANGED, 0, 0); };
    const auto pressEscape = [](HWND) { pressKeys({VK_ESCAPE}); };
    const auto clickRight = [](HWND) { rightClick(); };
    const struct {
        const char* why;
        HWND window;
        PixelPoint press;
        std::function<void(HWND)> interrupt;
    } drags[] = {
        {"plan", panel(ID_PLAN), eyePixel(viewMarkers(from, Thumbnail::plan), pixels(ID_PLAN)), endCapture},
        {"eye slide", panel(ID_EYESLIDE), onSlide(eyeSlideRecord(from).eye), endCapture},
        {"sphere", panel(ID_SPHERE), onDisc(-30, 60), pressEscape},
        {"drawing area", drawing(), {300, 200}, clickRight},
    };
    for (const auto& d : drags) {
        moveMouse(program().child(ID_STATUSBAR), 5, 5);
        Sleep(700);   // tooltips go
        const Picture untouched = screenOf(d.window);
        moveMouse(d.window, d.press.x, d.press.y);
        pressButton();
        moveMouse(d.window, 30, 40);
        const Picture dragged = screenOf(d.window);
        EXPECT_NE(dragged, untouched) << d.why << ": the drag shows";
        RedrawWindow(d.window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(difference(screenOf(d.window), dragged), "") << d.why << ", painted";
        moveMouse(d.window, 24, 60);
        d.interrupt(d.window);
        releaseButton();
        moveMouse(program().child(ID_STATUSBAR), 5, 5);
        EXPECT_TRUE(eventually([&] { return screenOf(d.window) == untouched; }, 3000)) << d.why;
    }
    EXPECT_EQ(savedParameters(), before);
}

TEST_F(PanelsTest, TheWheelAndTheOtherButtonsMoveTheViewAndAreOneChange)
{
    startWith(boxModel());
    const ModelPlace place{boxCentre, boxRadius};
    const auto stepped = [&](ViewParameters view, const std::vector<ViewGesture>& steps) {
        for (const ViewGesture& step : steps)
            view = gestured(view, step, *buildScene(view, place, {}, drawnWidth, drawnHeight).camera,
                            place.viewToModel());
        return view;
    };
    using Kind = ViewGesture::Kind;
    const double degrees = turnedDegrees(1, drawnWidth, drawnHeight);
    const auto drag = [&](int button) {
        moveMouse(drawing(), 300, 200);
        pressOther(button);
        moveMouse(drawing(), 320, 190);
        moveMouse(drawing(), 360, 230);
        releaseOther(button);
        moveMouse(drawing(), 300, 200);   // not dragged any more
    };
    const auto wheel = [&](HWND window) {
        moveMouse(window, 20, 150);
        turnWheel(true);
        turnWheel(true);
    };
    const auto shiftWheel = [&] {
        moveMouse(drawing(), 300, 200);
        keyDown(VK_SHIFT);
        turnWheel(false);
        keyUp(VK_SHIFT);
    };
    const struct {
        const char* why;
        std::function<void()> gesture;
        ViewParameters wanted;
    } cases[] = {
        {"right", [&] { drag(3); }, stepped(from, {{Kind::turn, 60 * degrees, 30 * degrees, 1}})},
        {"middle", [&] { drag(2); }, stepped(from, {{Kind::pan, 20, -10, 1}, {Kind::pan, 40, 40, 1}})},
        {"wheel", [&] { wheel(drawing()); }, stepped(from, {{Kind::zoom, 0, 2, 1}})},
        {"wheel with Shift", shiftWheel, stepped(from, {{Kind::turn, -5, 0, 1}})},
        {"wheel over the slide", [&] { wheel(panel(ID_EYESLIDE)); },
         stepped(from, {{Kind::advance, 0, 2, 1}})},
    };
    for (const auto& c : cases) {
        show(from);
        c.gesture();
        expectView(view(), c.wanted, c.why);
        program().command(ID_PREVIOUSVIEW);
        expectView(view(), from, std::string(c.why) + ", before the whole gesture");
    }
    show(from);
    moveMouse(drawing(), 300, 200);
    rightClick();
    expectView(view(), from, "a right click alone");
}

TEST_F(PanelsTest, AViewWithFewerLightsTakesTheOthersAway)
{
    startWith(boxModel());
    program().send(program().main(), UM_LIGHTINTENSITY, 2, 0);   // the first light would cover the other
    moveMouse(program().child(ID_STATUSBAR), 5, 5);
    const HWND sphere = panel(ID_SPHERE);
    RedrawWindow(sphere, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const Picture before = screenOf(sphere);
    program().send(program().main(), UM_LIGHTINTENSITY, 8, 15);   // the seventh light: there are five
    EXPECT_TRUE(eventually([&] { return screenOf(sphere) != before; }, 2000)) << "its marker shows";
    program().command(ID_PREVIOUSVIEW);
    EXPECT_TRUE(eventually([&] { return screenOf(sphere) == before; }, 2000)) << "and goes";
}

TEST_F(PanelsTest, ADragDuringARenderLeavesNoTrace)
{
    const std::string model = sphereModel(200000);
    startWith(model);
    const Picture picture = rendered(model);
    ASSERT_EQ(awaitPicture(picture), "");
    for (int k = 0; k < 3; ++k) {
        program().command(ID_INCREASEZOOM);
        program().command(ID_WHOLEMODEL);   // a render of some tenths of a second
        moveMouse(drawing(), 300, 200);
        pressButton();
        for (int across = 310; across < 500; across += 40) moveMouse(drawing(), across, 150);
        program().send(drawing(), WM_RBUTTONDOWN, 0, MAKELPARAM(10, 10));
        releaseButton();
        EXPECT_EQ(awaitPicture(picture), "");
    }
}

TEST_F(PanelsTest, WithoutAModelTheMouseAsksForNothing)
{
    start();
    dragMouse(drawing(), {{100, 100}, {200, 200}, {300, 250}});
    dragMouse(drawing(), {{50, 50}});
    EXPECT_EQ(countOther(screenOf(drawing()), 0), 0);
    EXPECT_EQ(close(), 0) << "no view to save, no question";
}

}   // namespace belvor::window
