#include "tests/window/WindowTest.h"

#include <filesystem>

namespace belvor::window {

TEST_F(WindowTest, WritesTheSameBytesAsBelvorRender)
{
    const std::string image = inFolder("saved.omb"), typed = viewText("-6 -4 5", "2 1.5 1", "0.5");
    startWith(boxModel());
    program().send(program().main(), WM_USER + 108, 260, 195);   // the image size
    loadParameters(typed);
    EXPECT_EQ(awaitPicture(rendered(boxModel(), typed)), "");
    saveAs(image);
    EXPECT_TRUE(eventually([&] { return readFile(image) == reference(boxModel(), "260x195", typed); }));
}

TEST_F(WindowTest, TheQuestionBeforeAPictureIsLostHasThreeAnswers)
{
    startWith(boxModel());
    const auto ask = [&](int answer) {
        PostMessageW(program().main(), WM_CLOSE, 0, 0);
        const HWND question = program().awaitDialog(textOf(Text::imageNotSaved));
        EXPECT_EQ(program().messageOf(question), "Do you want to save\n\nas an Ombr file?");
        program().answer(question, answer);
    };
    ask(IDCANCEL);
    EXPECT_TRUE(program().running()) << "Cancel keeps the program";
    const std::string image = inFolder("asked.omb");
    ask(IDYES);
    program().chooseFile(program().awaitDialog("Save As"), image);
    EXPECT_EQ(program().exitStatus(), 0) << "Yes saves and goes on";
    EXPECT_TRUE(readFile(image) == reference(boxModel(), "800x600")) << "written to the end before that";
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
    ASSERT_EQ(awaitPicture(rendered(boxModel())), "");
    await("the thumbnails, whose end clears the status bar", [&] { return program().statusPart(0).empty(); });
    std::string folder = inFolder("long");
    while (folder.size() < 249) folder += std::string(folder.size() % 9 ? "" : "\\") + "d";
    std::filesystem::create_directories(toWide(folder));
    const std::string path = folder + "\\" + std::string(256 - folder.size(), 'f');   // 257: one too many
    for (const auto& [id, caption] :
         {std::pair{ID_SAVEAS, "Save As"}, {ID_SAVEPARAMETERS, textOf(Text::saveParametersTitle)}}) {
        program().command(999);   // another text in the status bar
        program().chooseFile(program().openDialog(id, caption), path);
        EXPECT_TRUE(program().awaitStatus("GetOpenFileName status 0x3003"))
            << caption << program().statusPart(0);
    }
}

}   // namespace belvor::window
