#include "platform/Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

using namespace belvor;

struct Stop {};

/// Waits for what other threads do.
template <class Condition>
void soon(Condition done)
{
    for (const auto start = std::chrono::steady_clock::now(); !done(); std::this_thread::yield())
        if (std::chrono::steady_clock::now() - start > std::chrono::seconds(20)) return;
}

TEST(WorkerThreads, EveryIndexIsProcessedOnce)
{
    Workers workers;
    const std::tuple<unsigned, std::size_t, std::size_t> cases[] = {
        {1, 1000, 7}, {2, 1000, 7}, {8, 1000, 1}, {3, 0, 5},
        {3, 5, 5},    {8, 3, 1000}, {0, 10, 3},   {100000, 1000, 10}};
    for (const auto& [threads, wantedCount, pieceSize] : cases) {
        std::vector<std::atomic<int>> visits(wantedCount), running(Workers::maxThreads);
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

TEST(WorkerThreads, TheAskingThreadHearsOfTheOthersWhileItWaits)
{
    Workers workers;
    std::atomic<bool> begun = false, heard = false;
    const auto work = [&](std::size_t, std::size_t, const Workers::Turn& turn) {
        if (turn.thread == 0)
            return soon([&] { return begun.load(); });   // so that the other thread has work
        begun = true;
        soon([&] { return turn.nudge(), heard || turn.stopping(); });
    };
    workers.inOrder(
        2, 2, 2, work, [](auto...) {}, [&] { heard = true; });
    EXPECT_TRUE(heard);
    begun = heard = false;
    EXPECT_THROW(workers.inOrder(
                     2, 2, 2, work, [](auto...) {}, [] { throw 1; }),
                 int);
}

TEST(WorkerThreads, ResultsArriveInOrderAndNeverExceedTheSlots)
{
    Workers workers;
    for (const unsigned threads : {1u, 2u, 8u})
        for (const std::size_t slots : {1u, 2u, 5u}) {
            std::vector<std::size_t> inSlot(slots, 0);
            std::size_t taken = 0;
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
                    EXPECT_EQ(taken++, index);
                    --open;
                });
            EXPECT_EQ(taken, 500u);
            EXPECT_LE(most, slots);
        }
}

TEST(WorkerThreads, TheFirstExceptionReachesTheCallerAndStopsTheOthers)
{
    Workers workers;
    for (const unsigned threads : {1u, 2u, 8u})
        for (const std::size_t bad : {0u, 17u, 99u}) {
            std::atomic<int> running = 0, begun = 0;
            const auto piece = [&](std::size_t first, auto, const auto& turn) {
                ++running, ++begun;
                const std::shared_ptr<void> leave(nullptr, [&](auto) { --running; });
                if (first == bad) throw Stop();
                if (first > bad) soon([&] { return turn.stopping(); });
                if (turn.stopping()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
            };
            EXPECT_THROW(workers.forPieces(threads, 100000, 1, piece), Stop);
            EXPECT_EQ(running, 0);
            EXPECT_LT(begun, 1000) << "pieces that wait learn of it at once";
            const auto make = [&](auto index, auto, const auto& turn) { piece(index, index + 1, turn); };
            EXPECT_THROW(workers.inOrder(threads, 1000, 3, make, [](auto...) {}), Stop);
            EXPECT_EQ(running, 0);
            const auto take = [&](std::size_t index, auto) {
                if (index == bad) throw Stop();
            };
            const auto nothing = [](auto...) {};
            EXPECT_THROW(workers.inOrder(threads, 1000, 3, nothing, take), Stop);
        }
}

TEST(WorkerThreads, CallsFromSeveralThreadsAndNestedCallsComplete)
{
    Workers workers;
    std::atomic<int> total = 0;
    const auto inner = [&](auto...) { workers.forPieces(2, 4, 1, [&](auto...) { ++total; }); };
    const auto ask = [&] {
        for (int i = 0; i < 50; ++i) workers.forPieces(3, 10, 1, inner);
    };
    {
        const JoinedThread first(ask), second(ask);
        ask();
    }
    EXPECT_EQ(total, 3 * 50 * 10 * 4);
}
