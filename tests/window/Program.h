#pragma once

#include "platform/Utf16.h"
#include "platform/win32/Handles.h"
#include "resources/ids.h"

#include <commctrl.h>
#include <shlobj.h>

#include <algorithm>
#include <filesystem>
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
inline bool eventually(const std::function<bool()>& answer, int milliseconds = 10000)
{
    for (const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds); !answer(); Sleep(10))
        if (GetTickCount64() >= end) return false;
    return true;
}
/// The same, throwing a Failure that names what was waited for.
inline void await(const std::string& what, const std::function<bool()>& answer, int milliseconds = 10000)
{
    if (!eventually(answer, milliseconds)) throw Failure("waited in vain for " + what);
}

/// Starts the program of that path, or of that name beside this one.
inline KernelHandle startProcess(const std::string& name, const std::vector<std::string>& arguments)
{
    wchar_t own[1024];
    GetModuleFileNameW(nullptr, own, 1024);
    const auto folder = std::filesystem::path(own).parent_path();
    const std::wstring program = (folder / toWide(name)).wstring();   // a whole path stays as it is
    std::wstring line = L'"' + program + L'"';
    for (const std::string& argument : arguments) line += L" \"" + toWide(argument) + L'"';
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &started))
        throw Failure("cannot start " + name + ", error " + std::to_string(GetLastError()));
    CloseHandle(started.hThread);
    return KernelHandle(started.hProcess);
}
/// The exit status, or −1 when the process has not ended in time.
inline int exitStatusOf(const KernelHandle& process, int milliseconds)
{
    DWORD status = 0;
    if (WaitForSingleObject(process.get(), static_cast<DWORD>(milliseconds)) != WAIT_OBJECT_0) return -1;
    GetExitCodeProcess(process.get(), &status);
    return static_cast<int>(status);
}

inline std::string className(HWND window)
{
    wchar_t name[64];
    return toUtf8({name, static_cast<std::size_t>(GetClassNameW(window, name, 64))});
}
/// The first window, anywhere below `parent` or on the desktop itself, that `wanted` takes.
inline HWND findWindow(HWND parent, const std::function<bool(HWND)>& wanted)
{
    for (HWND window = GetTopWindow(parent); window; window = GetWindow(window, GW_HWNDNEXT)) {
        if (wanted(window)) return window;
        if (HWND const inner = parent ? findWindow(window, wanted) : nullptr) return inner;
    }
    return nullptr;
}
inline bool gone(HWND window) { return !IsWindow(window) || !IsWindowVisible(window); }

