#include "readers/dxf/DXFStream.h"
#include "errors/BadFile.h"
#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

using namespace belvor;
using namespace belvor::test;
using namespace std::string_literals;

namespace {

SilentReporter nobody;

/// "code:text@line ".
std::string written(const DXFGroup& group)
{
    return std::to_string(group.code) + ':'
           + (group.text.data() ? std::string(group.text) : std::to_string(static_cast<int>(group.number)))
           + '@' + std::to_string(group.line) + ' ';
}

/// Every group of the bytes, read one by one or a record at a time; a fault ends the list with
/// its code number and line. The bytes lie in memory of their exact size, so that the address
/// sanitizer sees a read beyond them.
std::string groupsOf(std::string_view bytes, bool byRecords = false)
{
    const std::unique_ptr<char[]> exact(new char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    const auto stream = DXFStream::over({exact.get(), bytes.size()}, "a.dxf", nobody, false);
    std::string result;
    try {
        while (byRecords && stream->nextRecord())
            for (const DXFGroup& group : stream->readRecord().groups()) result += written(group);
        for (DXFGroup group; stream->readGroupCode(group); group = {}) {
            stream->readGroupValue(group);
            result += written(group);
        }
    } catch (const BadFile& fault) {
        result += "fault " + std::to_string(fault.code()) + '@' + std::to_string(fault.line());
    }
    return result;
}

const std::string mark("AutoCAD Binary DXF\r\n\x1a\0", 22);

}   // namespace

TEST(DXFStream, ReadsCodesAndValues)
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"CR LF", "0\r\nLINE\r\n8\r\nA\r\n", "0:LINE@1 8:A@3 "},
        {"LF CR is one line end too", "0\n\rLINE\n\r8\n\rA\n\r", "0:LINE@1 8:A@3 "},
        {"CR alone", "0\rLINE\r8\rA\r", "0:LINE@1 8:A@3 "},
        {"two LF are two lines: an empty value", "1\n\n8\nA\n", "1:@1 8:A@3 "},
        {"a line end at each of the eight bytes of a word", "1\nabcdefghij\n1\nabcdefg\n1\nabcdef\r\n8\nA",
         "1:abcdefghij@1 1:abcdefg@3 1:abcdef@5 8:A@7 "},
        {"blanks: gone from the code, kept in the value", "  8 \n A \n", "8: A @1 "},
        {"what follows the digits does not matter", "8abc\nA\n", "8:A@1 "},
        {"kept in 16 bits", "65538\nA\n", "2:A@1 "},
        {"blank line: the number below it counts, the lines do not move", "\n8\nA\nB\n", "8:8@1 fault 8@3"},
        {"code line only", "0\nA\n8\n", "0:A@1 fault 9@3"},
        {"beyond 32 bits", "2147483648\nB\n", "fault 8@1"},
        {"signs; lowest of 32 bits", "+8\nA\n-1\nB\n-2147483648\nC\n", "8:A@1 65535:B@3 0:C@5 "},
        {"a zero byte is no line end", "8\nA\0B\n"s, "8:A\0B@1 "s},
        {"text, unless all of the binary mark is there", mark.substr(0, 21), "fault 8@1"},
        {"binary: text up to its zero", mark + "\0LINE\0\bA\0"s, "0:LINE@22 8:A@28 "},
        {"32 bits, signed", mark + "\x5a\x01\0\0\x80"s, "90:-2147483647@22 "},
        {"escaped code, value cut short", mark + "\xff\x2f\x04\x07\0"s, "fault 11@22"},
        {"two-byte codes throughout", mark + "\0\0LINE\0\b\0A\0"s, "0:LINE@22 8:A@29 "},
        {"escape at the last byte", mark + "\x01X\0\xff"s, "1:X@22 fault 11@25"},
        {"text without its zero", mark + "\x01XYZ"s, "fault 11@22"},
    };
    for (const auto& [why, bytes, groups] : cases) EXPECT_EQ(groupsOf(bytes), groups) << why;
}

TEST(DXFStream, ReadsAMillionBlankLinesOnce)   // each of them leads to the same number
{
    const std::string bytes = std::string(2'000'000, '\n') + "8\nA\n";
    const auto stream = DXFStream::over(bytes, "a.dxf", nobody, false);
    EXPECT_FALSE(stream->nextRecord());
    EXPECT_EQ(stream->position().line, 2'000'003);
}

