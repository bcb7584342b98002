#pragma once

#include "platform/win32/Windows.h"
#include "render/queue/RenderHost.h"
#include "render/queue/RenderQueue.h"

#include <cstdint>

namespace belvor {

/// The kind of the requests whose result is for `window`; a null window maps to imageFile (0).
inline RequestKind kindOf(HWND window) noexcept
{
    return static_cast<RequestKind>(reinterpret_cast<std::uintptr_t>(window));   // handles fit in 32 bits
}

/// Tells the main window what the render thread has to say, by messages.
class WindowHost : public RenderHost {
public:
    explicit WindowHost(HWND mainWindow) noexcept : window(mainWindow) {}
    void progressMade(Progress& progress) override;
    void progressEnded(const Progress& progress) noexcept override;
    void modelLoaded(std::uint32_t number, Model* model) override;
    void imageEnded(std::uint32_t save, bool whole) override;
    void threadEnded() override;
    void showBadFile(const BadFile& fault) override;
    void warning(const std::string& text) override;

private:
    HWND window;
};

}   // namespace belvor
