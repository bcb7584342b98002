#include "platform/Win32Error.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(Win32Error, NamesWhatFailedAndTheSystemsReason)
{
    const std::string reason = Win32Error("", 2).what();
    EXPECT_NE(reason.find_first_not_of(' '), std::string::npos);
    EXPECT_EQ(reason.find(": "), std::string::npos) << "without a subject no colon: " << reason;
    EXPECT_EQ(Win32Error("GetClientRect", 2).what(), "GetClientRect: " + reason);
    for (const std::string unit : {"x", "\xC3\xA9"}) {   // one byte a character, two
        std::string path = "C:\\";
        while (path.size() < 500) path += unit;
        const std::string text = Win32Error(path + "\\model.thf", 2).what();
        EXPECT_LE(text.size(), 255u);
        EXPECT_GT(text.size(), 252u);
        EXPECT_TRUE(text.starts_with("..." + unit)) << text;
        EXPECT_TRUE(text.ends_with("\\model.thf: " + reason)) << text;
    }
}
