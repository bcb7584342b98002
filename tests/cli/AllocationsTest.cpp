// The command line with each of its allocations failing, in a process of its own each time: it must end with
// its status for exhausted memory, or go on without that memory, and never leave half a file.
// The linker sends the calls of the program's own code through the wrappers below (see CMakeLists.txt).

#include "cli/belvor_render.h"
#include "tests/support/Files.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

/// Shared with the child: what the parent wants to happen and whether it has.
struct Plan {
    long before = -1;        ///< Calls that succeed before one fails; below 0: none fails.
    bool allAfter = false;   ///< Those after it fail too.
    bool reached = false;
};
Plan* const plan = static_cast<Plan*>(
    mmap(nullptr, sizeof(Plan), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
bool armed = false;   // in the child, while the command line runs

bool fails() noexcept
{
    if (!armed || plan->before < 0) return false;
    if (plan->reached) return plan->allAfter;
    plan->reached = plan->before == 0;
    if (plan->reached) errno = ENOMEM;
    else --plan->before;
    return plan->reached;
}

}   // namespace

extern "C" {
void* __real_malloc(std::size_t);
void* __real_mmap(void*, std::size_t, int, int, int, off_t);
std::FILE* __real_fopen(const char*, const char*);
std::FILE* __real_fdopen(int, const char*);

void* __wrap_malloc(std::size_t size) { return fails() ? nullptr : __real_malloc(size); }
void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t offset)
{
    return fails() ? MAP_FAILED : __real_mmap(address, size, protection, flags, file, offset);
}
std::FILE* __wrap_fopen(const char* path, const char* mode)
{
    return fails() ? nullptr : __real_fopen(path, mode);
}
std::FILE* __wrap_fdopen(int file, const char* mode) { return fails() ? nullptr : __real_fdopen(file, mode); }
}

using namespace belvor;

namespace {

namespace fs = std::filesystem;

using Contents = std::map<std::string, std::string>;

// How all of a drawing is read without memory, tests/readers/FilesTest.cpp knows.
const std::string drawing =
    test::drawingText(test::faceEntity + test::lineEntity + "0\nTEXT\n8\nWALL\n1\nhello\n");
constexpr const char* viewText =
    "Belvor View Parameters 1.0\n9 9 9\n0 0 0\n0.5\n1\n0.4\n0.1\n30 60 0.6 oops\n";

class Allocations : public testing::Test {
protected:
    void begin()
    {
        for (const auto& entry : fs::directory_iterator(folder.path())) fs::remove_all(entry);
        for (const auto& [name, text] :
             {std::pair{"m.thf", std::string(test::boxText)}, {"d.dxf", drawing}, {"v.bvp", viewText}})
            folder.write(name, text);
    }

    /// Runs the command line; the signal that ended it as a negative number.
    int run(std::vector<std::string> arguments, long before, bool allAfter)
    {
        begin();
        *plan = {};
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            const int nowhere = open("/dev/null", O_WRONLY);
            if (chdir(folder.path().c_str()) != 0 || dup2(nowhere, 1) < 0 || dup2(nowhere, 2) < 0) _exit(99);
            std::vector<char*> argv;
            arguments.insert(arguments.begin(), "belvor-render");
            for (std::string& argument : arguments) argv.push_back(argument.data());
            *plan = {before, allAfter, false};
            armed = true;
            const int status = runCommandLine(static_cast<int>(argv.size()), argv.data());
            armed = false;
            _exit(status);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    const test::TempFolder folder;
};

TEST_F(Allocations, ThatFailAreStatus4AndLeaveNoFile)
{
    const std::tuple<const char*, std::vector<std::string>, int> cases[] = {
        {"help", {"--help"}, 0},
        {"wrong use", {"--size", "8x6", "--type=things", "m.thf", "p.jpg"}, 2},
        {"info of a model", {"--info", "m.thf"}, 0},
        {"a view from a file, with a remark, and into one",
         {"--view", "v.bvp", "--save-view", "w.bvp", "m.thf"},
         0},
        {"an Ombr picture", {"--size", "9x7", "m.thf", "p.omb"}, 0},
        {"two views of the model", {"-vplan", "-vv.bvp", "--size", "9x7", "m.thf", "{view}.png"}, 0},
        {"both, of a drawing", {"--size", "9x7", "--dxf-log", "d.dxf", "p.png", "p.omb"}, 0},
        {"a view that is none", {"--view", "m.thf", "m.thf", "p.png"}, 1},
    };
    for (const auto& [why, arguments, wantedStatus] : cases) {
        ASSERT_EQ(run(arguments, -1, false), wantedStatus) << why;
        const Contents wanted = folder.contents();
        begin();
        const Contents before = folder.contents();
        for (const bool allAfter : {false, true}) {
            long n = 0;
            for (int status = 0; n < 100000; ++n) {
                status = run(arguments, n, allAfter);
                Contents after = folder.contents();
                if (status != 0) after.erase("d.dxf.log");   // a diagnostic, written as the file is read
                const Contents& good = status == 0 ? wanted : before;
                EXPECT_TRUE(status == wantedStatus || status == 4)
                    << why << ": status " << status << " at allocation " << n << ", all after: " << allAfter;
                EXPECT_TRUE(after == good) << why << ": files at allocation " << n
                                           << ", all after: " << allAfter << ", status " << status;
                if (!plan->reached || HasFailure()) break;
            }
            EXPECT_GT(n, 5) << why;
        }
    }
}

}   // namespace
