#include "app/errors/BadFile.h"
#include "app/errors/Reporter.h"
#include "readers/man/ManFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace belvor {

/// Every input that a fuzz run found worth keeping is read, or refused with a fault.
TEST(ManCorpus, IsReadOrRefused)
{
    int files = 0, accepted = 0;
    for (const auto& entry : std::filesystem::directory_iterator(BELVOR_SOURCE_DIR "/fuzz/corpus/man")) {
        SilentReporter silent;
        ++files;
        try {
            const Handle<ManFile> model(new ManFile(entry.path().string(), silent));
            Point<3> centre;
            double radius = -1.0;
            model->bounds(centre, radius);
            EXPECT_FALSE(radius < 0.0) << entry.path();
            ++accepted;
        } catch (const BadFile& fault) {
            EXPECT_GE(fault.line(), 1) << entry.path();
        }
    }
    EXPECT_GT(files, 5);
    EXPECT_GT(accepted, 2);
}

}   // namespace belvor
