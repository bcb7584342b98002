#pragma once

#include "ui/Pixels.h"
#include "view/ViewGestures.h"

#include <cstdint>
#include <optional>

namespace belvor {

/// What the wheel and the drags of the middle and right button in the drawing area ask for, step by
/// step. A drag is one gesture; so is a series of turns of the wheel without a pause. Interface thread.
class Gestures {
public:
    static constexpr std::uint32_t pause = 700;    ///< Milliseconds that end a series of the wheel.
    static constexpr double degreesANotch = 5.0;   ///< Of a wheel that turns the eye.

    /// `tolerance`: how far, in pixels, the pointer may stray and still be a click, inclusive.
    explicit Gestures(PixelSize tolerance) noexcept : stray(tolerance) {}

    /// A button goes down: turn for the right one, pan for the middle one.
    void press(ViewGesture::Kind kind, PixelPoint at) noexcept;
    /// The mouse moves: the step to ask for, if it is a drag.
    std::optional<ViewGesture> move(PixelPoint to, PixelSize client) noexcept;
    /// The button goes up, or the drag is given up: what has been asked for stays.
    void end() noexcept { state = State::idle; }
    bool idle() const noexcept { return state == State::idle; }

    /// The wheel was turned by a `delta` of 120 a notch, at `time` in milliseconds. The horizontal
    /// wheel, and with `shift` the other, turn the eye; `fine` takes an eighth of a step.
    ViewGesture wheel(int delta, bool horizontal, bool shift, bool fine, std::uint32_t time) noexcept;
    /// The same over the eye slide.
    ViewGesture slideWheel(int delta, bool fine, std::uint32_t time) noexcept;

    /// A key of the drawing area: everything that it asks for while it is held is one gesture.
    ViewGesture key(ViewGesture::Kind kind, double across, double down) noexcept;
    void releaseKey() noexcept { keyKind.reset(); }

private:
    enum class State { idle, pressed, dragging };
    void continueWheel(ViewGesture::Kind kind, std::uint32_t time) noexcept;

    PixelSize stray;
    State state = State::idle;
    ViewGesture::Kind kind = ViewGesture::Kind::turn;
    PixelPoint last;
    std::uint32_t number = 0;
    std::optional<ViewGesture::Kind> wheelKind;   // of the series that is going on
    std::uint32_t wheelTime = 0;
    std::optional<ViewGesture::Kind> keyKind;   // of the key that is held
};

}   // namespace belvor
