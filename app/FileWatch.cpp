#include "app/FileWatch.h"

#include "platform/Thread.h"
#include "platform/Win32Error.h"
#include "platform/win32/Handles.h"
#include "ui/Messages.h"

#include <utility>

namespace belvor {

struct FileWatch::State : TSHandlable {
    State(HWND mainWindow, std::string file, const FileStamp& known)
        : window(mainWindow),
          path(std::move(file)),
          stamp(known),
          end(CreateEventW(nullptr, TRUE, FALSE, nullptr))
    {
        if (!end) throw Win32Error("CreateEvent in FileWatch");
    }

    bool waited() const noexcept
    {
        constexpr DWORD milliseconds = 1000;
        return WaitForSingleObject(end.get(), milliseconds) == WAIT_TIMEOUT;
    }

    void watch() const noexcept
    {
        FileStamp last = stamp;
        while (waited()) {
            const FileStamp now = stampOf(path);
            // A file that is still being written changes again; one that is gone is about to be replaced.
            if (now != stamp && now == last && now.exists) {
                PostMessageW(window, UM_FILECHANGED, 0, 0);
                return;
            }
            last = now;
        }
    }

    const HWND window;
    const std::string path;
    const FileStamp stamp;
    const KernelHandle end;
};

FileWatch::FileWatch(HWND mainWindow, std::string path, const FileStamp& stamp)
    : state(makeHandle<State>(mainWindow, std::move(path), stamp))
{
    startThread([kept = state] { kept->watch(); });
}

FileWatch::~FileWatch() { SetEvent(state->end.get()); }

}   // namespace belvor
