#include "platform/Process.h"
#include "tests/same_bytes/SceneHashes.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace belvor;

// One number for all builds that run the tests; tools/same_bytes.sh tries more compilers and processors.
TEST(SameBytes, ImageFilesOfRandomScenesAreTheSameInEveryBuildAndForAnyNumberOfThreads)
{
    const std::string path =
        temporaryNameFor((std::filesystem::temp_directory_path() / "belvor-scene.omb").string());
    for (const Sharing& sharing : test::kindsOfSharing)
        EXPECT_EQ(test::hashOfScenes(test::sceneCount, sharing, path), test::knownHash)
            << sharing.threads << " threads"
            << (sharing.fillFacets == fillFacets ? ", vectors of any processor" : "");
}
