#include "tests/window/WindowTest.h"

namespace belvor::window {

namespace {

const std::string typedView = "Belvor View Parameters 1.0\n-6 -4 5\n2 1.5 1\n0.5\n0\n0.3\n0.2\n-30 60 0.6\n";

}   // namespace

TEST_F(WindowTest, WritesTheSameBytesAsBelvorRender)
{
    startWith(boxModel());
    const std::string wanted = reference(boxModel(), "800x600"), image = inFolder("saved.omb");
    for (int twice = 0; twice < 2; ++twice)   // Save asks for a name until there is one
        program().answer(program().openDialog(ID_SAVE, "Save As"), IDCANCEL);
    saveAs(image);
    ASSERT_TRUE(eventually([&] { return readFile(image) == wanted; }));

    DeleteFileW(toWide(image).c_str());
    program().command(ID_SAVE);   // the same file without a question, the view of now
    ASSERT_TRUE(eventually([&] { return readFile(image) == wanted; }));

    program().send(program().main(), WM_USER + 108, 250, 130);   // the image size
    loadParameters(typedView);
    program().command(ID_SAVE);
    EXPECT_TRUE(eventually([&] { return readFile(image) == reference(boxModel(), "250x130", typedView); }));
    PostMessageW(program().main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program().exitStatus(), 0) << "the picture is saved: no question";
}

TEST_F(WindowTest, TheQuestionBeforeAPictureIsLostHasThreeAnswers)
{
    startWith(boxModel());
    const auto ask = [&] {
        PostMessageW(program().main(), WM_CLOSE, 0, 0);
        return program().awaitDialog(textOf(Text::imageNotSaved));
    };
    HWND question = ask();
    EXPECT_EQ(program().messageOf(question), "Do you want to save\n\nas an Ombr file?")
        << "no name has been chosen yet";
    program().answer(question, IDCANCEL);
    EXPECT_TRUE(program().running()) << "Cancel keeps the program";

    program().answer(ask(), IDYES);
    program().answer(program().awaitDialog("Save As"), IDCANCEL);
    program().send(program().main(), WM_NULL);
    EXPECT_TRUE(program().running()) << "a Save As given up counts as no save";

    const std::string image = inFolder("asked.omb");
    program().answer(ask(), IDYES);
    program().chooseFile(program().awaitDialog("Save As"), image);
    EXPECT_EQ(program().exitStatus(), 0) << "Yes saves and goes on";
    EXPECT_TRUE(readFile(image) == reference(boxModel(), "800x600"))
        << "written to the end before the program has gone";
}

TEST_F(WindowTest, TheEndOfWindowsIsHeldForAnUnsavedPicture)
{
    startWith(boxModel());
    const auto askToEnd = [&](int answer) {
        LRESULT result = -1;
        std::thread system([&] { result = SendMessageW(program().main(), WM_QUERYENDSESSION, 0, 0); });
        program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), answer);
        system.join();
        return result;
    };
    EXPECT_EQ(askToEnd(IDCANCEL), FALSE);
    EXPECT_TRUE(recentFiles().empty());
    EXPECT_EQ(askToEnd(IDNO), TRUE);
    EXPECT_EQ(recentFiles(), std::vector<std::string>{boxModel()})
        << "the program may be ended without a word";
    const HWND dialog = program().openDialog(ID_SAVEAS, "Save As");
    EXPECT_EQ(program().send(program().main(), WM_QUERYENDSESSION), FALSE) << "a question is open";
    program().answer(dialog, IDCANCEL);
    saveAs(inFolder("end.omb"));
    EXPECT_TRUE(eventually([&] { return program().send(program().main(), WM_QUERYENDSESSION) == TRUE; }));
}

TEST_F(WindowTest, AnImageThatCannotBeWrittenIsAWarning)
{
    startWith(boxModel());
    const std::string image = inFolder("locked.omb");
    const KernelHandle locked(
        CreateFileW(toWide(image).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    program().chooseFile(program().openDialog(ID_SAVEAS, "Save As"), image);
    // First the system's own question whether to replace the file, then ours or the system's refusal.
    HWND box = nullptr;
    await("the refusal", [&] {
        for (const char* caption : {"Save As", "Error", "Warning"}) {
            const HWND found = program().dialog(caption);
            if (!found || GetDlgItem(found, 0x47C)) continue;
            if (GetDlgItem(found, IDYES)) PostMessageW(found, WM_COMMAND, IDYES, 0);
            else box = found;
        }
        return box != nullptr;
    });
    program().answer(box, IDOK);
    EXPECT_EQ(program().title(), "Belvor - box.thf");
}

TEST_F(WindowTest, ParametersComeBackAsTheyWereAndPreviousViewToggles)
{
    startWith(boxModel());
    const std::string first = savedParameters();
    loadParameters(typedView);
    EXPECT_EQ(awaitPicture(rendered(boxModel(), typedView)), "");
    const std::string second = savedParameters();
    EXPECT_NE(second, first);
    for (const std::string& wanted : {first, second}) {
        program().command(ID_PREVIOUSVIEW);
        EXPECT_EQ(savedParameters(), wanted);
    }
    loadParameters("Belvor View Parameters 2.0\n1 1 1\n");
    EXPECT_EQ(savedParameters(), second) << "a file of another kind changes nothing";
}

}   // namespace belvor::window
