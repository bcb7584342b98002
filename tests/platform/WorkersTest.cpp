#include "platform/Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace belvor;

namespace {

class Stop : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

}   // namespace

TEST(WorkerThreads, EveryIndexIsProcessedOnce)
{
    Workers workers;
    const std::tuple<unsigned, std::size_t, std::size_t> cases[] = {
        {1, 1000, 7}, {2, 1000, 7}, {8, 1000, 1}, {3, 0, 5},
        {3, 5, 5},    {8, 3, 1000}, {0, 10, 3},   {100000, 1000, 10}};
    for (const auto& [threads, wantedCount, pieceSize] : cases) {
        std::vector<std::atomic<int>> visits(wantedCount);
        std::vector<std::atomic<int>> running(Workers::maxThreads);
        std::atomic<bool> good = true;
        workers.forPieces(threads, wantedCount, pieceSize,
                          [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
                              if (running[turn.thread]++ != 0 || first % pieceSize != 0) good = false;
                              for (std::size_t i = first; i < end; ++i) ++visits[i];
                              --running[turn.thread];
                          });
        for (const auto& count : visits) EXPECT_EQ(count, 1);
        EXPECT_TRUE(good) << threads << " threads, pieces of " << pieceSize;
    }
}

TEST(WorkerThreads, TwoThreadsWorkAtTheSameTime)
{
    Workers workers;
    std::atomic<int> arrived = 0;
    workers.forPieces(2, 2, 1, [&](std::size_t, std::size_t, const Workers::Turn&) {
        ++arrived;
        const auto began = std::chrono::steady_clock::now();
        while (arrived < 2 && std::chrono::steady_clock::now() - began < std::chrono::seconds(20)) {}
    });
    EXPECT_EQ(arrived, 2);
}

TEST(WorkerThreads, ResultsArriveInOrderAndNeverExceedTheSlots)
{
    Workers workers;
    for (const unsigned threads : {1u, 2u, 8u})
        for (const std::size_t slots : {1u, 2u, 5u}) {
            std::vector<std::size_t> inSlot(slots, 0), taken;
            std::atomic<std::size_t> open = 0, most = 0;
            workers.inOrder(
                threads, 500, slots,
                [&](std::size_t index, std::size_t slot, const Workers::Turn&) {
                    const std::size_t now = ++open;
                    if (now > most) most = now;
                    inSlot[slot] = index * index;
                },
                [&](std::size_t index, std::size_t slot) {
                    EXPECT_EQ(inSlot[slot], index * index);
                    taken.push_back(index);
                    --open;
                });
            std::vector<std::size_t> all(500);
            std::iota(all.begin(), all.end(), std::size_t{0});
            EXPECT_EQ(taken, all);
            EXPECT_LE(most, slots);
        }
}

TEST(WorkerThreads, TheFirstExceptionReachesTheCallerAndStopsTheOthers)
{
    Workers workers;
    for (const unsigned threads : {1u, 2u, 8u})
        for (const std::size_t bad : {0u, 17u, 99u}) {
            std::atomic<int> running = 0, begun = 0;
            std::atomic<bool> thrown = false;
            const auto piece = [&](std::size_t first, std::size_t, const Workers::Turn&) {
                ++running, ++begun;
                const std::unique_ptr<std::atomic<int>, void (*)(std::atomic<int>*)> leave(
                    &running, [](std::atomic<int>* count) { --*count; });
                if (first == bad) {
                    thrown = true;
                    throw Stop(std::to_string(first));
                }
                while (first > bad && !thrown) std::this_thread::yield();
                if (thrown) std::this_thread::sleep_for(std::chrono::milliseconds(1));
            };
            try {
                workers.forPieces(threads, 100000, 1, piece);
                ADD_FAILURE() << "nothing thrown";
            } catch (const Stop& stop) {
                EXPECT_EQ(stop.what(), std::to_string(bad));
            }
            EXPECT_EQ(running, 0);
            EXPECT_LT(begun, 100000);
            EXPECT_THROW(workers.inOrder(
                             threads, 1000, 3,
                             [&](std::size_t index, std::size_t, const Workers::Turn& turn) {
                                 piece(index, index + 1, turn);
                             },
                             [](std::size_t, std::size_t) {}),
                         Stop);
            EXPECT_EQ(running, 0);
            EXPECT_THROW(workers.inOrder(
                             threads, 1000, 3, [](std::size_t, std::size_t, const Workers::Turn&) {},
                             [&](std::size_t index, std::size_t) {
                                 if (index == bad) throw Stop("taken");
                             }),
                         Stop);
        }
}

TEST(WorkerThreads, AnExceptionEndsLongPieces)
{
    Workers workers;
    EXPECT_THROW(workers.forPieces(4, 1000, 1,
                                   [](std::size_t first, std::size_t, const Workers::Turn& turn) {
                                       if (turn.thread == 0 && first >= 100) throw Stop("enough");
                                       if (turn.thread != 0)   // far longer than the test runs
                                           while (!turn.stopping()) {}
                                   }),
                 Stop);
}

TEST(WorkerThreads, CallsFromSeveralThreadsAndNestedCallsComplete)
{
    Workers workers;
    std::atomic<int> total = 0;
    const auto ask = [&] {
        for (int i = 0; i < 50; ++i)
            workers.forPieces(3, 10, 1, [&](std::size_t, std::size_t, const Workers::Turn&) {
                workers.forPieces(2, 4, 1, [&](std::size_t, std::size_t, const Workers::Turn&) { ++total; });
            });
    };
    {
        const JoinedThread first(ask), second(ask);
        ask();
    }
    EXPECT_EQ(total, 3 * 50 * 10 * 4);
}
