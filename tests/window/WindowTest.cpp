#include "tests/window/WindowTest.h"

#include "ui/ClientSize.h"

namespace belvor::window {

TEST_F(WindowTest, ShowsTheLastSizeWholeAfterSizesThatLeaveNoRoomAndDuringARender)
{
    const std::string model = sheetsModel(100000, 0.05);
    startWith(model);
    for (const SIZE& s : {SIZE{100, 400}, {400, 10}, {0, 0}}) {
        SetWindowPos(program().main(), nullptr, 0, 0, s.cx, s.cy, SWP_NOZORDER | SWP_NOSENDCHANGING);
        program().send(program().main(), WM_NULL);
    }
    for (const int state : {SW_MINIMIZE, SW_RESTORE}) ShowWindow(program().main(), state);
    for (int k = 0; k < 40; ++k) {
        SetWindowPos(program().main(), nullptr, 0, 0, 500 + 17 * (k % 25), 500 + 11 * (k % 19),
                     SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
        Sleep(15);
    }
    program().resizeClient(clientWidth, clientHeight);
    EXPECT_EQ(awaitPicture(rendered(model)), "");
}

TEST_F(WindowTest, FullScreenCoversTheScreenAndAClickReturns)
{
    startWith(boxModel());
    const HWND main = program().main();
    const auto partsShown = [&](bool status) {
        return IsWindowVisible(program().child(status ? ID_STATUSBAR : ID_CONTROLS)) != FALSE;
    };
    for (const bool maximised : {false, true}) {
        SCOPED_TRACE(maximised ? "from maximised" : "from a normal window");
        if (maximised) ShowWindow(main, SW_MAXIMIZE);
        program().send(main, WM_NULL);
        RECT before, after;
        GetWindowRect(main, &before);
        program().command(ID_FULLSCREEN);
        EXPECT_FALSE(partsShown(true) || partsShown(false));
        const PixelSize whole{GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        POINT origin{0, 0};
        EXPECT_TRUE(ClientToScreen(main, &origin) && origin.x == 0 && origin.y == 0
                    && clientSize(main) == whole);
        EXPECT_EQ(clientSize(drawing()).height, whole.width * 3 / 4) << "the image's proportions";
        program().send(drawing(), maximised ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, 0, MAKELPARAM(100, 100));
        GetWindowRect(main, &after);
        EXPECT_TRUE(EqualRect(&before, &after) && partsShown(true) && partsShown(false)) << "as it was";
    }
}

TEST_F(WindowTest, TheQuestionBeforeAPictureIsLostHasThreeAnswers)
{
    const std::string typed = viewText("-6 -4 5", "2 1.5 1", "0.5"), image = inFolder("asked.omb");
    startWith(boxModel());
    loadParameters(typed);
    const auto ask = [&](int answer) {
        PostMessageW(program().main(), WM_CLOSE, 0, 0);
        const HWND question = program().awaitDialog(textOf(Text::imageNotSaved));
        EXPECT_EQ(program().messageOf(question), "Do you want to save\n\nas an Ombr file?");
        program().answer(question, answer);
    };
    ask(IDCANCEL);
    EXPECT_TRUE(program().running()) << "Cancel keeps the program";
    ask(IDYES);
    program().chooseFile(program().awaitDialog("Save As"), image);
    EXPECT_EQ(program().exitStatus(), 0) << "Yes saves and goes on";
    EXPECT_TRUE(readFile(image) == reference(boxModel(), "800x600", typed))
        << "written to the end before that";
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
    EXPECT_EQ(recentFiles(), std::vector{boxModel()}) << "the program may be ended without a word";
    const HWND dialog = program().openDialog(ID_SAVEAS, "Save As");
    EXPECT_EQ(program().send(program().main(), WM_QUERYENDSESSION), FALSE) << "a question is open";
    program().answer(dialog, IDCANCEL);
    saveAs(inFolder("end.omb"));
    EXPECT_TRUE(eventually([&] { return program().send(program().main(), WM_QUERYENDSESSION) == TRUE; }));
}

TEST_F(WindowTest, AFileDialogThatFailsSaysSo)
{
    startWith(boxModel());
    std::string folder = inFolder("long");
    while (folder.size() < 249) folder += std::string(folder.size() % 9 ? "" : "\\") + "d";
    std::filesystem::create_directories(toWide(folder));
    const std::string path = folder + "\\" + std::string(256 - folder.size(), 'f');   // 257: one too many
    program().chooseFile(program().openDialog(ID_SAVEAS, "Save As"), path);
    EXPECT_TRUE(program().awaitStatus("GetOpenFileName status 0x3003")) << program().statusPart(0);
}

}   // namespace belvor::window
