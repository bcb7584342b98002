#include "tests/window/WindowTest.h"

namespace belvor::window {

class MenuTest : public WindowTest {
protected:
    static bool menuOpen()
    {
        return FindWindowW(L"#32768", nullptr) && IsWindowVisible(FindWindowW(L"#32768", nullptr));
    }
    /// Opens a menu by its letter.
    static void openMenu(WORD letter)
    {
        pressKeys({VK_MENU, letter});
        await("the menu", menuOpen, 3000);
    }
    static void closeMenus()
    {
        for (int k = 0; k < 3; ++k) pressKeys({VK_ESCAPE});
        await(
            "the menu to close", [] { return !menuOpen(); }, 3000);
    }
};

TEST_F(MenuTest, EveryItemSaysWhatItDoesInTheStatusBar)
{
    const struct {
        WORD letter;
        std::vector<int> items;
    } menus[] = {
        {'F', {102, 205, 2472, 2474, 103, 104, 211, 105}},
        {'E', {301, 302, 304, 305, 2470, 2471, 0, 2473, 314, 306, 315, 316}},
        {'V', {308, 309, 2476, 2477}},
        {'H', {121, 122}},
    };
    start();
    for (const auto& menu : menus) {
        openMenu(menu.letter);
        pressKeys({VK_UP});     // from the first item to the last ...
        pressKeys({VK_DOWN});   // ... and back: the first is chosen whether or not opening chose it
        for (const int item : menu.items) {
            EXPECT_TRUE(program().awaitStatus(item == 0 ? "" : textOf(static_cast<Text>(item))))
                << item << ": " << program().statusPart(0);
            pressKeys({VK_DOWN});
        }
        closeMenus();
        EXPECT_TRUE(program().awaitStatus(textOf(Text::start))) << "the status bar is itself again";
    }
    const auto menu = reinterpret_cast<LPARAM>(GetMenu(program().main()));
    for (int popup = 0; popup < 4; ++popup) {
        program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(popup, MF_POPUP | MF_HILITE), menu);
        EXPECT_EQ(program().statusPart(0), textOf(textAfter(Text::fileMenuHelp, popup)));
    }
    program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    program().send(program().main(), WM_COMMAND, MAKEWPARAM(999, 7), 0);
    const std::string text = program().statusPart(0);
    EXPECT_NE(text.find("wNotifyCode 7 wID 999 hwndCtl 00000000"), std::string::npos) << text;
    program().command(ID_LEAVEFULLSCREEN);
    EXPECT_EQ(program().statusPart(0), text) << "leaving full screen without full screen says nothing";
}

TEST_F(MenuTest, WhatNeedsAModelWaitsForOne)
{
    const struct {
        WORD menu, item;
        std::string caption;
    } opening[] = {
        {'F', 'M', "Belvor Model Properties"},
        {'F', 'A', "Save As"},
        {'E', 'V', "View Parameters"},
        {'E', 'S', textOf(Text::saveParametersTitle)},
        {'E', 'L', textOf(Text::loadParametersTitle)},
        {VK_CONTROL, 'S', "Save As"},
    };
    const auto choose = [](WORD menu, WORD item) {
        if (menu == VK_CONTROL) return pressKeys({menu, item});
        openMenu(menu);
        pressKeys({item});
    };
    start();
    for (const auto& o : opening) {
        choose(o.menu, o.item);
        program().send(program().main(), WM_NULL);
        EXPECT_EQ(GetForegroundWindow(), program().main()) << o.caption << " is grey";
        closeMenus();
    }
    startWith(boxModel());
    const Picture whole = rendered(boxModel());
    ASSERT_EQ(awaitPicture(whole), "");
    for (const auto& o : opening) {
        choose(o.menu, o.item);
        program().answer(program().awaitDialog(o.caption), IDCANCEL);
    }
    choose('E', 'Z');
    EXPECT_TRUE(eventually([&] { return screenOf(drawing()) != whole; })) << "a wider view";
    choose('E', 'P');
    EXPECT_EQ(awaitPicture(whole), "") << "and back";
    pressKeys({VK_F1});
    EXPECT_TRUE(program().awaitStatus(textOf(Text::helpNotOpened))) << "no help lies beside the program here";
    choose(VK_CONTROL, 'O');
    program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), IDNO);
    program().answer(program().awaitDialog(textOf(Text::openModelTitle)), IDCANCEL);
}

}   // namespace belvor::window
