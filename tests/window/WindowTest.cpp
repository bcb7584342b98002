#include "tests/window/WindowTest.h"

#include <atomic>
#include <sstream>

namespace belvor::window {

namespace {

constexpr const wchar_t* recentKey = L"Software\\Calderwood\\Belvor\\Recent File List";
constexpr ULONGLONG timeForATest = 45000;   // milliseconds

/// What the watchdog ends: a program that does not answer could hold up the test for ever.
std::atomic<HWND> guarded = nullptr;
std::atomic<bool> tooLate = false;

void watch(const std::stop_token& stop)
{
    for (const ULONGLONG end = GetTickCount64() + timeForATest; GetTickCount64() < end; Sleep(20))
        if (stop.stop_requested()) return;
    tooLate = true;
    DWORD id = 0;
    GetWindowThreadProcessId(guarded, &id);
    const KernelHandle process(OpenProcess(PROCESS_TERMINATE, FALSE, id));
    if (process) TerminateProcess(process.get(), 255);   // null would mean this process
}

}   // namespace

std::vector<std::string> recentFiles()
{
    std::vector<std::string> paths;
    wchar_t value[1024];
    for (int n = 1;; ++n) {
        DWORD size = sizeof value;
        const std::wstring name = L"File" + std::to_wstring(n);
        if (RegGetValueW(HKEY_CURRENT_USER, recentKey, name.c_str(), RRF_RT_REG_SZ, nullptr, value, &size)
            != ERROR_SUCCESS)
            return paths;
        paths.push_back(toUtf8(value));
    }
}

std::string fileName(const std::string& path) { return path.substr(path.find_last_of('\\') + 1); }

std::string viewText(const char* eye, const char* lookAt, const char* zoom)
{
    return std::string("Belvor View Parameters 1.0\n") + eye + '\n' + lookAt + '\n' + zoom
           + "\n0\n0.4\n0.1\n-30 60 0.6\n";
}

void WindowTest::SetUp()
{
    RegDeleteTreeW(HKEY_CURRENT_USER, recentKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Calderwood\\Belvor\\Settings");
    tooLate = false;
    watchdog = std::jthread(watch);
}

void WindowTest::TearDown()
{
    if (running && running->running()) {
        EXPECT_EQ(running->dialog(textOf(Text::errorTitle)), nullptr) << "a fatal error is shown";
    }
    running.reset();
    EXPECT_FALSE(tooLate) << "the test's time was over";
}

Program& WindowTest::start(const std::vector<std::string>& arguments)
{
    if (tooLate) throw Failure("the test's time is over");
    running.emplace(arguments);
    guarded = running->main();
    running->resizeClient(clientWidth, clientHeight);
    settleBy(drawing());
    return *running;
}

Program& WindowTest::startWith(const std::string& model)
{
    start({model});
    awaitModel(model);
    return *running;
}

HWND WindowTest::focus() const
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(running->main(), nullptr), &info);
    return info.hwndFocus;
}

void WindowTest::tabTo(HWND wanted) const
{
    for (int i = 0; i < 30 && focus() != wanted; ++i) running->send(focus(), WM_KEYDOWN, VK_TAB);
    if (focus() != wanted) throw Failure("Tab does not reach " + std::to_string(GetDlgCtrlID(wanted)));
}

void WindowTest::awaitModel(const std::string& path)
{
    const std::string title = "Belvor - " + fileName(path);
    await(
        "the title " + title,
        [&] {
            if (const HWND box = running->dialog(textOf(Text::warningTitle)))
                throw Failure("a warning: " + running->messageOf(box));
            return running->title() == title;
        },
        20000);
}

void WindowTest::open(const std::string& path)
{
    PostMessageW(running->main(), WM_COMMAND, ID_OPENMODEL, 0);
    answerSaveQuestion(IDNO);
    running->chooseFile(running->awaitDialog(textOf(Text::openModelTitle)), path);
}

void WindowTest::saveAs(const std::string& path)
{
    DeleteFileW(toWide(path).c_str());
    running->chooseFile(running->openDialog(ID_SAVEAS, "Save As"), path);
}

void WindowTest::answerSaveQuestion(int button)
{
    HWND box = nullptr;
    if (eventually([&] { return (box = running->dialog(textOf(Text::imageNotSaved))) != nullptr; }, 1000))
        running->answer(box, button);
}

int WindowTest::close(int saveAnswer)
{
    PostMessageW(running->main(), WM_CLOSE, 0, 0);
    answerSaveQuestion(saveAnswer);
    return running->exitStatus();
}

std::string WindowTest::savedParameters()
{
    const std::string path = inFolder("saved.bvp");
    DeleteFileW(toWide(path).c_str());
    running->chooseFile(running->openDialog(ID_SAVEPARAMETERS, textOf(Text::saveParametersTitle)), path);
    await("the parameter file", [&] { return !readFile(path).empty(); });
    return readFile(path);
}

void WindowTest::loadParameters(const std::string& text)
{
    writeFile(inFolder("loaded.bvp"), text);
    running->chooseFile(running->openDialog(ID_LOADPARAMETERS, textOf(Text::loadParametersTitle)),
                        inFolder("loaded.bvp"));
}

ViewParameters WindowTest::view()
{
    ViewParameters record;
    if (!record.parse(savedParameters(), boxCentre, boxRadius)) throw Failure("no parameter file");
    return record;
}

void WindowTest::load(const ViewParameters& record) { loadParameters(record.text(boxCentre, boxRadius)); }

void WindowTest::expectView(const ViewParameters& is, const ViewParameters& wanted, const std::string& why)
{
    // As parameter files hold them: number by number, as the last of the six digits may differ.
    std::istringstream texts[] = {std::istringstream(is.text(boxCentre, boxRadius)),
                                  std::istringstream(wanted.text(boxCentre, boxRadius))};
    for (std::istringstream& text : texts) text.ignore(100, '\n');
    int number = 0;
    for (double a, b; texts[1] >> b; ++number)
        EXPECT_TRUE(texts[0] >> a && std::fabs(a - b) < 1e-4 + 1e-5 * std::fabs(b))
            << why << ", number " << number << ": " << a << " instead of " << b;
}

std::string WindowTest::awaitPicture(const Picture& wanted, bool onlyShape)
{
    const auto compared = [onlyShape](Picture picture) {
        for (std::uint32_t& pixel : picture.pixels) pixel = onlyShape && pixel ? 1 : pixel;
        return picture;
    };
    std::string fault;
    eventually([&] { return (fault = difference(compared(screenOf(drawing())), compared(wanted))).empty(); });
    return fault;
}

std::string WindowTest::reference(const std::string& model, const std::string& size, const std::string& view)
{
    const std::string image = inFolder("reference.omb"), file = inFolder("reference.bvp");
    writeFile(file, view);
    std::vector<std::string> arguments{"--quiet", "--size", size, model, image};
    if (!view.empty()) arguments.insert(arguments.begin(), {"--view", file});
    if (exitStatusOf(startProcess("belvor-render.exe", arguments), 60000) != 0)
        throw Failure("belvor-render fails");
    return readFile(image);
}

}   // namespace belvor::window
