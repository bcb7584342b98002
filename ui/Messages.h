#pragma once

#include "platform/win32/Windows.h"
#include "view/PanelRecords.h"
#include "view/ViewGestures.h"

#include <type_traits>

namespace belvor {

class Model;
class Progress;

/// The number of a private window message and what its wParam points to; `void` stands for
/// plain numbers. Usable as a case label.
template <class Payload>
struct MessageNumber {
    UINT number;
    constexpr operator UINT() const noexcept { return number; }   // NOLINT: a message is its number
};

// The same number serves both directions: from a panel a request, to a panel the new state.
inline constexpr MessageNumber<ViewMarkers> UM_VIEWMARKERS{WM_USER
                                                           + 101};   ///< lParam: the panel's control number
inline constexpr MessageNumber<EyeSlideRecord> UM_EYESLIDE{WM_USER + 102};    ///< lParam: the panel's handle
inline constexpr MessageNumber<SphereMarker> UM_LIGHTMARKER{WM_USER + 103};   ///< lParam: the panel's handle
inline constexpr MessageNumber<void> UM_REMOVELIGHTMARKER{WM_USER
                                                          + 104};       ///< wParam: parallel light, from 0
inline constexpr MessageNumber<void> UM_DISPLAYCLICK{WM_USER + 105};    ///< client x, client y, signed
inline constexpr MessageNumber<double> UM_DISPLAYZOOM{WM_USER + 106};   ///< the factor
inline constexpr MessageNumber<void> UM_LIGHTINTENSITY{
    WM_USER + 107};   ///< slider 0 sky, 1 ground, 2 ... / position 0 to 21
inline constexpr MessageNumber<void> UM_IMAGESIZE{WM_USER + 108};   ///< width, height
inline constexpr MessageNumber<Progress> UM_PROGRESS{
    WM_USER + 109};   ///< sent by the render thread; true when a timer runs
inline constexpr MessageNumber<void> UM_ADDTOOL{WM_USER + 110};   ///< lParam: TTTOOLINFOW
inline constexpr MessageNumber<void> UM_DELTOOL{WM_USER + 111};   ///< lParam: TTTOOLINFOW
inline constexpr MessageNumber<void> UM_MODELLOADED{WM_USER
                                                    + 112};   ///< sent: number of the load / Model* or null
inline constexpr MessageNumber<void> UM_THREADENDED{WM_USER
                                                    + 113};   ///< posted as the render thread's last act

inline constexpr MessageNumber<void> UM_ENDDRAG{WM_USER
                                                + 114};   ///< to the strip: a slider's drag ends unasked

inline constexpr MessageNumber<ViewGesture> UM_VIEWGESTURE{
    WM_USER + 115};   ///< from the drawing area and the eye slide
inline constexpr MessageNumber<void> UM_IMAGEENDED{WM_USER
                                                   + 116};   ///< sent by the render thread: save / whole

inline constexpr MessageNumber<void> UM_FILECHANGED{WM_USER + 117};   ///< posted: the model's file
inline constexpr MessageNumber<void> UM_JOBENDED{
    WM_USER + 118};   ///< posted by the render thread: whether abandoned / 0
inline constexpr MessageNumber<void> UM_SHOWTIPS{WM_USER
                                                 + 119};   ///< 0: no tool tips while something is dragged
inline constexpr MessageNumber<void> UM_JOINCHANGES{
    WM_USER + 121};   ///< not 0: the view changes from here on are one, until it comes with 0
inline constexpr MessageNumber<void> UM_REVEAL{
    WM_USER + 122};   ///< to the strip: a window in it, which is to be seen / 0
inline constexpr MessageNumber<const char> UM_FILEREFUSED{
    WM_USER + 120};   ///< sent by the render thread: UTF-8 reason, read in a box

inline LPARAM handleParameter(HWND window) noexcept { return reinterpret_cast<LPARAM>(window); }

/// Sends a record; it need live no longer than the call.
template <class Payload>
LRESULT send(HWND to, MessageNumber<Payload> message, const std::type_identity_t<Payload>& record,
             LPARAM lParam = 0)
{
    return SendMessage(to, message.number, reinterpret_cast<WPARAM>(&record), lParam);
}
/// Sends two numbers; negative ones arrive with their sign.
inline LRESULT send(HWND to, MessageNumber<void> message, INT_PTR first, INT_PTR second = 0)
{
    return SendMessage(to, message.number, static_cast<WPARAM>(first), second);
}

/// The record that a received message points to.
template <class Payload>
const Payload& payload(MessageNumber<Payload>, WPARAM wParam) noexcept
{
    return *reinterpret_cast<const Payload*>(wParam);
}

}   // namespace belvor
