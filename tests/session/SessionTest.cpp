#include "tests/session/World.h"

using namespace belvor;

namespace {

#ifdef __SANITIZE_THREAD__
constexpr int actionsOnTwoThreads = 20'000;
#else
constexpr int actionsOnTwoThreads = 5'000;
#endif
constexpr int actionsOnOneThread = 100'000, actionsOfARun = 500;

void playRandomly(test::World::Threads threads, int wanted)
{
    const test::WorldFiles files;
    unsigned seed = 0;
    for (int done = 0; done < wanted && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        test::World world(files, seed, threads);
        while (world.actions < actionsOfARun && !testing::Test::HasFailure()) world.act();
        world.end();
        done += world.actions;
    }
}

}   // namespace

TEST(Session, RandomActionsOnOneThreadBreakNoRule)
{
    playRandomly(test::World::Threads::one, actionsOnOneThread);
}

TEST(Session, RandomActionsWithARenderThreadBreakNoRule)
{
    playRandomly(test::World::Threads::two, actionsOnTwoThreads);
}
