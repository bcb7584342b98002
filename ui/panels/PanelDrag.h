#pragma once

#include "platform/win32/Handles.h"
#include "ui/Accessible.h"
#include "ui/Pixels.h"
#include "ui/ValueTip.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace belvor {

/// The mouse over a panel: a pixel of its client area, and the keys that are held.
struct PanelMouse {
    PixelPoint at;
    bool shift = false, control = false;
};

/// What follows the mouse over a panel during a drag. Drawing it twice in R2_NOTXORPEN takes it away.
class Ghost {
public:
    using Shape = std::function<void(HDC)>;

    explicit Ghost(HWND panel) noexcept : window(panel) {}
    /// Takes the one on the screen away as it was drawn and draws the new one; an empty function draws none.
    void show(Shape next);
    /// For WM_PAINT: draws it over what is painted.
    void paint(HDC dc) const;

private:
    HWND window;
    Shape shown;
};

/// The drag of a marker in a panel, from the press to the release, which asks the main window for
/// something, or to what ends it without a request: Esc, a resize, or the mouse is no longer the
/// panel's, since a box, another program or a new model has come up. With the focus, Space chooses
/// the next marker and the arrow keys move it.
class PanelDrag {
public:
    /// The panel's part of it.
    class Markers {
    public:
        /// A press: notes the marker that it takes; false when there is none.
        virtual bool takeMarker(const PanelMouse& press) = 0;
        /// The noted marker as it is to look at the mouse.
        virtual Ghost::Shape ghostAt(const PanelMouse& mouse) const = 0;
        /// What the release would set, for the tip beside the pointer.
        virtual std::string valueAt(const PanelMouse& mouse) const = 0;
        /// The release of the noted marker. The drag is over when this is called.
        virtual void askFor(const PanelMouse& release) = 0;

        /// The pixels of the markers that the keyboard can move, in the order of the Space key; never empty.
        virtual std::vector<PixelPoint> markerPixels() const = 0;
        /// A key moves marker `index` by so many pixels; `shift` as with a press.
        virtual void nudge(std::size_t index, PixelPoint by, bool shift) = 0;

    protected:
        ~Markers() = default;
    };

    /// `cursor`: the number of the system's cursor that is shown meanwhile.
    PanelDrag(HWND panel, Markers& panelMarkers, const wchar_t* cursor) noexcept;

    /// Call it first for every message of the panel. The answer, when the message has been dealt with.
    std::optional<LRESULT> handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// For WM_PAINT, last: the ghost, or the frame about the marker that the keys move.
    void paint(HDC dc) const;
    /// The marker that the keys move.
    std::size_t chosenIndex() const { return chosenMarker(markers.markerPixels().size()); }
    /// The markers have changed: draws the ghost that now belongs to the mouse.
    void redraw();

private:
    void press(const PanelMouse& mouse);
    void move(const PanelMouse& mouse);
    void release(const PanelMouse& mouse);
    void setKey(WPARAM key, bool held);
    void cancel();
    bool pressKey(WPARAM key);
    void join(bool begin);
    std::size_t chosenMarker(std::size_t count) const noexcept { return chosen % count; }

    HWND window;
    Markers& markers;
    HCURSOR cursor;
    Ghost ghost;
    ValueTip tip;
    bool dragging = false;
    bool joined = false;          // a key is held
    PanelMouse last;              // while dragging
    std::size_t chosen = 0;       // the marker that the keys move; counts on beyond the last
    HWND formerFocus = nullptr;   // the panel has the focus meanwhile, so that the keys reach it
};

}   // namespace belvor
