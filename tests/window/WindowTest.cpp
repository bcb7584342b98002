#include "tests/window/WindowTest.h"

#include "platform/Utf16.h"
#include "tests/window/Input.h"

namespace belvor::window {

namespace {

constexpr const wchar_t* recentKey = L"Software\\Calderwood\\Belvor\\Recent File List";
constexpr int secondsForATest = 45;

/// Keeps the recent files of whoever runs the tests, and leaves no files behind.
class UserSettings : public testing::Environment {
public:
    void SetUp() override { kept = recentFiles(); }
    void TearDown() override
    {
        setRecentFiles(kept);
        removeFolder();
    }

private:
    std::vector<std::string> kept;
};
testing::Environment* const settings = testing::AddGlobalTestEnvironment(new UserSettings);

}   // namespace

std::vector<std::string> recentFiles()
{
    std::vector<std::string> paths;
    for (int n = 1; n <= 8; ++n) {
        wchar_t value[1024];
        DWORD size = sizeof value;
        const std::wstring name = L"File" + std::to_wstring(n);
        if (RegGetValueW(HKEY_CURRENT_USER, recentKey, name.c_str(), RRF_RT_REG_SZ, nullptr, value, &size) != ERROR_SUCCESS) break;
        paths.push_back(toUtf8(value));
    }
    return paths;
}

void setRecentFiles(const std::vector<std::string>& paths)
{
    RegDeleteTreeW(HKEY_CURRENT_USER, recentKey);
    int n = 0;
    for (const std::string& path : paths) {
        const std::wstring value = toWide(path), name = L"File" + std::to_wstring(++n);
        RegSetKeyValueW(HKEY_CURRENT_USER, recentKey, name.c_str(), REG_SZ, value.c_str(), static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }
}

std::string fileName(const std::string& path) { return path.substr(path.find_last_of('\\') + 1); }

void WindowTest::SetUp()
{
    setRecentFiles({});
    Watchdog::begin(secondsForATest);
}

void WindowTest::TearDown()
{
    if (running && running->running()) {
        EXPECT_EQ(running->dialog(textOf(615)), nullptr) << "a fatal error is shown";
    }
    running.reset();
    EXPECT_TRUE(Watchdog::end()) << "the test's time was over";
}

Program& WindowTest::start(const std::vector<std::string>& arguments)
{
    running.reset();
    running = std::make_unique<Program>(arguments);
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

void WindowTest::awaitModel(const std::string& path)
{
    const std::string title = "Belvor - " + fileName(path);
    await(("the title " + title).c_str(), [&] {
        if (const HWND box = running->dialog(textOf(616))) throw Failure("a warning: " + running->messageOf(box));
        return running->title() == title;
    }, 20000);
}

void WindowTest::open(const std::string& path)
{
    running->command(ID_OPENMODEL);
    answerSaveQuestion(IDNO);
    running->chooseFile(running->awaitDialog(textOf(617)), path);
}

void WindowTest::answerSaveQuestion(int button)
{
    HWND box = nullptr;
    if (eventually([&] { return (box = running->dialog(textOf(126))) != nullptr; }, 1000)) running->answer(box, button);
}

std::string WindowTest::savedParameters()
{
    static int number = 0;
    const std::string path = inFolder("saved" + std::to_string(++number) + ".bvp");
    running->command(ID_SAVEPARAMETERS);
    const HWND box = running->awaitDialog(textOf(619));
    running->chooseFile(box, path);
    await("the file dialog to go", [&] { return !IsWindowVisible(box); });
    running->send(running->main(), WM_NULL);
    await("the parameter file", [&] { return GetFileAttributesW(toWide(path).c_str()) != INVALID_FILE_ATTRIBUTES; });
    return readFile(path);
}

void WindowTest::loadParameters(const std::string& path)
{
    running->command(ID_LOADPARAMETERS);
    const HWND box = running->awaitDialog(textOf(618));
    running->chooseFile(box, path);
    await("the file dialog to go", [&] { return !IsWindowVisible(box); });
    running->send(running->main(), WM_NULL);
}

int WindowTest::close(int saveAnswer)
{
    PostMessageW(running->main(), WM_CLOSE, 0, 0);
    answerSaveQuestion(saveAnswer);
    return running->exitStatus();
}

std::string WindowTest::awaitPicture(const Picture& wanted, int milliseconds)
{
    std::string fault;
    eventually([&] { return (fault = difference(screenOf(drawing()), wanted)).empty(); }, milliseconds);
    return fault;
}

std::string WindowTest::awaitShape(const Picture& wanted, int milliseconds)
{
    const auto covered = [](Picture picture) {
        for (std::uint32_t& pixel : picture.pixels) pixel = pixel ? 1 : 0;
        return picture;
    };
    std::string fault;
    eventually([&] { return (fault = difference(covered(screenOf(drawing())), covered(wanted))).empty(); }, milliseconds);
    return fault;
}

Picture WindowTest::rendered(const std::string& model, const std::string& view, int width, int height)
{
    const std::string image = inFolder("rendered.omb");
    std::vector<std::string> arguments{"--quiet", "--size", std::to_string(width) + 'x' + std::to_string(height)};
    if (!view.empty()) arguments.insert(arguments.end(), {"--view", view});
    arguments.insert(arguments.end(), {model, image});
    if (run(besideUs("belvor-render.exe"), arguments) != 0) throw Failure("belvor-render fails");
    return readOmbr(image);
}

}   // namespace belvor::window
