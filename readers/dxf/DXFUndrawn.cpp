#include "readers/dxf/DXFUndrawn.h"

#include <algorithm>
#include <functional>

namespace belvor {
namespace {

using State = DXFBlockSummary::State;

constexpr std::size_t maxKnownNumbers = std::size_t{8} << 20;   // 64 MB
constexpr std::size_t stepsBetweenReports = 256;

void addTo(std::uint64_t& count, std::uint64_t more, std::uint64_t times)
{
    count = counted(count, more, times);
}

}   // namespace

/// Visits every block that a walk through `from` would come to, `from` included, while `visit`
/// answers true; blocks of which all is known have nothing behind them. Those under way are
/// not entered: they go to `hit`.
template <class Visit, class Hit>
bool DXFUndrawn::search(DXFBlock& from, Visit visit, Hit hit)
{
    ++searches;
    std::vector<DXFBlock*> open{&from};
    from.summary.mark = searches;
    while (!open.empty()) {
        DXFBlock& block = *open.back();
        open.pop_back();
        if (!visit(block)) return false;
        if (block.summary.state != State::cyclic) continue;
        for (const auto& [inner, times] : block.summary.insertions) {
            if (inner->summary.mark == searches) continue;
            inner->summary.mark = searches;
            if (inner->expanding()) hit(*inner);
            else open.push_back(inner);
        }
    }
    return true;
}

bool DXFUndrawn::drawsNothing(DXFBlock& from)
{
    const auto gives = [](const DXFBlock& block) {
        const DXFBlockSummary& its = block.summary;
        return its.state == State::drawsNothing
               || (its.state == State::cyclic && its.facets == 0 && !its.namesMaterials);
    };
    return search(from, gives, [](DXFBlock&) {});
}

DXFUndrawn::Key DXFUndrawn::keyOf(DXFBlock& block)
{
    Key key;
    search(
        block, [](DXFBlock&) { return true; }, [&key](DXFBlock& underWay) { key.push_back(&underWay); });
    std::sort(key.begin(), key.end(), std::less<>());
    key.push_back(&block);
    return key;
}

void DXFUndrawn::add(Tally& to, const Tally& more, std::uint64_t times)
{
    Tally sum;
    sum.reserve(to.size() + more.size());
    const std::less<> before;
    auto old = to.begin();
    for (const Share& share : more) {
        while (old != to.end() && before(old->block, share.block)) sum.push_back(*old++);
        Share next{share.block, 0, 0, 0};
        if (old != to.end() && old->block == share.block) next = *old++;
        addTo(next.walked, share.walked, times);
        addTo(next.counted, share.counted, times);
        addTo(next.inItself, share.inItself, times);
        sum.push_back(next);
    }
    sum.insert(sum.end(), old, to.end());
    to.swap(sum);
}

bool DXFUndrawn::count(DXFBlock& block, std::uint64_t cells)
{
    switch (block.summary.state) {
    case State::drawsNothing: addTo(block.summary.countedCells, cells, 1); return true;
    case State::unread:
    case State::draws: return false;
    case State::cyclic: break;
    }
    if (!drawsNothing(block)) return false;
    if (const Tally* const tally = tallyOf(block)) apply(*tally, cells);
    else countOnce(block, cells);
    return true;
}

/// What a walk through `block` comes to from where the reading stands; null beyond the limit.
const DXFUndrawn::Tally* DXFUndrawn::tallyOf(DXFBlock& block)
{
    Key key = keyOf(block);
    if (const auto found = known.find(key); found != known.end()) return &found->second;
    if (knownNumbers > maxKnownNumbers) return nullptr;
    std::vector<Frame> frames;
    frames.push_back({&block, std::move(key), block.summary.insertions.begin(), {{&block, 1, 0, 0}}});
    block.expanding() = true;
    const auto leave = [&frames] {
        for (const Frame& frame : frames) frame.block->expanding() = false;
    };
    try {
        const Tally* const result = walkCircles(frames);
        leave();
        return result;
    } catch (...) {
        leave();
        throw;
    }
}

/// Walks from block to inserted block on a stack of its own, each stretch once.
const DXFUndrawn::Tally* DXFUndrawn::walkCircles(std::vector<Frame>& frames)
{
    for (std::size_t steps = 1;; ++steps) {
        if (steps % stepsBetweenReports == 0) report();
        Frame& frame = frames.back();
        if (frame.next == frame.block->summary.insertions.end()) {
            knownNumbers += frame.key.size() + frame.tally.size() * 4;
            const Tally& done = known[std::move(frame.key)] = std::move(frame.tally);
            frame.block->expanding() = false;
            frames.pop_back();
            if (frames.empty()) return &done;
            continue;   // the one before looks it up
        }
        const auto& [inner, inserted] = *frame.next;
        if (inner->expanding()) {
            add(frame.tally, {{inner, 0, 0, 1}}, inserted.times);
        } else if (inner->summary.state == State::drawsNothing) {
            add(frame.tally, {{inner, 0, 1, 0}}, inserted.cells);
        } else {
            Key key = keyOf(*inner);
            const auto found = known.find(key);
            if (found == known.end()) {
                if (knownNumbers > maxKnownNumbers) return nullptr;
                inner->expanding() = true;
                frames.push_back(
                    {inner, std::move(key), inner->summary.insertions.begin(), {{inner, 1, 0, 0}}});
                continue;
            }
            add(frame.tally, found->second, inserted.cells);
        }
        ++frame.next;
    }
}

void DXFUndrawn::countOnce(DXFBlock& from, std::uint64_t cells)
{
    std::vector<DXFBlock*> reached;
    search(
        from,
        [&reached](DXFBlock& block) {
            reached.push_back(&block);
            return true;
        },
        [](DXFBlock&) {});
    for (DXFBlock* const block : reached) {
        if (block->summary.state != State::cyclic) {
            addTo(block->summary.countedCells, cells, 1);
            continue;
        }
        addTo(block->summary.playedCells, cells, 1);
        for (const auto& [inner, inserted] : block->summary.insertions)
            if (inner->expanding() || inner->summary.state == State::cyclic)
                countInItself(*inner, counted(0, cells, inserted.times));
    }
}

void DXFUndrawn::apply(const Tally& tally, std::uint64_t cells)
{
    for (const Share& share : tally) {
        addTo(share.block->summary.playedCells, share.walked, cells);
        addTo(share.block->summary.countedCells, share.counted, cells);
        if (share.inItself != 0) countInItself(*share.block, counted(0, share.inItself, cells));
    }
}

void DXFUndrawn::settle()
{
    // A block comes after those it inserts, but for circles, which have been counted out.
    for (auto at = summarised.rbegin(); at != summarised.rend(); ++at) {
        DXFBlockSummary& its = (*at)->summary;
        const std::uint64_t cells = counted(its.playedCells, its.countedCells, 1);
        if (cells == 0) continue;
        for (const auto& [entry, count] : its.skips) addTo(entry->count, count, cells);
        if (its.countedCells != 0) {
            if (its.facets != 0)
                skipped.add("facet", SkippedEntities::Why::tooFarOut, {},
                            counted(0, its.facets, its.countedCells));
            for (const auto& [inner, inserted] : its.insertions)
                addTo(inner->summary.countedCells, inserted.cells, its.countedCells);
        }
        its.playedCells = its.countedCells = 0;
    }
}

void DXFUndrawn::forget()
{
    settle();
    for (DXFBlock* const block : summarised) {
        block->summary = {};
        block->contents.reset();
    }
    summarised.clear();
    known.clear();
    knownNumbers = 0;
}

}   // namespace belvor
