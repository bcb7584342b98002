// Prints the hash of the random scenes for 1, 2, 3 and 8 threads; status 1 when one is not the known one.
#include "tests/same_bytes/SceneHashes.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv)
try {
    if (argc != 2) {
        std::fputs("give the name of a file to write and remove\n", stderr);
        return 2;
    }
    bool same = true;
    for (const belvor::Sharing& sharing : belvor::test::kindsOfSharing) {
        const std::uint64_t hash = belvor::test::hashOfScenes(belvor::test::sceneCount, sharing, argv[1]);
        std::printf("%u threads, %s: %016llx\n", sharing.threads,
                    sharing.fillFacets == belvor::fillFacets ? "vectors of any processor" : "fastest vectors",
                    static_cast<unsigned long long>(hash));
        same &= hash == belvor::test::knownHash;
    }
    return same ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
}
