#include "tests/window/WindowTest.h"
#include "view/StandardViews.h"

#include <algorithm>
#include <cstdio>

namespace belvor::window {

namespace {

/// In the order of the menu.
constexpr std::string_view order[] = {"plan",  "front",  "back",   "left",   "right",
                                      "below", "iso-ne", "iso-nw", "iso-se", "iso-sw"};

int filesLike(const std::string& pattern)
{
    WIN32_FIND_DATAW found;
    HANDLE const search = FindFirstFileW(toWide(inFolder(pattern)).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return 0;
    int count = 1;
    while (FindNextFileW(search, &found)) ++count;
    FindClose(search);
    return count;
}

}   // namespace

TEST_F(WindowTest, TheStandardViewsHaveTheNumbersOfBelvorRender)
{
    startWith(boxModel());
    const std::string file = inFolder("standard.bvp");
    for (int k = 0; k < standardViewCount; ++k) {
        const char* const name = nameOf(static_cast<StandardView>(k));
        const std::vector<std::string> saving{"--quiet", "--view", name, "--save-view", file, boxModel()};
        ASSERT_EQ(exitStatusOf(startProcess("belvor-render.exe", saving), 10000), 0) << name;
        const auto id = std::find(std::begin(order), std::end(order), std::string_view(name)) - order;
        program().command(ID_STANDARDVIEW + static_cast<int>(id));
        EXPECT_EQ(savedParameters(), readFile(file)) << name;
    }
}

TEST_F(WindowTest, EscapeAtAnyMomentOfALoadOrASaveLeavesTheModelAndTheFileWhole)
{
    const std::string model = sphereModel(300000), image = inFolder("stopped.omb");
    startWith(model);
    const Picture picture = rendered(model);
    ASSERT_EQ(awaitPicture(picture), "");
    int stopped = 0, written = 0;
    for (DWORD moment = 0; moment < 20; ++moment) {
        program().command(ID_RELOAD);
        Sleep(moment * 12);
        program().command(ID_STOP);
        stopped += program().statusPart(0) == textOf(Text::abandoned);
        EXPECT_TRUE(program().title().ends_with(fileName(model)));
    }
    EXPECT_EQ(awaitPicture(picture, true), "");
    program().send(program().main(), WM_USER + 108, drawnWidth, drawnHeight);   // the image size
    saveAs(image);
    const auto saved = [&] { return filesLike("stopped*.part") == 0 && !readFile(image).empty(); };
    ASSERT_TRUE(eventually(saved));
    const std::string whole = readFile(image);
    for (DWORD moment = 0; moment < 20; ++moment) {
        Sleep(50);   // the window hears of the end
        writeFile(image, "old");
        program().command(ID_SAVE);
        Sleep(moment * 12);
        program().command(ID_STOP);
        EXPECT_TRUE(eventually(saved)) << "the unfinished file has gone";
        const std::string bytes = readFile(image);
        EXPECT_TRUE(bytes == "old" || bytes == whole) << moment << ": " << bytes.size();
        written += bytes == whole;
    }
    std::printf("    of 20 loads %d were stopped, of 20 saves %d were not\n", stopped, written);
    EXPECT_GT(stopped, 0);
    EXPECT_LT(written, 20);
}

}   // namespace belvor::window