TEST(DXFRecord, ConvertsTheFirstWordOfAValue)   // tests/calcore/ knows what a number is
{
    const std::pair<const char*, bool> cases[] = {
        {"\t 2  ", true}, {"3 rest", true}, {"3rest", false}, {"  ", false}};
    for (const auto& [value, good] : cases) {
        EXPECT_EQ(outcomeOf(entities(std::string("0 CIRCLE|10 0|20 0|30 0|40 ") + value)),
                  good ? "1 facets" : "Error reading double item value at line 13 in a.dxf");
        EXPECT_EQ(outcomeOf(entities(std::string("0 POLYLINE|70 ") + value + "|0 SEQEND")),
                  good ? "0 facets; POLYLINE 1 it has no surface"
                       : "Error reading integer item value at line 7 in a.dxf");
    }
    for (const char* const top : {"\xf0\x7f", "\xf8\x7f"}) {   // infinity and no number, in binary
        const std::string bytes = mark + "\0LINE\0\x0a\0\0\0\0\0\0"s + top;
        const auto stream = DXFStream::over(bytes, "a.dxf", nobody, false);
        stream->nextRecord();
        EXPECT_THROW(stream->readRecord().real(10), BadFile);
    }
}

/// Groups of a code that records have often, or of one that breaks the run; as text or binary.
std::string randomGroup(std::minstd_rand& random, int code, bool binary)
{
    const auto below = [&random](std::size_t most) { return static_cast<std::size_t>(random() >> 8) % most; };
    const std::string word = std::array{"A", "B", "", "PINES", "PINETREES", "SEVENTH"}[below(5 + below(2))];
    const std::string number = std::to_string(below(100));
    const bool isText = code == 0 || code == 8 || code == 300 || code == 1001;
    if (!binary) return std::to_string(code) + '\n' + (isText ? word : number) + '\n';
    const std::string start{static_cast<char>(code & 255), static_cast<char>(code >> 8)};
    if (isText) return start + word + '\0';
    if (code == 90) return start + std::string(4, '\0');
    return start
           + (code < 60 ? std::string(6, '\0') + "\x10\x40" : std::string{static_cast<char>(below(100)), 0});
}

/// Whose groups and index it takes over where they are alike.
TEST(DXFRecord, DoesNotDependOnTheRecordsBefore)
{
    std::minstd_rand random(7);
    const auto below = [&random](std::size_t most) { return static_cast<std::size_t>(random() >> 8) % most; };
    for (int trial = 0; trial < 900; ++trial) {
        std::string bytes = trial % 3 == 0 ? "0\nLINE\n" : mark + "\0\0LINE\0"s;
        std::array<int, 10> like;   // codes that most groups are repeated from
        for (int& code : like) code = std::array{8, 10, 20, 30, 40, 70, 62, 90, 300, 1001}[below(10)];
        for (std::size_t i = 0; i < 120; ++i)
            bytes += randomGroup(random,
                                 std::array{0, 21, like[i % 10]}[below(11) == 0   ? 0
                                                                 : below(20) == 0 ? 1
                                                                                  : 2],
                                 trial % 3 != 0);
        if (trial % 3 == 2) bytes.resize(30 + below(bytes.size() - 30));
        const std::string alone = groupsOf(bytes), together = groupsOf(bytes, true);
        const auto fault = alone.find("fault");
        if (fault != std::string::npos) {
            EXPECT_TRUE(together.ends_with(alone.substr(fault)));
            continue;
        }
        EXPECT_EQ(together, alone);
        for (const auto stream = DXFStream::over(bytes, "a.dxf", nobody, false); stream->nextRecord();) {
            const DXFRecord& record = stream->readRecord();
            for (const int code : {0, 8, 10, 20, 21, 30, 40, 62, 70, 90, 300, 1001}) {
                const auto groups = record.groups();
                const auto first = std::find_if(groups.begin(), groups.end(),
                                                [code](const DXFGroup& group) { return group.code == code; });
                EXPECT_EQ(record.find(code), first == groups.end() ? nullptr : &*first) << code;
            }
        }
    }
}
