#pragma once

#include "ui/display/BitmapWindow.h"
#include "ui/panels/PanelDrag.h"
#include "ui/panels/Pixels.h"
#include "ui/panels/ToolTips.h"
#include "view/PanelRecords.h"

namespace belvor {

/// The plan and the elevation panel: a thumbnail of the model under the two markers, which
/// the mouse drags. Which of the two it is, its control number says.
class Plan : public BitmapWindow, private PanelDrag::Markers {
public:
    explicit Plan(HWND owner) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// For programs that read the screen aloud.
    AccessibleFacts facts() const;

private:
    void paint();
    bool takeMarker(const PanelMouse& press) override;
    Ghost::Shape ghostAt(const PanelMouse& mouse) const override;
    std::string valueAt(const PanelMouse& mouse) const override;
    void askFor(const PanelMouse& release) override;
    std::vector<PixelPoint> markerPixels() const override;
    void nudge(std::size_t index, PixelPoint by, bool shift) override;
    void ask(const ViewMarkers& request);
    void show(const ViewMarkers& shown);
    void notify(LPARAM lParam);

    ViewMarkers markers{-0.5, 0.5, 0.0, 0.0, false};
    MarkerDrag taken = MarkerDrag::none;
    PanelDrag drag;
    ToolTips toolTips;
};

/// Registers the class "Plan". Throws Win32Error.
void registerPlan(HINSTANCE module);

}   // namespace belvor
