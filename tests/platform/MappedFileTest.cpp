#include "platform/MappedFile.h"

#include "errors/FileChanged.h"
#include "errors/Reporter.h"
#include "readers/ModelFile.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>

using namespace belvor;

namespace {

/// Whether `change` can be made while the file is mapped: a system may forbid it.
bool changed(const std::function<void()>& change)
try {
    change();
    return true;
} catch (const std::filesystem::filesystem_error&) {
    return false;
}

/// Shortens the file when it is asked the first time.
class Cutter : public Reporter {
public:
    explicit Cutter(std::string file) : path(std::move(file)) {}
    bool progress(int, int, double) override
    {
        if (!done) good = changed([&] { std::filesystem::resize_file(path, 50); });
        done = true;
        return false;
    }
    std::string path;
    bool done = false, good = false;
};

TEST(MappedFile, ReadsZerosWhereTheFileWasCutOff)
{
    const test::TempFile file("shrinks", std::string(100000, 'x'));
    MappedFile::takeDamage();
    {
        const MappedFile mapped(file.path());
        EXPECT_FALSE(mapped.damaged());
        if (!changed([&] { std::filesystem::resize_file(file.path(), 5000); }))
            GTEST_SKIP() << "this system keeps a mapped file from being shortened";
        const std::string_view bytes = mapped.bytes();
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 'x') % 5000, 0) << "what is left, or zeros only";
        EXPECT_EQ(bytes.back(), '\0');
        EXPECT_TRUE(mapped.damaged());
    }
    EXPECT_TRUE(MappedFile::takeDamage());
    EXPECT_FALSE(MappedFile::takeDamage());
    EXPECT_FALSE(MappedFile(file.path()).damaged()) << "the next mapping is a new one";
}

TEST(ModelFile, RefusesAModelThatIsChangedWhileItIsRead)
{
    std::string faces = "0\nSECTION\n2\nENTITIES\n";
    for (int i = 0; i < 3000; ++i)
        faces += "0\n3DFACE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n0\n31\n0\n12\n1\n22\n1\n32\n0\n";
    const test::TempFile file("shrinks.dxf", faces + "0\nENDSEC\n0\nEOF\n");
    const auto cutter = makeHandle<Cutter>(file.path());
    try {
        const Reading reading = readModel(file.path(), FileType::dxf, *cutter);
        if (cutter->good) ADD_FAILURE() << "half a drawing is no drawing";
    } catch (const FileChanged& error) {
        EXPECT_EQ(error.what(), file.path() + ": " + textOf(Text::fileChanged));
    }
}

}   // namespace
