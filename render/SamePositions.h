#pragma once

#include "platform/LargeMemory.h"
#include "render/Pauses.h"
#include "scene/Model.h"

#include <cstddef>
#include <cstdint>

namespace belvor {

/// For every vertex of a model the first one at the same position (−0 = 0); none for a vertex that is not
/// finite.
class SamePositions {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// Throws what `pauses` throws, std::bad_alloc.
    SamePositions(const Model& model, Pauses& pauses);

    /// By vertex; lives as long as this.
    const std::uint32_t* data() const noexcept { return firstOf.data(); }

private:
    static constexpr std::uint32_t blockSize = 256;   // vertices: as many reads from memory at the same time

    std::uint32_t noteHashes();
    void noteBlock(std::uint32_t first, std::uint32_t end, std::uint32_t& repeated);
    bool isRepeated(std::uint32_t hashed) const noexcept;
    void findBlock(std::uint32_t first, std::uint32_t end);
    std::uint32_t firstAt(std::uint32_t vertex, std::size_t slot);

    const Model& model;
    Pauses& pauses;
    UnsetVector<std::uint32_t> firstOf;
    LargeVector<std::uint64_t> places;   // empty when hashes repeat too often
    LargeVector<std::uint32_t> table;
};

}   // namespace belvor
