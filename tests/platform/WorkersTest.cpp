#include "platform/Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

using namespace belvor;

struct Stop {};

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
        workers.forPieces(threads, wantedCount, pieceSize, [&](auto first, auto end, const auto& turn) {
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
    workers.forPieces(2, 2, 1, [&](auto...) {
        ++arrived;
        const auto began = std::chrono::steady_clock::now();
        while (arrived < 2 && std::chrono::steady_clock::now() - began < std::chrono::seconds(20)) {}
    });
    EXPECT_EQ(arrived, 2);
}

TEST(WorkerThreads, TheAskingThreadHearsOfTheOthersWhileItWaits)
{
    Workers workers;
    std::atomic<bool> begun = false, heard = false;
    const auto work = [&](std::size_t, std::size_t, const Workers::Turn& turn) {
        if (turn.thread == 0) {
            while (!begun) std::this_thread::yield();   // so that the other thread has work
            return;
        }
        begun = true;
        const auto start = std::chrono::steady_clock::now();
        for (; !heard && !turn.stopping(); std::this_thread::yield()) {
            turn.nudge();
            if (std::chrono::steady_clock::now() - start > std::chrono::seconds(20)) return;
        }
    };
    workers.inOrder(
        2, 2, 2, work, [](std::size_t, std::size_t) {}, [&] { heard = true; });
    EXPECT_TRUE(heard);
    begun = heard = false;
    EXPECT_THROW(workers.inOrder(
                     2, 2, 2, work, [](std::size_t, std::size_t) {}, [] { throw 1; }),
                 int);
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
                [&](auto index, auto slot, const auto&) {
                    const std::size_t now = ++open;
                    if (now > most) most = now;
                    inSlot[slot] = index * index;
                },
                [&](auto index, auto slot) {
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
            const auto piece = [&](std::size_t first, auto, const auto&) {
                ++running, ++begun;
                const std::unique_ptr<std::atomic<int>, void (*)(std::atomic<int>*)> leave(
                    &running, [](std::atomic<int>* count) { --*count; });
                if (first == bad) {
                    thrown = true;
                    throw Stop();
                }
                while (first > bad && !thrown) std::this_thread::yield();
                if (thrown) std::this_thread::sleep_for(std::chrono::milliseconds(1));
            };
            EXPECT_THROW(workers.forPieces(threads, 100000, 1, piece), Stop);
            EXPECT_EQ(running, 0);
            EXPECT_LT(begun, 100000);
            const auto make = [&](auto index, auto, const auto& turn) { piece(index, index + 1, turn); };
            EXPECT_THROW(workers.inOrder(threads, 1000, 3, make, [](std::size_t, std::size_t) {}), Stop);
            EXPECT_EQ(running, 0);
            const auto take = [&](std::size_t index, std::size_t) {
                if (index == bad) throw Stop();
            };
            EXPECT_THROW(workers.inOrder(
                             threads, 1000, 3, [](auto...) {}, take),
                         Stop);
        }
}

TEST(WorkerThreads, AnExceptionEndsLongPieces)
{
    Workers workers;
    EXPECT_THROW(workers.forPieces(4, 1000, 1,
                                   [](std::size_t first, auto, const auto& turn) {
                                       if (turn.thread == 0 && first >= 100) throw Stop();
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
            workers.forPieces(3, 10, 1,
                              [&](auto...) { workers.forPieces(2, 4, 1, [&](auto...) { ++total; }); });
    };
    {
        const JoinedThread first(ask), second(ask);
        ask();
    }
    EXPECT_EQ(total, 3 * 50 * 10 * 4);
}
