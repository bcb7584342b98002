#pragma once

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
void await(const char* what, const std::function<bool()>& answer, int milliseconds = 10000);

/// The path of a program beside this one.
std::string besideUs(const char* name);
/// Runs a program to its end and returns its exit status.
int run(const std::string& program, const std::vector<std::string>& arguments);

/// One running belvor.exe, driven from outside as another program would. It is stopped hard
/// when the object goes, unless it has ended by itself.
class Program {
public:
    explicit Program(const std::vector<std::string>& arguments = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    HWND main() const noexcept { return mainWindow; }
    /// A child of the main window, or with `within` of that window.
    HWND child(int number, HWND within = nullptr) const;
    DWORD processId() const noexcept { return id; }

    bool running() const noexcept;
    /// Waits for the end; the exit status, or −1 when it has not ended in time.
    int exitStatus(int milliseconds = 10000);
    void kill() noexcept;   ///< Also called by the watchdog, from its own thread.

    /// Chooses a menu item; does not wait for what it does.
    void command(int number) const;
    /// Sends a message with a limit of time; the result.
    LRESULT send(HWND to, UINT message, WPARAM wParam = 0, LPARAM lParam = 0, UINT milliseconds = 10000) const;
    /// Sends a message whose wParam is to point to `bytes`, which are copied back afterwards.
    LRESULT sendRecord(HWND to, UINT message, void* bytes, std::size_t size, LPARAM lParam = 0) const;
    /// The same for a record that lParam points to.
    LRESULT sendRecordBehind(HWND to, UINT message, WPARAM wParam, void* bytes, std::size_t size) const;

    std::string title() const { return textOf(mainWindow); }
    std::string textOf(HWND window) const;
    std::string statusPart(int part) const;

    /// The visible dialog or message box of that caption; null when there is none.
    HWND dialog(const std::string& caption) const;
    HWND awaitDialog(const std::string& caption, int milliseconds = 10000) const;
    /// Presses a button of a dialog and waits until the dialog has gone.
    void answer(HWND dialog, int button) const;
    /// All texts of the static controls of a message box.
    std::string messageOf(HWND box) const;
    /// Types a path into a file dialog and closes it with its first button.
    void chooseFile(HWND dialog, const std::string& path) const;

    /// Makes the client area of the main window that large; at the top left of the screen.
    void resizeClient(int width, int height) const;

private:
    KernelHandle process;
    DWORD id = 0;
    HWND mainWindow = nullptr;
};

}   // namespace belvor::window
