#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

/// Facets by the rows on which stepping them begins: the first row that they cross, and the
/// first row of each band of rows that they reach into.
class FacetRows {
public:
    /// Forgets all facets.
    void clear() noexcept { entries.clear(); }

    /// Adds the facet of that index, which crosses the rows `first` to `last`, 0 at the least.
    void add(int first, int last, std::uint32_t facet) { entries.push_back({first, last, facet}); }

    /// Sorts what was added (a counting sort) for a picture of `height` rows in bands of
    /// `bandRows` rows. Rows are less than `height`.
    void sort(int height, int bandRows)
    {
        band = bandRows;
        tall.clear();
        rowStarts.assign(static_cast<std::size_t>(height) + 1, 0);
        for (const Entry& entry : entries) {
            forEachBegin(entry, [this](std::size_t row) { ++rowStarts[row + 1]; });
            if (isTall(entry)) tall.push_back(entry);
        }
        for (std::size_t y = 1; y < rowStarts.size(); ++y) rowStarts[y] += rowStarts[y - 1];
        facetsByRow.resize(rowStarts.back());
        nextOfRow.assign(rowStarts.begin(), rowStarts.end() - 1);
        for (const Entry& entry : entries)
            forEachBegin(entry, [&](std::size_t row) { facetsByRow[nextOfRow[row]++] = entry.facet; });
    }

    /// Calls `take` with each facet whose stepping begins on `row`, once sorted.
    template <class Take>
    void forEach(int row, Take take) const
    {
        const auto index = static_cast<std::size_t>(row);
        for (std::uint32_t i = rowStarts[index]; i < rowStarts[index + 1]; ++i) take(facetsByRow[i]);
        if (row % band != 0) return;
        for (const Entry& entry : tall)
            if (entry.first < row && row <= entry.last) take(entry.facet);
    }

private:
    struct Entry {
        int first, last;
        std::uint32_t facet;
    };

    /// Facets over many bands are not entered into each: there may be millions of them.
    bool isTall(const Entry& entry) const noexcept { return entry.last / band - entry.first / band > 8; }

    template <class Take>
    void forEachBegin(const Entry& entry, Take take) const
    {
        take(static_cast<std::size_t>(entry.first));
        if (isTall(entry)) return;
        for (int row = (entry.first / band + 1) * band; row <= entry.last; row += band)
            take(static_cast<std::size_t>(row));
    }

    int band = 1;   // rows
    std::vector<Entry> entries, tall;
    std::vector<std::uint32_t> rowStarts;   // of each row, in facetsByRow
    std::vector<std::uint32_t> facetsByRow, nextOfRow;
};

}   // namespace belvor
