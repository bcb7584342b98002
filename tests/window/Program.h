#pragma once

#include "platform/Utf16.h"
#include "platform/win32/Handles.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace belvor::window {

/// Something on the way to the check itself did not happen in time.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Asks `answer` every few milliseconds until it is true or the time is over.
bool eventually(const std::function<bool()>& answer, int milliseconds = 10000);
/// The same, throwing a Failure that names what was waited for.
void await(const std::string& what, const std::function<bool()>& answer, int milliseconds = 10000);

/// Starts the program of that path, or of that name beside this one.
KernelHandle startProcess(const std::string& name, const std::vector<std::string>& arguments);
/// The exit status, or −1 when the process has not ended in time.
int exitStatusOf(const KernelHandle& process, int milliseconds);

/// One running belvor.exe, driven from outside as another program would. It is stopped hard
/// when the object goes, unless it has ended by itself.
class Program {
public:
    explicit Program(const std::vector<std::string>& arguments = {});
    ~Program() { kill(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    HANDLE handle() const noexcept { return process.get(); }
    HWND main() const noexcept { return mainWindow; }
    /// A child of the main window, or with `within` of that window.
    HWND child(int number, HWND within = nullptr) const;

    bool running() const noexcept { return WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT; }
    int exitStatus(int milliseconds = 10000) const { return exitStatusOf(process, milliseconds); }
    void kill() noexcept;

    /// Chooses a menu item and waits until that is done.
    void command(int number) const { send(mainWindow, WM_COMMAND, static_cast<WPARAM>(number)); }
    /// The same for one that opens a dialog; the dialog.
    HWND openDialog(int number, const std::string& caption) const;
    /// Sends a message with a limit of time; the result.
    LRESULT send(HWND to, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    /// The same for one whose lParam points to `bytes`, which come back as the program leaves them.
    LRESULT sendRecord(HWND to, UINT message, WPARAM wParam, void* bytes, std::size_t size) const;
    /// What the desktop does when a file is dropped on the window.
    void dropFile(const std::string& path) const;

    std::string title() const { return textOf(mainWindow); }
    std::string textOf(HWND window) const;
    std::string statusPart(int part) const;
    bool awaitStatus(const std::string& text) const
    {
        return eventually([&] { return statusPart(0) == text; }, 2000);
    }

    /// The visible dialog or message box of that caption, in any case of letters; null when there is none.
    HWND dialog(const std::string& caption) const;
    HWND awaitDialog(const std::string& caption) const;
    /// Presses a button of a dialog and waits until the dialog has gone.
    void answer(HWND dialog, int button) const;
    /// All texts of the static controls of a message box.
    std::string messageOf(HWND box) const;
    /// Types a path into a file dialog, closes it with its first button and waits until the program has gone
    /// on.
    void chooseFile(HWND dialog, const std::string& path) const;

    /// Makes the client area of the main window that large, as far as it goes; at the top left of the screen.
    void resizeClient(int width, int height) const;

private:
    void* copyInto(const void* bytes, std::size_t size) const;   // memory of the program

    KernelHandle process;
    HWND mainWindow = nullptr;
};

}   // namespace belvor::window
