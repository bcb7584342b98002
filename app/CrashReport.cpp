#include "app/CrashReport.h"

#include "platform/Utf16.h"
#include "platform/win32/Handles.h"
#include "resources/Texts.h"

#include <dbghelp.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <iterator>

namespace belvor {
namespace {

const char* programVersion = "";

/// The path without its ending; made with what needs no memory of the program, which may be damaged.
void makeName(wchar_t (&name)[MAX_PATH + 80]) noexcept
{
    wchar_t folder[MAX_PATH + 1];
    DWORD length = GetEnvironmentVariableW(L"LOCALAPPDATA", folder, MAX_PATH);
    if (length == 0 || length > MAX_PATH) length = GetTempPathW(MAX_PATH, folder);
    if (length != 0 && folder[length - 1] == L'\\') folder[length - 1] = L'\0';
    for (const wchar_t* const part : {L"\\Calderwood", L"\\Belvor"}) {
        lstrcatW(folder, part);
        CreateDirectoryW(folder, nullptr);
    }
    SYSTEMTIME now;
    GetLocalTime(&now);
    swprintf(name, std::size(name), L"%ls\\fault-%04u%02u%02u-%02u%02u%02u-%lu", folder, now.wYear,
             now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, GetCurrentProcessId());
}

KernelHandle newFile(const wchar_t* name, const wchar_t* ending) noexcept
{
    wchar_t path[MAX_PATH + 90];
    swprintf(path, std::size(path), L"%ls%ls", name, ending);
    return KernelHandle(CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

struct Dump {
    const wchar_t* name;
    MINIDUMP_EXCEPTION_INFORMATION about;
};

DWORD WINAPI writeDump(void* given) noexcept
{
    Dump& dump = *static_cast<Dump*>(given);
    HMODULE const library = LoadLibraryW(L"dbghelp.dll");
    const auto write = library ? reinterpret_cast<decltype(&MiniDumpWriteDump)>(
                           reinterpret_cast<void*>(GetProcAddress(library, "MiniDumpWriteDump")))
                               : nullptr;
    const KernelHandle file = newFile(dump.name, L".dmp");
    if (!write || !file) return 0;
    write(GetCurrentProcess(), GetCurrentProcessId(), file.get(), MiniDumpNormal, &dump.about, nullptr,
          nullptr);
    return 0;
}

void writeText(const wchar_t* name, const EXCEPTION_RECORD& record) noexcept
{
    const KernelHandle file = newFile(name, L".txt");
    if (!file) return;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const wchar_t*>(record.ExceptionAddress), &module);
    char moduleName[MAX_PATH] = "";
    if (module) GetModuleFileNameA(module, moduleName, MAX_PATH);
    const char* const last = std::strrchr(moduleName, '\\');
    char text[600];
    const int length = std::snprintf(
        text, sizeof text, "%s, %d bits\r\nexception %08lx at %p\r\nmodule %s, offset %llx\r\n",
        programVersion, static_cast<int>(8 * sizeof(void*)), record.ExceptionCode, record.ExceptionAddress,
        last ? last + 1 : moduleName,
        static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(record.ExceptionAddress)
                                        - reinterpret_cast<std::uintptr_t>(module)));
    DWORD written = 0;
    WriteFile(file.get(), text, static_cast<DWORD>(length), &written, nullptr);
}

LONG WINAPI report(EXCEPTION_POINTERS* fault) noexcept
{
    static LONG reported = 0;
    if (InterlockedExchange(&reported, 1) != 0) return EXCEPTION_CONTINUE_SEARCH;   // a fault of the report
    wchar_t name[MAX_PATH + 80];
    makeName(name);
    writeText(name, *fault->ExceptionRecord);
    // On a thread of its own, as dbghelp asks for; the box does not wait for a slow one.
    constexpr DWORD patience = 5000;   // milliseconds
    static Dump dump{};                // outlives the wait
    static wchar_t dumpName[MAX_PATH + 80];
    lstrcpyW(dumpName, name);
    dump = {dumpName, {GetCurrentThreadId(), fault, FALSE}};
    const KernelHandle writer(CreateThread(nullptr, 0, writeDump, &dump, 0, nullptr));
    if (writer) WaitForSingleObject(writer.get(), patience);
    try {
        MessageBoxW(nullptr, toWide(filledText(Text::crashReport, {toUtf8(name) + ".txt"})).c_str(),
                    L"Belvor", MB_OK | MB_ICONSTOP | MB_TASKMODAL);
    } catch (...) {}
    return EXCEPTION_EXECUTE_HANDLER;   // ends the process
}

}   // namespace

void reportCrashes(const char* version) noexcept
{
    programVersion = version;
    ULONG room = 32768;   // for the report of a stack that is full
    SetThreadStackGuarantee(&room);
    SetUnhandledExceptionFilter(report);
}

}   // namespace belvor
