#include "tests/window/PanelsTest.h"
#include "ui/Messages.h"
#include "ui/UserLocale.h"
#include "ui/ValueText.h"
#include "ui/display/ZoomDrag.h"
#include "view/Intensity.h"
#include "view/ViewGestures.h"

#include <commctrl.h>

#include <cmath>

namespace belvor::window {

static const ModelPlace boxPlace{boxCentre, boxRadius};

PixelPoint PanelsTest::middleOf(HWND window, UINT getArea, WPARAM part) const
{
    RECT area{};
    program().sendRecord(window, getArea, part, &area, sizeof area);
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

std::function<void()> PanelsTest::dragging(HWND window, PixelPoint press, PixelPoint release, WORD key)
{
    return [=] {
        if (key) keyDown(key);
        dragMouse(window, {{press.x, press.y}, {release.x, release.y}});
        if (key) keyUp(key);
    };
}

std::function<void()> PanelsTest::pressing(int parent, int button, WORD key) const
{
    return dragging(program().child(button, panel(parent)), {8, 8}, {8, 8}, key);
}

std::function<void()> PanelsTest::typing(HWND window, std::vector<WORD> keys) const
{
    return [=, this] {
        tabTo(window);
        for (const WORD key : keys) program().send(window, WM_KEYDOWN, key);
        if (keys.front() == VK_SPACE)
            program().send(window, WM_KEYDOWN, VK_SPACE);   // the first marker again
    };
}

bool PanelsTest::tipShown(const std::string& text) const
{
    for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
        if (IsWindowVisible(tip) && program().textOf(tip) == text) return true;
    return false;
}

void PanelsTest::expectViews(const std::vector<ViewAct>& acts)
{
    for (const ViewAct& a : acts) {
        load(from);
        a.act();
        expectView(view(), a.wanted, a.why);
        pressKeys({VK_CONTROL, 'Z'});
        expectView(view(), from, std::string(a.why) + ", undone");
    }
}

TEST_F(PanelsTest, ADragMakesTheViewThatItsPanelAsksFor)
{
    startWith(boxModel());
    const HWND sphere = panel(ID_SPHERE);
    const PixelSize square = clientSize(panel(ID_PLAN)), area{drawnWidth, drawnHeight};
    const PixelPoint rim{109, 57}, inside{70, 70}, outside{-40, 100}, beside{640, 100};
    const auto clicked = [&](int x, int y) {
        return lookAtPixel(from, *buildScene(from, boxPlace, {}, drawnWidth, drawnHeight).camera,
                           boxPlace.viewToModel(), x, y);
    };
    expectViews({
        {"plan, look-at point with Shift, out of the panel",
         dragging(panel(ID_PLAN), lookAtPixel(plan(), square), outside, VK_SHIFT),
         planDrag(Thumbnail::plan, MarkerDrag::lookAtKeepingDistance, outside)},
        {"elevation, look-at point",
         dragging(panel(ID_ELEVATION), lookAtPixel(elevation(), square), {80, 37}),
         planDrag(Thumbnail::elevation, MarkerDrag::lookAt, {80, 37})},
        {"slide, look-at point",
         dragging(panel(ID_EYESLIDE), onSlide(eyeSlideRecord(from).lookAt), onSlide(-0.2)),
         slideDrag(MarkerDrag::lookAt, -0.2)},
        {"light, Ctrl", dragging(sphere, light(), inside, VK_CONTROL), sphereDrag(1, inside, {false, true})},
        {"eye, Shift", dragging(sphere, sphereEye(), rim, VK_SHIFT), sphereDrag(0, rim, {true, false})},
        {"a click in the picture, within what counts as no drag", dragging(drawing(), {100, 50}, {102, 51}),
         clicked(100, 50)},
        {"a rectangle larger than the picture", dragging(drawing(), {200, 250}, beside),
         zoomBy(from, zoomFactor(beside, area))},
        {"numbers of another program keep their sign",
         [&] { program().send(program().main(), UM_DISPLAYCLICK, static_cast<WPARAM>(-20), -10); },
         clicked(-20, -10)},
    });
    from = wholeModel(freshView(), {});   // the eye is outside the plan then
    const auto pointer = edgePointer(planEye(), square);
    ASSERT_TRUE(pointer);
    expectViews({{"the pointer to an eye far away", dragging(panel(ID_PLAN), *pointer, {30, 80}),
                  planDrag(Thumbnail::plan, MarkerDrag::eye, {30, 80})}});
}

TEST_F(PanelsTest, AButtonMakesTheViewThatItStandsFor)
{
    startWith(boxModel());
    const EyeSlideRecord along = eyeSlideRecord(from);
    const SphereDirection eye{eyeMarker(from).bearing, eyeMarker(from).elevation};
    const auto arrow = [&](SphereArrow which, bool large) { return turned(turnedEye(eye, which, large)); };
    const HWND toolbar = panel(ID_TOOLBAR);
    const auto tool = [&](WPARAM position) {
        const PixelPoint middle = middleOf(toolbar, TB_GETITEMRECT, position);
        return dragging(toolbar, middle, middle);
    };
    expectViews({
        {"advance, Ctrl", pressing(ID_EYESLIDE, ID_ADVANCE, VK_CONTROL),
         moveAlongSight(from, steppedSlide(along, false, true, false))},
        {"retreat, Shift", pressing(ID_EYESLIDE, ID_RETREAT, VK_SHIFT),
         moveAlongSight(from, steppedSlide(along, true, false, true))},
        {"right", pressing(ID_SPHERE, ID_EYERIGHT), arrow(SphereArrow::right, false)},
        {"left, Ctrl", pressing(ID_SPHERE, ID_EYELEFT, VK_CONTROL), arrow(SphereArrow::left, true)},
        {"up, Ctrl", pressing(ID_SPHERE, ID_EYEUP, VK_CONTROL), arrow(SphereArrow::up, true)},
        {"down", pressing(ID_SPHERE, ID_EYEDOWN), arrow(SphereArrow::down, false)},
        {"centre", tool(1), centreLookAt(from)},
        {"wider", tool(3), increaseZoomAngle(from)},
        {"wider by keys", typing(toolbar, {VK_END, VK_UP, VK_DOWN, VK_RETURN}), increaseZoomAngle(from)},
    });
    pressKeys({VK_CONTROL, 'Y'});
    expectView(view(), increaseZoomAngle(from), "redone");
    const HWND button = program().child(ID_EYERIGHT, panel(ID_SPHERE));
    load(from);
    dragMouse(button, {{8, 8}}, 1, 1300);
    const double steps = eyeMarker(view()).bearing - eye.bearing;
    EXPECT_GT(steps, 3.5) << "a held arrow goes on, by degrees";
    EXPECT_NEAR(steps, std::round(steps), 1e-3);
    program().command(ID_UNDO);
    expectView(view(), from, "held, undone");
}

TEST_F(PanelsTest, KeysMoveEveryMarkerAndThePicture)
{
    startWith(boxModel());
    const PixelSize square = clientSize(panel(ID_PLAN));
    const SphereDirection eye{eyeMarker(from).bearing, eyeMarker(from).elevation};
    const HWND up = program().child(ID_EYEUP, panel(ID_SPHERE));
    expectViews({
        {"plan, the eye", typing(panel(ID_PLAN), {VK_RIGHT}),
         moveMarkers(from, Thumbnail::plan, nudgedMarkers(plan(), MarkerDrag::eye, square, {1, 0}))},
        {"elevation, the look-at point", typing(panel(ID_ELEVATION), {VK_SPACE, VK_UP}),
         moveMarkers(from, Thumbnail::elevation,
                     nudgedMarkers(elevation(), MarkerDrag::lookAt, square, {0, -1}))},
        {"slide, the eye", typing(panel(ID_EYESLIDE), {VK_DOWN}),
         moveAlongSight(from, nudgedSlide(eyeSlideRecord(from), MarkerDrag::eye, slide(), 1))},
        {"sphere, the eye", typing(panel(ID_SPHERE), {VK_LEFT}), turned(disc().nudged(eye, {-1, 0}))},
        {"sphere, the light", typing(panel(ID_SPHERE), {VK_SPACE, VK_DOWN}),
         turned(disc().nudged({-30, 60}, {0, 1}), 1)},
        {"the picture", typing(drawing(), {VK_RIGHT}), turned({eye.bearing + 1, eye.elevation})},
        {"the picture, closer", typing(drawing(), {VK_PRIOR}), zoomBy(from, std::exp2(-1.0 / 8))},
        {"a button", typing(up, {VK_RETURN}), turned({eye.bearing, eye.elevation + 1})},
    });
    pressKeys({VK_CONTROL, '2'});
    const ViewParameters front = view();
    EXPECT_TRUE(front.parallel && front.eye[1] < -1 && std::fabs(front.eye[2]) < 1e-5) << "from the front";
}

TEST_F(PanelsTest, TheWheelAndTheOtherButtonsMoveTheView)
{
    startWith(boxModel());
    using Kind = ViewGesture::Kind;
    const auto stepped = [&](const std::vector<ViewGesture>& steps) {
        ViewParameters view = from;
        for (const ViewGesture& step : steps)
            view = gestured(view, step, *buildScene(view, boxPlace, {}, drawnWidth, drawnHeight).camera,
                            boxPlace.viewToModel());
        return view;
    };
    const double degrees = turnedDegrees(1, drawnWidth, drawnHeight);
    const auto drag = [&](int button) {
        return [=, this] {
            dragMouse(drawing(), {{300, 200}, {320, 190}, {360, 230}}, button);
            moveMouse(drawing(), 300, 200);   // not dragged any more
        };
    };
    const auto wheel = [&](HWND window, int notches, bool away, WORD key = 0) {
        return [=] {
            moveMouse(window, 20, 150);
            if (key) keyDown(key);
            for (int k = 0; k < notches; ++k) turnWheel(away);
            if (key) keyUp(key);
        };
    };
    expectViews({
        {"right", drag(3), stepped({{Kind::turn, 60 * degrees, 30 * degrees, 1}})},
        {"middle", drag(2), stepped({{Kind::pan, 20, -10, 1}, {Kind::pan, 40, 40, 1}})},
        {"wheel", wheel(drawing(), 2, true), stepped({{Kind::zoom, 0, 2, 1}})},
        {"wheel, Shift", wheel(drawing(), 1, false, VK_SHIFT), stepped({{Kind::turn, -5, 0, 1}})},
        {"wheel over the slide", wheel(panel(ID_EYESLIDE), 2, true), stepped({{Kind::advance, 0, 2, 1}})},
    });
    load(from);
    dragMouse(drawing(), {{300, 200}}, 3);
    expectView(view(), from, "a right click alone");
}

TEST_F(PanelsTest, SlidersSetIntensitiesAndFollowThem)
{
    startWith(boxModel());
    const auto positions = [&] {
        std::vector<LRESULT> all;
        for (int id = ID_SLIDER; id <= ID_SLIDERLAST; ++id)
            all.push_back(program().send(panel(id), TBM_GETPOS));
        return all;
    };
    EXPECT_EQ(positions(), (std::vector<LRESULT>{7, 1, 9, 0, 0, 0, 0}));
    const std::string before = savedParameters();
    dragging(panel(ID_SLIDER), thumb(ID_SLIDER), thumb(ID_SLIDER))();
    EXPECT_EQ(savedParameters(), before) << "a thumb that is pressed and let go changes nothing";
    dragMouse(panel(ID_SLIDER), {{clientSize(panel(ID_SLIDER)).width - 14, 9}});   // one page, four steps up
    program().send(panel(ID_SLIDER + 4), TBM_SETPOS, TRUE, 21);
    program().send(program().child(ID_CONTROLS), WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0),
                   handleParameter(panel(ID_SLIDER + 4)));
    ViewParameters bright = wholeModel(freshView(), {});
    bright.skyIntensity = 1.0;
    bright.lights[2].intensity = 10.0;
    expectView(view(), bright, "set");
    EXPECT_EQ(positions(), (std::vector<LRESULT>{11, 1, 9, 0, 21, 0, 0}));
}

TEST_F(PanelsTest, PointingAtAToolExplainsIt)
{
    startWith(boxModel());
    load(from);
    // Columns: the window, where, the number of the tooltip and that of the text in the status bar.
    const std::tuple<HWND, PixelPoint, int, int> tools[] = {
        {panel(ID_PLAN), planEye(), 599, 1599},
        {panel(ID_ELEVATION), lookAtPixel(elevation(), clientSize(panel(ID_ELEVATION))), 602, 1602},
        {panel(ID_EYESLIDE), slideEye(), 603, 1603},
        {program().child(ID_RETREAT, panel(ID_EYESLIDE)), {8, 8}, 590, 1590},
        {panel(ID_SPHERE), light(), 516, 1607},
        {panel(ID_SPHERE), sphereEye(), 605, 1605},
        {panel(ID_SLIDER + 2), {30, 9}, 516, 1516},
    };
    for (const auto& [window, at, tip, status] : tools) {
        moveMouse(drawing(), 20, 20);
        EXPECT_TRUE(program().awaitStatus("")) << program().statusPart(0) << " stays";
        for (const int x : {at.x, at.x + 1}) moveMouse(window, x, at.y);
        EXPECT_TRUE(program().awaitStatus(textOf(static_cast<Text>(status)))) << program().statusPart(0);
        EXPECT_TRUE(eventually([&, tip = tip] { return tipShown(textOf(static_cast<Text>(tip))); }, 500))
            << tip;
    }
}

TEST_F(PanelsTest, ALongDragShowsItsValueBesideThePointer)
{
    startWith(boxModel());
    load(from);
    const std::string point = userDecimalPoint();
    const PixelPoint planTo{40, 30}, slideTo = onSlide(2.5), sphereTo{60, 50};
    const PanelPoint planValue = pixelToPanel(planTo.x, planTo.y, clientSize(panel(ID_PLAN)));
    const SphereDirection direction = disc().toDirection(sphereTo.x, sphereTo.y, {});
    const double eye = draggedSlide(eyeSlideRecord(from), MarkerDrag::eye, slide(), slideTo.y).eye;
    const std::tuple<HWND, PixelPoint, PixelPoint, std::string> drags[] = {
        {panel(ID_PLAN), planEye(), planTo, panelPointText(Thumbnail::plan, planValue.h, planValue.v, point)},
        {panel(ID_EYESLIDE), slideEye(), slideTo, slideText(eye, point)},
        {panel(ID_SPHERE), light(), sphereTo, directionText(direction.bearing, direction.elevation)},
    };
    for (const auto& [window, press, to, value] : drags) {
        moveMouse(window, press.x, press.y);
        pressButton();
        EXPECT_TRUE(eventually([&, window = window, to = to, value = value] {
            for (const int x : {to.x + 1, to.x}) moveMouse(window, x, to.y);
            return tipShown(value);
        })) << value;
        releaseButton();
        EXPECT_TRUE(eventually([&, value = value] { return !tipShown(value); })) << value << " stays";
        load(from);
    }
}

TEST_F(PanelsTest, AnInterruptedDragLeavesTheScreenAndTheViewAsTheyWere)
{
    startWith(boxModel());
    load(from);
    EXPECT_EQ(awaitPicture(rendered(boxModel(), from.text(boxCentre, boxRadius))), "");
    const std::string before = savedParameters();
    const auto pressEscape = [](HWND) { pressKeys({VK_ESCAPE}); };
    const std::tuple<HWND, PixelPoint, std::function<void(HWND)>> drags[] = {
        {panel(ID_PLAN), planEye(), [&](HWND window) { program().send(window, WM_CAPTURECHANGED, 0, 0); }},
        {panel(ID_EYESLIDE), slideEye(), pressEscape},
        {panel(ID_SPHERE), light(), pressEscape},
        {drawing(), {300, 200}, [](HWND) { pressButton(3), releaseButton(3); }},
        {drawing(), {300, 200}, pressEscape},
    };
    for (const auto& [window, press, interrupt] : drags) {
        SCOPED_TRACE(GetDlgCtrlID(window));
        moveMouse(program().child(ID_STATUSBAR), 5, 5);
        Sleep(700);   // tooltips go
        const Picture untouched = screenOf(window);
        moveMouse(window, press.x, press.y);
        pressButton();
        moveMouse(window, 30, 40);
        const Picture dragged = screenOf(window);
        EXPECT_NE(dragged, untouched) << "the drag shows";
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(difference(screenOf(window), dragged), "") << "painted";
        moveMouse(window, 24, 60);
        interrupt(window);
        releaseButton();
        moveMouse(program().child(ID_STATUSBAR), 5, 5);
        EXPECT_TRUE(eventually([&] { return screenOf(window) == untouched; }, 3000));
    }
    EXPECT_EQ(savedParameters(), before);
}

TEST_F(PanelsTest, ADragDuringARenderLeavesNoTrace)
{
    const std::string model = sheetsModel(100000, 0.05);
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

}   // namespace belvor::window
