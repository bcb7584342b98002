#include "render/SamePositions.h"

#include "platform/Prefetch.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>

// Vertices whose hash no other one has need not be looked for in a table: where facets share vertices that is
// nearly all of them. What a step reads from anywhere in memory, an earlier one asks for.

namespace belvor {
namespace {

constexpr std::uint32_t placesOfWord = 32, rarelyRepeated = 8;

/// Less than 2^31; none for a position that is not finite.
std::uint32_t hash(const Point<3>& position) noexcept
{
    std::uint64_t mixed = 0;
    for (int axis = 0; axis < 3; ++axis) {
        if (!std::isfinite(position[axis])) return SamePositions::none;
        const auto bits = std::bit_cast<std::uint64_t>(position[axis] + 0.0);   // −0 as 0
        mixed = (mixed ^ bits) * 0x9E3779B97F4A7C15u;
        mixed ^= mixed >> 32;
    }
    return static_cast<std::uint32_t>(mixed) >> 1;
}

/// Takes steps that all go the same way, up or down.
class OneWay {
public:
    bool take(double step) noexcept
    {
        if (!(step > 0.0 || step < 0.0) || way * step < 0.0) return false;
        way = step > 0.0 ? 1.0 : -1.0;
        return true;
    }

private:
    double way = 0.0;   // none yet
};

/// Whether the vertices stand in rows, as those of a grid of heights do: `along` a row one coordinate goes
/// one way, `across` the rows another one does. Then they all are at different positions.
bool areInRows(const Model& model, int along, int across, Pauses& pauses)
{
    OneWay inRow, fromRowToRow;
    for (std::uint32_t i = 0; i < model.vertexCount(); ++i) {
        pauses.step();
        const Point<3>& here = model.vertex(i).position;
        if (!((here[0] - here[0]) + (here[1] - here[1]) + (here[2] - here[2]) == 0.0))
            return false;   // not finite
        if (i == 0) continue;
        const Point<3>& before = model.vertex(i - 1).position;
        if (here[across] == before[across]) {
            if (!inRow.take(here[along] - before[along])) return false;
        } else {
            if (!fromRowToRow.take(here[across] - before[across])) return false;
            inRow = {};
        }
    }
    return true;
}

bool areInRows(const Model& model, Pauses& pauses)
{
    for (int along = 0; along < 3; ++along)
        for (int across = 0; across < 3; ++across)
            if (across != along && areInRows(model, along, across, pauses)) return true;
    return false;
}

}   // namespace

SamePositions::SamePositions(const Model& scene, Pauses& counted) : model(scene), pauses(counted)
{
    const auto pause = [this] { pauses.step(Pauses::interval); };
    const std::uint32_t count = model.vertexCount();
    firstOf.resize(count);
    if (areInRows(model, pauses)) {
        std::iota(firstOf.begin(), firstOf.end(), 0u);
        return;
    }
    resizeInSlices(places, std::bit_ceil(std::size_t{count} / 2 + 1), pause);
    std::uint32_t inTable = count;
    if (const std::uint32_t repeated = noteHashes(); repeated <= count / rarelyRepeated)
        inTable = 2 * repeated;
    else places = {};
    resizeInSlices(table, std::bit_ceil(2 * std::size_t{inTable} + 2), pause, none);
    for (std::uint32_t i = 0; i < count; i += std::min(blockSize, count - i))
        findBlock(i, i + std::min(blockSize, count - i));
    places = {};
    table = {};
}

/// Leaves the hash of each vertex in firstOf and what is known of it in two bits of its place: one vertex
/// has it, more than one have it. Returns how many vertices have that of an earlier one; ends when these
/// are too many.
std::uint32_t SamePositions::noteHashes()
{
    const std::uint32_t count = model.vertexCount();
    std::uint32_t repeated = 0, end = 0;
    while (end < count) {
        const std::uint32_t first = end;
        end += std::min(blockSize, count - end);
        noteBlock(first, end, repeated);
        if (end % 8192 == 0 && repeated > end / rarelyRepeated) return none;
    }
    return repeated;
}

void SamePositions::noteBlock(std::uint32_t first, std::uint32_t end, std::uint32_t& repeated)
{
    pauses.step(end - first);
    const std::size_t inPlaces = places.size() - 1;
    for (std::uint32_t i = first; i < end; ++i) {
        firstOf[i] = hash(model.vertex(i).position);
        prefetch(&places[firstOf[i] / placesOfWord & inPlaces]);
    }
    for (std::uint32_t i = first; i < end; ++i) {
        const std::uint32_t hashed = firstOf[i];
        if (hashed == none) continue;
        std::uint64_t& word = places[hashed / placesOfWord & inPlaces];
        const std::uint32_t shift = hashed % placesOfWord * 2;
        const std::uint64_t met = word >> shift & 1;
        word |= (1 | met << 1) << shift;
        repeated += static_cast<std::uint32_t>(met);
    }
}

bool SamePositions::isRepeated(std::uint32_t hashed) const noexcept
{
    const std::uint64_t word = places[hashed / placesOfWord & (places.size() - 1)];
    return (word >> (hashed % placesOfWord * 2) & 2) != 0;
}

void SamePositions::findBlock(std::uint32_t first, std::uint32_t end)
{
    std::uint32_t asked[blockSize], count = 0;
    std::size_t slots[blockSize];
    for (std::uint32_t i = first; i < end; ++i) {
        const std::uint32_t hashed = places.empty() ? hash(model.vertex(i).position) : firstOf[i];
        firstOf[i] = hashed == none ? none : i;
        asked[count] = i;
        slots[count] = hashed & (table.size() - 1);
        count += hashed != none && (places.empty() || isRepeated(hashed));
    }
    pauses.step((end - first) / 4 + count);
    for (std::uint32_t k = 0; k < count; ++k) prefetch(&table[slots[k]]);
    for (std::uint32_t k = 0; k < count; ++k)
        if (const std::uint32_t found = table[slots[k]]; found != none) prefetch(&model.vertex(found));
    for (std::uint32_t k = 0; k < count; ++k) firstOf[asked[k]] = firstAt(asked[k], slots[k]);
}

std::uint32_t SamePositions::firstAt(std::uint32_t vertex, std::size_t slot)
{
    const Point<3>& position = model.vertex(vertex).position;
    while (table[slot] != none && !(model.vertex(table[slot]).position == position))
        slot = (slot + 1) & (table.size() - 1);
    if (table[slot] == none) table[slot] = vertex;
    return table[slot];
}

}   // namespace belvor
