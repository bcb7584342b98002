#include "tests/window/Input.h"
#include "tests/window/WindowTest.h"

namespace belvor::window {

class MenuTest : public WindowTest {
protected:
    bool menuOpen() const { return FindWindowW(L"#32768", nullptr) && IsWindowVisible(FindWindowW(L"#32768", nullptr)); }
    /// Opens a menu by its letter.
    void openMenu(WORD letter)
    {
        pressKeys({VK_MENU, letter});
        await("the menu", [&] { return menuOpen(); }, 3000);
    }
    void closeMenus()
    {
        for (int k = 0; k < 3; ++k) pressKeys({VK_ESCAPE});
        await("the menu to close", [&] { return !menuOpen(); }, 3000);
    }
};

TEST_F(MenuTest, EveryItemSaysWhatItDoesInTheStatusBar)
{
    const struct { const char* why; WORD letter; int popup; std::vector<int> items; } menus[] = {
        {"File", 'F', 115, {102, 205, 103, 104, 211, 105}},
        {"Edit", 'E', 116, {301, 302, 304, 305, 314, 306, 315, 316}},
        {"View", 'V', 117, {308, 309}},
        {"Help", 'H', 118, {121, 122}},
    };
    start();
    for (const auto& menu : menus) {
        SCOPED_TRACE(menu.why);
        openMenu(menu.letter);
        pressKeys({VK_UP});   // from the first item to the last ...
        pressKeys({VK_DOWN}); // ... and back: the first is chosen whether or not opening chose it
        for (const int item : menu.items) {
            EXPECT_TRUE(eventually([&] { return program().statusPart(0) == textOf(item); }, 2000)) << item << ": " << program().statusPart(0);
            pressKeys({VK_DOWN});
        }
        closeMenus();
        EXPECT_TRUE(eventually([&] { return program().statusPart(0) == textOf(124); }, 2000)) << "the status bar is itself again";
    }
}

TEST_F(MenuTest, WhatNeedsAModelWaitsForOne)
{
    const struct { WORD menu, item; std::string caption; } opening[] = {
        {'F', 'M', "Belvor Model Properties"}, {'F', 'A', "Save As"}, {'E', 'V', "View Parameters"},
        {'E', 'S', textOf(619)},               {'E', 'L', textOf(618)},
    };
    start();
    for (const auto& o : opening) {
        openMenu(o.menu);
        pressKeys({o.item});
        program().send(program().main(), WM_NULL);
        EXPECT_EQ(GetForegroundWindow(), program().main()) << o.caption << " is grey";
        closeMenus();
    }
    pressKeys({VK_CONTROL, 'S'});
    EXPECT_EQ(GetForegroundWindow(), program().main()) << "a grey item's accelerator does nothing";

    startWith(boxModel());
    const Picture whole = rendered(boxModel());
    ASSERT_EQ(awaitPicture(whole), "");
    for (const auto& o : opening) {
        openMenu(o.menu);
        pressKeys({o.item});
        HWND dialog = nullptr;
        await(o.caption.c_str(), [&] { return (dialog = program().dialog(o.caption)) || (o.item == 'A' && (dialog = program().dialog("Save as"))); });
        program().answer(dialog, IDCANCEL);
    }
    openMenu('E');
    pressKeys({'Z'});
    EXPECT_TRUE(eventually([&] { return !difference(screenOf(drawing()), whole).empty(); })) << "a wider view";
    openMenu('E');
    pressKeys({'P'});
    EXPECT_EQ(awaitPicture(whole), "") << "and back";
}

TEST_F(MenuTest, AcceleratorsReachTheirCommands)
{
    startWith(boxModel());
    pressKeys({VK_CONTROL, 'O'});
    program().answer(program().awaitDialog(textOf(126)), IDNO);
    program().answer(program().awaitDialog(textOf(617)), IDCANCEL);
    pressKeys({VK_CONTROL, 'S'});
    HWND box = nullptr;
    await("the Save As dialog", [&] { return (box = program().dialog("Save As")) || (box = program().dialog("Save as")); });
    program().answer(box, IDCANCEL);
    EXPECT_TRUE(program().running());
}

TEST_F(MenuTest, AnUnknownCommandIsNamedInTheStatusBar)
{
    start();
    program().send(program().main(), WM_COMMAND, MAKEWPARAM(999, 7), 0);
    const std::string text = program().statusPart(0);
    EXPECT_NE(text.find("wNotifyCode 7 wID 999 hwndCtl 00000000"), std::string::npos) << text;
    program().send(program().main(), WM_COMMAND, ID_LEAVEFULLSCREEN, 0);
    EXPECT_EQ(program().statusPart(0), text) << "leaving full screen without full screen says nothing";
}

}   // namespace belvor::window
