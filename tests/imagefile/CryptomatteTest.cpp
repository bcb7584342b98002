#include "imagefile/Cryptomatte.h"

#include "text/JsonText.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(Cryptomatte, NumbersAreThePublishedHashChangedToFiniteFloats)
{
    EXPECT_EQ(Cryptomatte::idOfName("hello"), 0x248BFA47u);
    EXPECT_EQ(Cryptomatte::idOfName("hello, world"), 0x149BBB7Fu);
    EXPECT_EQ(Cryptomatte::idOfName("The quick brown fox jumps over the lazy dog"), 0x2E4FF723u);
    EXPECT_EQ(Cryptomatte::idOfName(""), 0x00800000u) << "hash 0 would be no material";
}

TEST(JsonText, EscapesControlCharactersAndWritesShortestNumbers)
{
    JsonText json;
    json.beginObject().key("a").value("\"\\\n\x01\xC3\xA4\xF0\x9D\x84\x9E\xFF").key("b").beginList();
    json.value(0.1).value(1e300 * 1e300).value(3).value(true).endList().key("c").null().endObject();
    EXPECT_EQ(json.text(), "{\"a\":\"\\\"\\\\\\n\\u0001\\u00e4\\ud834\\udd1e\\ufffd\","
                           "\"b\":[0.1,null,3,true],\"c\":null}");
}
