#pragma once

#include "render/Bands.h"
#include "render/Pauses.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace belvor {

/// Facets by the rows on which stepping them begins: the first row that they cross, and the first row
/// that is drawn with each further band that they reach into.
class FacetRows {
public:
    /// Forgets all facets.
    void clear() noexcept { entries.clear(); }

    /// Adds the facet of that index, which crosses the rows `first` to `last`, 0 at the least.
    void add(int first, int last, std::uint32_t facet) { entries.push_back({first, last, facet}); }

    /// Sorts what was added (a counting sort) for a picture of these bands. What a pause throws is passed on;
    /// then the table must be cleared.
    void sort(const Bands& picture, Pauses& pauses)
    {
        bands = picture;
        tall.clear();
        listStarts.assign(static_cast<std::size_t>(bands.height) + bands.count() + 1, 0);
        for (const Entry& entry : entries) {
            pauses.step();
            forEachList(entry, [this](std::size_t list) { ++listStarts[list + 1]; });
            if (isTall(entry)) tall.push_back(entry);
        }
        for (std::size_t i = 1; i < listStarts.size(); ++i) listStarts[i] += listStarts[i - 1];
        facets.resize(listStarts.back());
        nextOfList.assign(listStarts.begin(), listStarts.end() - 1);
        for (const Entry& entry : entries) {
            pauses.step(2);
            forEachList(entry, [&](std::size_t list) { facets[nextOfList[list]++] = entry.facet; });
        }
    }

    /// Calls `take` with each facet whose first row is `row`, once sorted.
    template <class Take>
    void forEach(int row, Take take) const
    {
        takeList(static_cast<std::size_t>(row), take);
    }
    /// Calls `take` with each facet that crosses the first row drawn with a band and rows above it.
    template <class Take>
    void forEachFromAbove(std::size_t band, Take take) const
    {
        takeList(listOf(band), take);
        const int row = bands.drawnRowsOf(band).first;
        for (const Entry& entry : tall)
            if (entry.first < row && row <= entry.last) take(entry.facet);
    }

private:
    struct Entry {
        int first, last;
        std::uint32_t facet;
    };

    /// Facets over many bands are not entered into each: there may be millions of them.
    bool isTall(const Entry& entry) const noexcept
    {
        return bands.lastBandOf(entry.last) - bands.firstBandOf(entry.first) > 8;
    }

    /// The lists of the bands stand behind those of the rows.
    std::size_t listOf(std::size_t band) const noexcept
    {
        return static_cast<std::size_t>(bands.height) + band;
    }

    template <class Take>
    void forEachList(const Entry& entry, Take take) const
    {
        take(static_cast<std::size_t>(entry.first));
        if (isTall(entry)) return;
        const auto last = static_cast<std::size_t>(bands.lastBandOf(entry.last));
        for (auto band = static_cast<std::size_t>(bands.firstBandOf(entry.first)); band <= last; ++band)
            if (bands.drawnRowsOf(band).first > entry.first) take(listOf(band));
    }

    template <class Take>
    void takeList(std::size_t list, Take take) const
    {
        for (std::uint32_t i = listStarts[list]; i < listStarts[list + 1]; ++i) take(facets[i]);
    }

    Bands bands{};
    std::vector<Entry> entries, tall;
    std::vector<std::uint32_t> listStarts;   // in `facets`: of each row, then of each band
    std::vector<std::uint32_t> facets, nextOfList;
};

}   // namespace belvor
