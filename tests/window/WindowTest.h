#pragma once

#include "resources/Texts.h"
#include "tests/window/Input.h"
#include "tests/window/Models.h"
#include "tests/window/Screen.h"
#include "view/ViewParameters.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <thread>

namespace belvor::window {

/// The size of the main window's client area at which the drawing area is 608 × 456, exactly
/// the proportions of the image file: such a picture can be compared with belvor-render's.
inline constexpr int clientWidth = 784, clientHeight = 541;
inline constexpr int drawnWidth = 608, drawnHeight = 456;

/// The middle and the radius of boxModel().
inline const Point<3> boxCentre{1, 2, 3};
inline const double boxRadius = std::sqrt(14.0);

/// What the program has left in the registry, which tools/with-wine.sh keeps apart from the user's.
inline const std::wstring settingsKey = L"Software\\Calderwood\\Belvor\\";
inline std::vector<std::string> recentFiles()
{
    std::vector<std::string> paths;
    wchar_t value[1024];
    for (DWORD size = sizeof value;; size = sizeof value) {
        const std::wstring key = settingsKey + L"Recent File List",
                           name = L"File" + std::to_wstring(paths.size() + 1);
        if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, value, &size)
            != ERROR_SUCCESS)
            return paths;
        paths.push_back(toUtf8(value));
    }
}

/// The part of a path behind the last backslash.
inline std::string fileName(const std::string& path) { return path.substr(path.find_last_of('\\') + 1); }

/// The text of a parameter file.
inline std::string viewText(const char* eye, const char* lookAt, const char* zoom)
{
    return std::string("Belvor View Parameters 1.0\n") + eye + '\n' + lookAt + '\n' + zoom
           + "\n0\n0.4\n0.1\n-30 60 0.6\n";
}

