#include "tests/window/Program.h"

#include "platform/Utf16.h"
#include "resources/ids.h"
#include "tests/window/Watchdog.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

namespace belvor::window {

namespace {

/// Memory in another process, for messages whose record the system does not carry across.
class ForeignMemory {
public:
    ForeignMemory(HANDLE owner, std::size_t bytes)
        : process(owner), size(bytes), place(VirtualAllocEx(owner, nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE))
    {
        if (!place) throw Failure("no memory in the program");
    }
    ForeignMemory(const ForeignMemory&) = delete;
    ForeignMemory& operator=(const ForeignMemory&) = delete;
    ~ForeignMemory() { VirtualFreeEx(process, place, 0, MEM_RELEASE); }

    void write(const void* from) const
    {
        if (!WriteProcessMemory(process, place, from, size, nullptr)) throw Failure("the program's memory cannot be written");
    }
    void read(void* to) const
    {
        if (!ReadProcessMemory(process, place, to, size, nullptr)) throw Failure("the program's memory cannot be read");
    }
    void* get() const noexcept { return place; }

private:
    HANDLE process;
    std::size_t size;
    void* place;
};

std::string className(HWND window)
{
    wchar_t name[64];
    return toUtf8({name, static_cast<std::size_t>(GetClassNameW(window, name, 64))});
}

struct Search {
    const std::function<bool(HWND)>& wanted;
    HWND found;
};

/// No lambda: those have the wrong calling convention on 32-bit x86.
BOOL CALLBACK visit(HWND window, LPARAM lParam)
{
    auto& search = *reinterpret_cast<Search*>(lParam);
    if (!search.wanted(window)) return TRUE;
    search.found = window;
    return FALSE;
}

/// The first window, below `parent` or on the desktop, that `wanted` takes.
HWND findWindow(HWND parent, const std::function<bool(HWND)>& wanted)
{
    Search search{wanted, nullptr};
    if (parent) EnumChildWindows(parent, visit, reinterpret_cast<LPARAM>(&search));
    else EnumWindows(visit, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool belongsTo(HWND window, DWORD process)
{
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    return owner == process;
}

std::wstring commandLine(const std::string& program, const std::vector<std::string>& arguments)
{
    std::string line = '"' + program + '"';
    for (const std::string& argument : arguments) line += " \"" + argument + '"';
    return toWide(line);
}

PROCESS_INFORMATION startProcess(const std::string& program, const std::vector<std::string>& arguments)
{
    std::wstring line = commandLine(program, arguments);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(toWide(program).c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &started))
        throw Failure("cannot start " + program);
    CloseHandle(started.hThread);
    return started;
}

}   // namespace

bool eventually(const std::function<bool()>& answer, int milliseconds)
{
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (;;) {
        if (answer()) return true;
        if (GetTickCount64() >= end) return false;
        Sleep(10);
    }
}

void await(const char* what, const std::function<bool()>& answer, int milliseconds)
{
    if (!eventually(answer, milliseconds)) throw Failure(std::string("waited in vain for ") + what);
}

std::string besideUs(const char* name)
{
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(nullptr, path, 1024);
    std::string own = toUtf8({path, length});
    return own.substr(0, own.find_last_of('\\') + 1) + name;
}

int run(const std::string& program, const std::vector<std::string>& arguments)
{
    const PROCESS_INFORMATION started = startProcess(program, arguments);
    const KernelHandle process(started.hProcess);
    if (WaitForSingleObject(process.get(), 60000) != WAIT_OBJECT_0) {
        TerminateProcess(process.get(), 1);
        throw Failure(program + " did not end");
    }
    DWORD status = 1;
    GetExitCodeProcess(process.get(), &status);
    return static_cast<int>(status);
}

Program::Program(const std::vector<std::string>& arguments)
{
    const PROCESS_INFORMATION started = startProcess(besideUs("belvor.exe"), arguments);
    process = KernelHandle(started.hProcess);
    id = started.dwProcessId;
    Watchdog::guard(*this);
    await("the main window", [&] {
        mainWindow = findWindow(nullptr, [&](HWND window) {
            return belongsTo(window, id) && className(window) == "Belvor" && IsWindowVisible(window);
        });
        return mainWindow != nullptr;
    });
    SetForegroundWindow(mainWindow);
    send(mainWindow, WM_NULL);   // it answers: the message loop runs
}

Program::~Program()
{
    Watchdog::release();
    kill();
}

HWND Program::child(int number, HWND within) const
{
    const HWND found = GetDlgItem(within ? within : mainWindow, number);
    if (!found) throw Failure("there is no control " + std::to_string(number));
    return found;
}

bool Program::running() const noexcept { return WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT; }

int Program::exitStatus(int milliseconds)
{
    if (WaitForSingleObject(process.get(), static_cast<DWORD>(milliseconds)) != WAIT_OBJECT_0) return -1;
    DWORD status = 0;
    GetExitCodeProcess(process.get(), &status);
    return static_cast<int>(status);
}

void Program::kill() noexcept
{
    if (!running()) return;
    TerminateProcess(process.get(), 255);
    WaitForSingleObject(process.get(), 5000);
}

void Program::command(int number) const { PostMessageW(mainWindow, WM_COMMAND, static_cast<WPARAM>(number), 0); }

LRESULT Program::send(HWND to, UINT message, WPARAM wParam, LPARAM lParam, UINT milliseconds) const
{
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(to, message, wParam, lParam, SMTO_NORMAL, milliseconds, &result))
        throw Failure("message " + std::to_string(message) + " was not answered");
    return static_cast<LRESULT>(result);
}

LRESULT Program::sendRecord(HWND to, UINT message, void* bytes, std::size_t size, LPARAM lParam) const
{
    const ForeignMemory memory(process.get(), size);
    memory.write(bytes);
    const LRESULT result = send(to, message, reinterpret_cast<WPARAM>(memory.get()), lParam);
    memory.read(bytes);
    return result;
}

LRESULT Program::sendRecordBehind(HWND to, UINT message, WPARAM wParam, void* bytes, std::size_t size) const
{
    const ForeignMemory memory(process.get(), size);
    memory.write(bytes);
    const LRESULT result = send(to, message, wParam, reinterpret_cast<LPARAM>(memory.get()));
    memory.read(bytes);
    return result;
}

std::string Program::textOf(HWND window) const
{
    wchar_t text[1024] = L"";
    const LRESULT length = send(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
    return toUtf8({text, static_cast<std::size_t>(std::clamp<LRESULT>(length, 0, 1023))});
}

std::string Program::statusPart(int part) const
{
    wchar_t text[1024] = L"";
    sendRecordBehind(child(ID_STATUSBAR), SB_GETTEXTW, static_cast<WPARAM>(part), text, sizeof text);
    return toUtf8({text, std::find(text, text + 1023, L'\0')});
}

HWND Program::dialog(const std::string& caption) const
{
    return findWindow(nullptr, [&](HWND window) {
        if (!belongsTo(window, id) || !IsWindowVisible(window) || className(window) != "#32770") return false;
        wchar_t text[256];
        const int length = GetWindowTextW(window, text, 256);
        return toUtf8({text, static_cast<std::size_t>(length)}) == caption;
    });
}

HWND Program::awaitDialog(const std::string& caption, int milliseconds) const
{
    HWND found = nullptr;
    await(("the dialog \"" + caption + '"').c_str(), [&] { return (found = dialog(caption)) != nullptr; }, milliseconds);
    return found;
}

void Program::answer(HWND box, int button) const
{
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
    await("the dialog to go", [&] { return !IsWindow(box) || !IsWindowVisible(box); });
}

std::string Program::messageOf(HWND box) const
{
    std::string all;
    findWindow(box, [&](HWND control) {
        if (className(control) == "Static") all += textOf(control);
        return false;
    });
    return all;
}

void Program::chooseFile(HWND box, const std::string& path) const
{
    const std::wstring wide = toWide(path);
    // A dialog that has just appeared still fills its fields: type until the text stays.
    await("the file dialog to take a name", [&] {
        // A plain edit, or the edit inside a combination box of the same number.
        const HWND field = findWindow(box, [](HWND control) {
            const int number = GetDlgCtrlID(control);
            return IsWindowVisible(control) && (number == 0x480 || number == 0x47C) && className(control) == "Edit";
        });
        if (!field) return false;
        if (textOf(field) != path) {
            send(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
            Sleep(100);
            return false;
        }
        PostMessageW(box, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(GetDlgItem(box, IDOK)));
        return eventually([&] { return !IsWindowVisible(box) || !IsWindowEnabled(box); }, 1000);
    });
}

void Program::resizeClient(int width, int height) const
{
    RECT frame, client;
    GetWindowRect(mainWindow, &frame);
    GetClientRect(mainWindow, &client);
    SetWindowPos(mainWindow, nullptr, 0, 0, width + (frame.right - frame.left - client.right),
                 height + (frame.bottom - frame.top - client.bottom), SWP_NOZORDER);
    send(mainWindow, WM_NULL);
    GetClientRect(mainWindow, &client);
    if (client.right != width || client.bottom != height) throw Failure("the window does not take its size");
}

}   // namespace belvor::window
