#pragma once

#include "resources/Texts.h"
#include "resources/ids.h"
#include "tests/window/Models.h"
#include "tests/window/Program.h"
#include "tests/window/Screen.h"
#include "tests/window/Watchdog.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace belvor::window {

/// The size of the main window's client area at which the drawing area is 608 × 456, exactly
/// the proportions of the image file: such a picture can be compared with belvor-render's.
inline constexpr int clientWidth = 784, clientHeight = 541;
inline constexpr int drawnWidth = 608, drawnHeight = 456;

/// A test with a program of its own, no recent files and a limit of time.
class WindowTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Starts the program, in the size above, with these arguments.
    Program& start(const std::vector<std::string>& arguments = {});
    /// Starts it with a model and waits until that is there.
    Program& startWith(const std::string& model);
    Program& program() { return *running; }

    HWND drawing() const { return running->child(ID_DISPLAY); }
    HWND panel(int number) const { return running->child(number, running->child(ID_CONTROLS)); }

    void awaitModel(const std::string& path);
    /// Chooses Open Model and the file; answers No to the question about the picture.
    void open(const std::string& path);
    /// Answers the question about the picture, if it comes.
    void answerSaveQuestion(int button);
    /// Saves the parameters to a file of the folder and returns its text.
    std::string savedParameters();
    void loadParameters(const std::string& path);
    /// Closes the program and returns its exit status.
    int close(int saveAnswer = IDNO);

    /// Waits until the drawing area shows that picture; empty, or how it differs.
    std::string awaitPicture(const Picture& wanted, int milliseconds = 10000);
    /// The same but for the colours: what was loaded before decides those of new materials.
    std::string awaitShape(const Picture& wanted, int milliseconds = 10000);
    /// What belvor-render makes of the model in that view, in the size of the drawing area.
    static Picture rendered(const std::string& model, const std::string& view = "", int width = drawnWidth, int height = drawnHeight);

private:
    std::unique_ptr<Program> running;
};

/// The recent files of the user, set aside while the tests run.
std::vector<std::string> recentFiles();
void setRecentFiles(const std::vector<std::string>& paths);

/// The part of a path behind the last backslash.
std::string fileName(const std::string& path);

}   // namespace belvor::window