/// A test with a program of its own, no recent files and a limit of time: a program that does not answer
/// could hold up the test for ever.
class WindowTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const wchar_t* const key : {L"Recent File List", L"Settings"})
            RegDeleteTreeW(HKEY_CURRENT_USER, (settingsKey + key).c_str());
        watchdog = std::jthread([this](const std::stop_token& stop) {
            for (const ULONGLONG end = GetTickCount64() + timeForATest; GetTickCount64() < end; Sleep(20))
                if (stop.stop_requested()) return;
            tooLate = true;
            TerminateProcess(guarded, 255);
        });
    }
    void TearDown() override
    {
        if (running && running->running()) {
            EXPECT_EQ(running->dialog(textOf(Text::errorTitle)), nullptr) << "a fatal error is shown";
        }
        watchdog = {};
        running.reset();
        EXPECT_FALSE(tooLate) << "the test's time was over";
    }

    /// Starts the program, in the size above, with these arguments.
    Program& start(const std::vector<std::string>& arguments = {})
    {
        if (tooLate) throw Failure("the test's time is over");
        running.emplace(arguments);
        guarded = running->handle();
        running->resizeClient(clientWidth, clientHeight);
        idleWhenPainted = drawing();
        return *running;
    }
    /// Starts it with a model and waits until that is there.
    Program& startWith(const std::string& model)
    {
        start({model});
        awaitModel(model);
        return *running;
    }
    Program& program() { return *running; }
    const Program& program() const { return *running; }

    HWND drawing() const { return running->child(ID_DISPLAY); }
    HWND panel(int number) const { return running->child(number, running->child(ID_CONTROLS)); }
    HWND focus() const
    {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(running->main(), nullptr), &info);
        return info.hwndFocus;
    }
    /// Presses Tab until that window has the focus.
    void tabTo(HWND wanted) const
    {
        for (int i = 0; i < 30 && focus() != wanted; ++i) running->send(focus(), WM_KEYDOWN, VK_TAB);
        if (focus() != wanted) throw Failure("Tab does not reach " + std::to_string(GetDlgCtrlID(wanted)));
    }

    void awaitModel(const std::string& path)
    {
        const auto shown = [&, title = "Belvor - " + fileName(path)] {
            if (const HWND box = running->dialog(textOf(Text::warningTitle)))
                throw Failure("a warning: " + running->messageOf(box));
            return running->title() == title;
        };
        await("the model " + path, shown, 20000);
    }
    /// Chooses Open Model and the file; answers No to the question about the picture.
    void open(const std::string& path)
    {
        PostMessageW(running->main(), WM_COMMAND, ID_OPENMODEL, 0);
        answerSaveQuestion(IDNO);
        running->chooseFile(running->awaitDialog(textOf(Text::openModelTitle)), path);
    }
    /// Chooses Save As and the file, which is gone before.
    void saveAs(const std::string& path)
    {
        DeleteFileW(toWide(path).c_str());
        running->chooseFile(running->openDialog(ID_SAVEAS, "Save As"), path);
    }
    /// Answers the question about the picture, if it comes.
    void answerSaveQuestion(int button)
    {
        HWND box = nullptr;
        if (eventually([&] { return (box = running->dialog(textOf(Text::imageNotSaved))) != nullptr; }, 1000))
            running->answer(box, button);
    }
    /// Closes the program and returns its exit status.
    int close()
    {
        PostMessageW(running->main(), WM_CLOSE, 0, 0);
        answerSaveQuestion(IDNO);
        return running->exitStatus();
    }

    /// Saves the parameters to a file of the folder and returns its text.
    std::string savedParameters()
    {
        const std::string path = inFolder("saved.bvp");
        DeleteFileW(toWide(path).c_str());
        running->chooseFile(running->openDialog(ID_SAVEPARAMETERS, textOf(Text::saveParametersTitle)), path);
        await("the parameter file", [&] { return !readFile(path).empty(); });
        return readFile(path);
    }
    void loadParameters(const std::string& text)
    {
        const HWND dialog = running->openDialog(ID_LOADPARAMETERS, textOf(Text::loadParametersTitle));
        running->chooseFile(dialog, writeFile(inFolder("loaded.bvp"), text));
    }
    /// The view of a program that shows the box. Six digits survive the file.
    ViewParameters view()
    {
        ViewParameters record;
        if (!record.parse(savedParameters(), boxCentre, boxRadius)) throw Failure("no parameter file");
        return record;
    }
    /// Makes it show that view.
    void load(const ViewParameters& record) { loadParameters(record.text(boxCentre, boxRadius)); }
    /// Compares them as parameter files hold them: number by number, as the last of the six digits may
    /// differ.
    static void expectView(const ViewParameters& is, const ViewParameters& wanted, const std::string& why)
    {
        std::istringstream texts[] = {std::istringstream(is.text(boxCentre, boxRadius)),
                                      std::istringstream(wanted.text(boxCentre, boxRadius))};
        for (std::istringstream& text : texts) text.ignore(100, '\n');
        int number = 0;
        for (double a, b; texts[1] >> b; ++number)
            EXPECT_TRUE(texts[0] >> a && std::fabs(a - b) < 1e-4 + 1e-5 * std::fabs(b))
                << why << ", number " << number << ": " << a << " instead of " << b;
    }

    /// Waits until the drawing area shows that picture; empty, or how it differs. What was loaded
    /// before decides the colours of new materials: then only the shape can be compared.
    std::string awaitPicture(const Picture& wanted, bool onlyShape = false)
    {
        const auto compared = [onlyShape](Picture picture) {
            for (std::uint32_t& pixel : picture.pixels) pixel = onlyShape && pixel ? 1 : pixel;
            return picture;
        };
        std::string fault;
        eventually(
            [&] { return (fault = difference(compared(screenOf(drawing())), compared(wanted))).empty(); });
        return fault;
    }
    std::string awaitBox(bool onlyShape = true) { return awaitPicture(rendered(boxModel()), onlyShape); }
    /// The image file that belvor-render makes of the model, in the view of that parameter file's text.
    static std::string reference(const std::string& model, const std::string& size,
                                 const std::string& view = "")
    {
        const std::string image = inFolder("reference.omb");
        std::vector<std::string> arguments{"--quiet", "--size", size, model, image};
        if (!view.empty())
            arguments.insert(arguments.begin(), {"--view", writeFile(inFolder("reference.bvp"), view)});
        if (exitStatusOf(startProcess("belvor-render.exe", arguments), 60000) != 0)
            throw Failure("belvor-render fails");
        return readFile(image);
    }
    /// The picture in the size of the drawing area.
    static Picture rendered(const std::string& model, const std::string& view = "")
    {
        return pictureIn(reference(model, "608x456", view));
    }

private:
    static constexpr ULONGLONG timeForATest = 45000;   // milliseconds

    std::optional<Program> running;
    std::atomic<HANDLE> guarded = nullptr;
    std::atomic<bool> tooLate = false;
    std::jthread watchdog;
};

}   // namespace belvor::window
