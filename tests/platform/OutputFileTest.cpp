#include "platform/OutputFile.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

using namespace belvor;

namespace {

namespace fs = std::filesystem;

using Contents = std::map<std::string, std::string>;

class OutputFolder : public testing::Test, protected test::TempFolder {};

void put(OutputFile& file, const char* text) { std::fputs(text, file.stream()); }

TEST_F(OutputFolder, AFileReplacesTheOldOneWhenItIsCommitted)
{
    const std::string path = write("a", "old");
    for (const bool committed : {false, true}) {
        OutputFile file(path);
        put(file, "new");
        std::string bytes;
        EXPECT_TRUE(readWholeFile(path, bytes));
        EXPECT_EQ(bytes, "old") << "while it is written";
        if (committed) file.commit();
    }
    OutputFile{in("never whole")};
    OutputFile(in(std::string(255, 'n'))).commit();   // a name of full length
    EXPECT_EQ(contents(), (Contents{{"a", "new"}, {std::string(255, 'n'), ""}}));
}

TEST_F(OutputFolder, FlushingALargeFileToTheDiskCanBeGivenUpOnTheWay)
{
    struct Stop {};
    const std::string path = write("a", "old");
    {
        OutputFile file(path);
        const std::string million(1 << 20, 'n');
        for (int i = 0; i < 40; ++i) put(file, million.c_str());
        int left = fs::path::preferred_separator == '/' ? 10 : 1;   // other systems flush in one step
        EXPECT_THROW(file.finish([&] { --left == 0 ? throw Stop() : void(); }), Stop);
    }
    EXPECT_EQ(contents(), (Contents{{"a", "old"}}));
}

TEST_F(OutputFolder, SeveralFilesAreCommittedTogetherOrNotAtAll)
{
    write("old", "old");
    OutputFile first(in("old")), second(in("fresh")), third(in("blocked"));
    for (OutputFile* const each : {&first, &second, &third}) put(*each, "new");
    fs::create_directory(in("blocked"));
    std::array files{&first, &second, &third};
    EXPECT_THROW(OutputFile::commit(files), FileError);
    Contents kept = contents();
    std::erase_if(kept, [](const auto& file) { return file.first.ends_with(".part"); });
    EXPECT_EQ(kept, (Contents{{"old", "old"}, {"blocked", "(folder)"}}));
}

TEST_F(OutputFolder, ASecondWriterOfAFileIsRefused)
{
    {
        OutputFile first(in("a"));
        EXPECT_THROW(OutputFile(in("../") + path().filename().string() + "/a"), OutputFile::Busy);
        OutputFile(in("b")).commit();
        first.commit();
        EXPECT_NO_THROW(OutputFile(in("a"))) << "its name is taken: the next may begin";
    }
    EXPECT_EQ(contents(), (Contents{{"a", ""}, {"b", ""}}));
}

TEST_F(OutputFolder, AFileThatCannotBeWrittenIsRefusedAtTheBeginning)
{
    fs::create_directory(in("folder"));
    const std::string guarded = write("guarded", "old");
    fs::permissions(guarded, fs::perms::owner_read);
    for (const std::string& path : {std::string(), in("folder"), in("nowhere/a"), in("nowhere/"), guarded})
        EXPECT_THROW(OutputFile{path}, FileError) << path;
    EXPECT_EQ(contents(), (Contents{{"folder", "(folder)"}, {"guarded", "old"}}));
    fs::permissions(guarded, fs::perms::owner_all);   // for systems that delete no such file
}

TEST_F(OutputFolder, SeveralNamesOfOneFileAreTheSameFile)
{
    write("a", "");
    write("b", "");
    fs::create_hard_link(in("a"), in("hard"));
    // Columns: why, left, right, same.
    const std::tuple<const char*, std::string, std::string, bool> cases[] = {
        {"the same name", "a", "a", true},        {"another spelling", "a", "./a", true},
        {"a second name", "a", "hard", true},     {"another file", "a", "b", false},
        {"no files yet", "x", "./x", true},       {"no files yet, two names", "x", "y", false},
        {"no folder", "none/x", "none/y", false}, {"a file and none", "a", "x", false},
    };
    for (const auto& [why, left, right, same] : cases)
        EXPECT_EQ(isSameFile(in(left), in(right)), same) << why;
    fs::current_path(fs::temp_directory_path());
    EXPECT_TRUE(isSameFile(path().filename().string() + "/a", in("a"))) << "relative and absolute";
}

TEST_F(OutputFolder, FoldersAreMadeHoweverTheirPathIsWritten)
{
    for (const char* const name : {"/a.png", "/a//b///c.png", "/d/./e/", "//d/e/f.png"}) {
        const std::string file = path().string() + name;
        EXPECT_TRUE(makeFoldersFor(file) && fs::is_directory(fs::path(file).parent_path())) << name;
    }
    std::fclose(openFile(in("file"), "wb"));
    EXPECT_FALSE(makeFoldersFor(in("file/x.png")));
}

TEST_F(OutputFolder, AbandonedFilesAreDeletedInAFolderOfAnyDepth)
{
    for (const std::string& deep :
         {std::string(), std::string(120, 'a') + "/" + std::string(120, 'b') + "/"}) {
        const std::string output = in(deep + "a.png"), other = in(deep + "b.png");
        ASSERT_TRUE(makeFoldersFor(output));
        const std::string abandoned = temporaryNameFor(output), another = temporaryNameFor(other);
        for (const std::string& each : {abandoned, another}) std::fclose(openFile(each, "wb"));
        removeAbandonedFiles(std::array{output});
        std::uint64_t size = 0;
        EXPECT_EQ(kindOfFile(abandoned, size), FileKind::none) << deep;
        EXPECT_EQ(kindOfFile(another, size), FileKind::regular) << "another output's";
    }
}

}   // namespace
