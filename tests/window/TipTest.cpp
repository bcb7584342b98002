#include "tests/window/Input.h"
#include "tests/window/PanelsTest.h"
#include "ui/UserLocale.h"
#include "ui/ValueText.h"

#include <commctrl.h>

namespace belvor::window {

TEST_F(PanelsTest, ALongDragShowsItsValueBesideThePointer)
{
    startWith(boxModel());
    load(from);
    const std::string point = userDecimalPoint();
    const PixelPoint planTo{40, 30}, slideTo = onSlide(2.5), sphereTo{60, 50};
    const PanelPoint planValue = pixelToPanel(planTo.x, planTo.y, clientSize(panel(ID_PLAN)));
    const SphereDirection sphereValue = disc().toDirection(sphereTo.x, sphereTo.y, {});
    const EyeSlideRecord slideValue = draggedSlide(eyeSlideRecord(from), MarkerDrag::eye, slide(), slideTo.y);
    const struct {
        int panel;
        PixelPoint press, to;
        std::string value;
    } drags[] = {
        {ID_PLAN, planEye(), planTo, panelPointText(Thumbnail::plan, planValue.h, planValue.v, point)},
        {ID_EYESLIDE, slideEye(), slideTo, slideText(slideValue.eye, point)},
        {ID_SPHERE, light(), sphereTo, directionText(sphereValue.bearing, sphereValue.elevation)},
    };
    const auto tipShows = [&](const std::string& text) {
        for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
            if (IsWindowVisible(tip) && program().textOf(tip) == text) return true;
        return false;
    };
    for (const auto& drag : drags) {
        HWND const window = panel(drag.panel);
        moveMouse(window, drag.press.x, drag.press.y);
        pressButton();
        EXPECT_TRUE(eventually([&] {
            moveMouse(window, drag.to.x + 1, drag.to.y);
            moveMouse(window, drag.to.x, drag.to.y);
            return tipShows(drag.value);
        })) << drag.value;
        releaseButton();
        EXPECT_TRUE(eventually([&] { return !tipShows(drag.value); })) << drag.value << " stays";
        load(from);
    }
}

}   // namespace belvor::window
