#include "ui/display/Gestures.h"

#include <cstdlib>

namespace belvor {
namespace {

std::uint32_t lastGesture = 0;   // of the program: the drawing area and the eye slide do not use the same

std::uint32_t nextGesture() noexcept { return ++lastGesture != 0 ? lastGesture : ++lastGesture; }

}   // namespace

void Gestures::press(ViewGesture::Kind pressed, PixelPoint at) noexcept
{
    state = State::pressed;
    kind = pressed;
    last = at;
    wheelKind.reset();
    keyKind.reset();
}

std::optional<ViewGesture> Gestures::move(PixelPoint to, PixelSize client) noexcept
{
    const int across = to.x - last.x, down = to.y - last.y;
    if (state == State::pressed && (std::abs(across) > stray.width || std::abs(down) > stray.height)) {
        state = State::dragging;
        number = nextGesture();
    }
    if (state != State::dragging || (across == 0 && down == 0)) return std::nullopt;
    last = to;
    if (kind == ViewGesture::Kind::pan)
        return ViewGesture{kind, static_cast<double>(across), static_cast<double>(down), number};
    return ViewGesture{kind, turnedDegrees(across, client.width, client.height),
                       turnedDegrees(down, client.width, client.height), number};
}

ViewGesture Gestures::wheel(int delta, bool horizontal, bool shift, bool fine, std::uint32_t time) noexcept
{
    const ViewGesture::Kind turned = horizontal || shift ? ViewGesture::Kind::turn : ViewGesture::Kind::zoom;
    continueWheel(turned, time);
    const double notches = wheelNotches(delta, fine);
    if (turned == ViewGesture::Kind::zoom) return {turned, 0.0, notches, number};
    // A wheel to the right moves what is seen to the left, as it does in a document.
    return {turned, (horizontal ? -notches : notches) * degreesANotch, 0.0, number};
}

ViewGesture Gestures::slideWheel(int delta, bool fine, std::uint32_t time) noexcept
{
    continueWheel(ViewGesture::Kind::advance, time);
    return {ViewGesture::Kind::advance, 0.0, wheelNotches(delta, fine), number};
}

void Gestures::continueWheel(ViewGesture::Kind turned, std::uint32_t time) noexcept
{
    if (wheelKind != turned || time - wheelTime > pause) number = nextGesture();   // the clock may run over
    wheelKind = turned;
    wheelTime = time;
    keyKind.reset();
}

ViewGesture Gestures::key(ViewGesture::Kind asked, double across, double down) noexcept
{
    if (keyKind != asked) number = nextGesture();
    keyKind = asked;
    wheelKind.reset();
    return {asked, across, down, number};
}

}   // namespace belvor
