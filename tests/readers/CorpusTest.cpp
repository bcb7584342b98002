#include "app/errors/BadFile.h"
#include "app/state/ViewParameters.h"
#include "fuzz/DrawSmall.h"
#include "readers/things/Things.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

namespace belvor {
namespace {

int replay(const std::string& folder, const std::function<void(const std::string&)>& take)
{
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(BELVOR_SOURCE_DIR "/fuzz/corpus/" + folder)) {
        SCOPED_TRACE(entry.path().string());
        take(entry.path().string());
        ++files;
    }
    return files;
}

}   // namespace

/// Every input that a fuzz run found worth keeping is read and drawn, or refused.
TEST(Corpus, OfThingsIsReadOrRefused)
{
    int accepted = 0;
    EXPECT_GT(replay("things", [&accepted](const std::string& path) {
        SilentReporter silent;
        try {
            const Handle<Things> model = makeHandle<Things>(path, silent);
            drawSmall(*model);
            ++accepted;
        } catch (const BadFile&) {
        }
    }), 5);
    EXPECT_GT(accepted, 3);
}

TEST(Corpus, OfViewsIsReadOrRefused)
{
    int accepted = 0;
    EXPECT_GT(replay("bvp", [&accepted](const std::string& path) {
        ViewParameters view;
        accepted += view.read(path, {1, 2, 3}, 4);
        EXPECT_EQ(view.lights.size(), 5u);
    }), 2);
    EXPECT_GT(accepted, 1);
}

}   // namespace belvor
