#pragma once

#include "resources/Texts.h"
#include "resources/ids.h"
#include "tests/window/Input.h"
#include "tests/window/Models.h"
#include "tests/window/Program.h"
#include "tests/window/Screen.h"
#include "view/ViewParameters.h"

#include <gtest/gtest.h>

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
    const Program& program() const { return *running; }

    HWND drawing() const { return running->child(ID_DISPLAY); }
    HWND panel(int number) const { return running->child(number, running->child(ID_CONTROLS)); }
    HWND focus() const;
    /// Presses Tab until that window has the focus.
    void tabTo(HWND wanted) const;

    void awaitModel(const std::string& path);
    /// Chooses Open Model and the file; answers No to the question about the picture.
    void open(const std::string& path);
    /// Chooses Save As and the file, which is gone before.
    void saveAs(const std::string& path);
    /// Answers the question about the picture, if it comes.
    void answerSaveQuestion(int button);
    /// Closes the program and returns its exit status.
    int close(int saveAnswer = IDNO);

    /// Saves the parameters to a file of the folder and returns its text.
    std::string savedParameters();
    void loadParameters(const std::string& text);
    /// The view of a program that shows the box. Six digits survive the file.
    ViewParameters view();
    /// Makes it show that view.
    void load(const ViewParameters& record);
    static void expectView(const ViewParameters& is, const ViewParameters& wanted, const std::string& why);

    /// Waits until the drawing area shows that picture; empty, or how it differs. What was loaded
    /// before decides the colours of new materials: then only the shape can be compared.
    std::string awaitPicture(const Picture& wanted, bool onlyShape = false);
    std::string awaitBox(bool onlyShape = true) { return awaitPicture(rendered(boxModel()), onlyShape); }
    /// The image file that belvor-render makes of the model, in the view of that parameter file's text.
    static std::string reference(const std::string& model, const std::string& size,
                                 const std::string& view = "");
    /// The picture in the size of the drawing area.
    static Picture rendered(const std::string& model, const std::string& view = "")
    {
        return pictureIn(reference(model, "608x456", view));
    }

private:
    std::optional<Program> running;
    std::jthread watchdog;
};

/// What the program has left in the registry, which tools/with-wine.sh keeps apart from the user's.
std::vector<std::string> recentFiles();

/// The part of a path behind the last backslash.
std::string fileName(const std::string& path);

/// The text of a parameter file.
std::string viewText(const char* eye, const char* lookAt, const char* zoom);

}   // namespace belvor::window
