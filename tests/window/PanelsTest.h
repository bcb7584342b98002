#pragma once

#include "tests/window/WindowTest.h"
#include "ui/ClientSize.h"
#include "ui/WindowScale.h"
#include "ui/panels/PlanGeometry.h"
#include "ui/panels/SlideScale.h"
#include "ui/panels/SphereProjection.h"
#include "view/SceneBuilder.h"
#include "view/ViewCommands.h"
#include "view/ViewEdits.h"

#include <functional>

namespace belvor::window {

/// A user's act, and the view that it makes of `from`.
struct ViewAct {
    const char* why;
    std::function<void()> act;
    ViewParameters wanted;
};

/// Where the panels show the view `from`, and the views that drags there ask for. The geometry and the edits
/// have tests of their own; these show that the windows lead from one to the other.
class PanelsTest : public WindowTest {
protected:
    PanelsTest()
    {
        from.eye = {-1.013, -0.907, 0.8};   // its pixel is the same with the six digits of a file
        from.lookAt = {0.3, 0.1, -0.2};
    }

    ViewMarkers plan() const { return viewMarkers(from, Thumbnail::plan); }
    ViewMarkers elevation() const { return viewMarkers(from, Thumbnail::elevation); }
    SlideScale slide() const
    {
        return SlideScale(clientSize(panel(ID_EYESLIDE)), metricOf(panel(ID_EYESLIDE), SM_CYVSCROLL), scale);
    }
    SphereDisc disc() const { return SphereDisc(clientSize(panel(ID_SPHERE)), scale); }
    PixelPoint planEye() const { return eyePixel(plan(), clientSize(panel(ID_PLAN))); }
    PixelPoint onSlide(double position) const { return {slide().x, slide().toPixel(position)}; }
    PixelPoint slideEye() const { return onSlide(eyeSlideRecord(from).eye); }
    PixelPoint sphereEye() const
    {
        return disc().toPixel({eyeMarker(from).bearing, eyeMarker(from).elevation});
    }
    PixelPoint light() const { return disc().toPixel({-30, 60}); }
    /// The middle of a part of a control, by the message that gives its area.
    PixelPoint middleOf(HWND window, UINT getArea, WPARAM part) const;
    PixelPoint thumb(int slider) const { return middleOf(panel(slider), TBM_GETTHUMBRECT, 0); }

    ViewParameters planDrag(Thumbnail which, MarkerDrag drag, PixelPoint to) const
    {
        return moveMarkers(
            from, which,
            draggedMarkers(viewMarkers(from, which), drag, clientSize(panel(ID_PLAN)), to.x, to.y));
    }
    ViewParameters slideDrag(MarkerDrag drag, double to) const
    {
        return moveAlongSight(from, draggedSlide(eyeSlideRecord(from), drag, slide(), onSlide(to).y));
    }
    ViewParameters turned(const SphereDirection& to, std::uint32_t item = 0) const
    {
        return turn(from, {to.bearing, to.elevation, item});
    }
    ViewParameters sphereDrag(std::uint32_t item, PixelPoint to, SphereKeys keys = {}) const
    {
        return turned(disc().toDirection(to.x, to.y, keys), item);
    }

    /// Acts, to be carried out later; `key` is held meanwhile.
    static std::function<void()> dragging(HWND window, PixelPoint press, PixelPoint release, WORD key = 0);
    std::function<void()> pressing(int parent, int button, WORD key = 0) const;
    std::function<void()> typing(HWND window, std::vector<WORD> keys) const;

    /// Whether a tooltip of that text is to be seen.
    bool tipShown(const std::string& text) const;
    /// Each act makes its view of `from`, in one change.
    void expectViews(const std::vector<ViewAct>& acts);

    ViewParameters from = wholeModel(freshView(), {});
    const PixelScale scale{dpi::ofDesktop()};
};

}   // namespace belvor::window