/// One running belvor.exe, driven from outside as another program would. It is stopped hard
/// when the object goes, unless it has ended by itself.
class Program {
public:
    explicit Program(const std::vector<std::string>& arguments = {})
        : process(startProcess("belvor.exe", arguments))
    {
        await("the main window", [&] { return (mainWindow = ownWindow("Belvor")) != nullptr; });
        SetForegroundWindow(mainWindow);
        send(mainWindow, WM_NULL);   // it answers: the message loop runs
    }
    ~Program() { kill(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    HANDLE handle() const noexcept { return process.get(); }
    HWND main() const noexcept { return mainWindow; }
    /// A child of the main window, or with `within` of that window.
    HWND child(int number, HWND within = nullptr) const
    {
        const HWND found = GetDlgItem(within ? within : mainWindow, number);
        if (!found) throw Failure("there is no control " + std::to_string(number));
        return found;
    }

    bool running() const noexcept { return WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT; }
    int exitStatus(int milliseconds = 10000) const { return exitStatusOf(process, milliseconds); }
    void kill() noexcept
    {
        if (!running()) return;
        TerminateProcess(process.get(), 255);
        WaitForSingleObject(process.get(), 5000);
    }

    /// Chooses a menu item and waits until that is done.
    void command(int number) const { send(mainWindow, WM_COMMAND, static_cast<WPARAM>(number)); }
    /// The same for one that opens a dialog; the dialog.
    HWND openDialog(int number, const std::string& caption) const
    {
        PostMessageW(mainWindow, WM_COMMAND, static_cast<WPARAM>(number), 0);
        return awaitDialog(caption);
    }
    /// Sends a message with a limit of time; the result.
    LRESULT send(HWND to, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        DWORD_PTR result = 0;
        if (!SendMessageTimeoutW(to, message, wParam, lParam, SMTO_NORMAL, 10000, &result))
            throw Failure("message " + std::to_string(message) + " was not answered");
        return static_cast<LRESULT>(result);
    }
    /// The same for one whose lParam points to `bytes`, which come back as the program leaves them.
    LRESULT sendRecord(HWND to, UINT message, WPARAM wParam, void* bytes, std::size_t size) const
    {
        void* const place = copyInto(bytes, size);
        const LRESULT result = send(to, message, wParam, reinterpret_cast<LPARAM>(place));
        ReadProcessMemory(process.get(), place, bytes, size, nullptr);
        VirtualFreeEx(process.get(), place, 0, MEM_RELEASE);
        return result;
    }
    /// What the desktop does when a file is dropped on the window.
    void dropFile(const std::string& path) const
    {
        const std::wstring name = toWide(path);
        DROPFILES head{sizeof head, {}, FALSE, TRUE};
        std::string record(reinterpret_cast<const char*>(&head), sizeof head);
        record.append(reinterpret_cast<const char*>(name.c_str()), 2 * name.size())
            .append(4, '\0');   // the second zero ends the list
        PostMessageW(mainWindow, WM_DROPFILES,
                     reinterpret_cast<WPARAM>(copyInto(record.data(), record.size())), 0);
    }

    std::string title() const { return textOf(mainWindow); }
    std::string textOf(HWND window) const
    {
        wchar_t text[1024] = L"";
        const LRESULT length = send(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
        return toUtf8({text, static_cast<std::size_t>(std::clamp<LRESULT>(length, 0, 1023))});
    }
    std::string statusPart(int part) const
    {
        wchar_t text[1024] = L"";
        sendRecord(child(ID_STATUSBAR), SB_GETTEXTW, static_cast<WPARAM>(part), text, sizeof text);
        return toUtf8({text, std::find(text, text + 1023, L'\0')});
    }
    bool awaitStatus(const std::string& text) const
    {
        return eventually([&] { return statusPart(0) == text; }, 2000);
    }

    /// The visible dialog or message box of that caption, in any case of letters; null when there is none.
    HWND dialog(const std::string& caption) const { return ownWindow("#32770", &caption); }
    HWND awaitDialog(const std::string& caption) const
    {
        HWND found = nullptr;
        await("the dialog " + caption, [&] { return (found = dialog(caption)) != nullptr; });
        return found;
    }
    /// Presses a button of a dialog and waits until the dialog has gone.
    void answer(HWND box, int button) const
    {
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
        await("the dialog to go", [&] { return gone(box); });
    }
    /// All texts of the static controls of a message box.
    std::string messageOf(HWND box) const
    {
        std::string all;
        findWindow(box, [&](HWND control) {
            if (className(control) == "Static") all += textOf(control);
            return false;
        });
        return all;
    }
    /// Types a path into a file dialog, closes it with its first button and waits until the program has gone
    /// on.
    void chooseFile(HWND box, const std::string& path) const
    {
        const std::wstring wide = toWide(path);
        // A dialog that has just appeared still fills its fields: type until the text stays.
        await("the file dialog to take a name", [&] {
            // A plain edit, or the edit inside a combination box of the same number.
            const HWND field = findWindow(box, [](HWND control) {
                const int number = GetDlgCtrlID(control);
                return (number == 0x480 || number == 0x47C) && IsWindowVisible(control)
                       && className(control) == "Edit";
            });
            if (!field) return false;
            if (textOf(field) != path) {
                send(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
                Sleep(100);
                return false;
            }
            PostMessageW(box, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(GetDlgItem(box, IDOK)));
            return eventually([&] { return gone(box) || !IsWindowEnabled(box); }, 1000);
        });
        if (IsWindow(mainWindow)) SendMessageTimeoutW(mainWindow, WM_NULL, 0, 0, SMTO_NORMAL, 10000, nullptr);
    }

    /// Makes the client area of the main window that large, as far as it goes; at the top left of the screen.
    void resizeClient(int width, int height) const
    {
        RECT frame, client;
        GetWindowRect(mainWindow, &frame);
        GetClientRect(mainWindow, &client);
        SetWindowPos(mainWindow, nullptr, 0, 0, width + (frame.right - frame.left - client.right),
                     height + (frame.bottom - frame.top - client.bottom), SWP_NOZORDER);
        send(mainWindow, WM_NULL);
    }

private:
    /// A visible top-level window of the program, of that class and, if given, that caption.
    HWND ownWindow(const char* wantedClass, const std::string* caption = nullptr) const
    {
        return findWindow(nullptr, [&](HWND window) {
            DWORD owner = 0;
            wchar_t text[256] = L"";
            GetWindowThreadProcessId(window, &owner);
            GetWindowTextW(window, text, 256);
            return owner == GetProcessId(process.get()) && IsWindowVisible(window)
                   && className(window) == wantedClass
                   && (!caption || lstrcmpiW(text, toWide(*caption).c_str()) == 0);
        });
    }
    void* copyInto(const void* bytes, std::size_t size) const   // memory of the program
    {
        void* const place =
            VirtualAllocEx(process.get(), nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
        if (!WriteProcessMemory(process.get(), place, bytes, size, nullptr))
            throw Failure("no memory in the program, error " + std::to_string(GetLastError()));
        return place;
    }

    KernelHandle process;
    HWND mainWindow = nullptr;
};

}   // namespace belvor::window
