#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

/// Facets by the first row that they cross, in store order within a row.
class FacetRows {
public:
    /// Forgets all facets.
    void clear() noexcept { entries.clear(); }

    /// Adds the facet of that index, larger than those before, at a row not below 0.
    void add(int row, std::uint32_t facet) { entries.push_back({row, facet}); }

    /// Sorts what was added (a counting sort); rows are less than `height`.
    void sort(int height)
    {
        rowStarts.assign(static_cast<std::size_t>(height) + 1, 0);
        for (const Entry& entry : entries) ++rowStarts[static_cast<std::size_t>(entry.row) + 1];
        for (std::size_t y = 1; y < rowStarts.size(); ++y) rowStarts[y] += rowStarts[y - 1];
        facetsByRow.resize(entries.size());
        nextOfRow.assign(rowStarts.begin(), rowStarts.end() - 1);
        for (const Entry& entry : entries)
            facetsByRow[nextOfRow[static_cast<std::size_t>(entry.row)]++] = entry.facet;
    }

    /// The facets of a row, once sorted.
    std::span<const std::uint32_t> at(int row) const noexcept
    {
        const auto index = static_cast<std::size_t>(row);
        return {facetsByRow.data() + rowStarts[index], facetsByRow.data() + rowStarts[index + 1]};
    }

private:
    struct Entry {
        int row;
        std::uint32_t facet;
    };
    std::vector<Entry> entries;
    std::vector<std::uint32_t> rowStarts;   // of each row, in facetsByRow
    std::vector<std::uint32_t> facetsByRow, nextOfRow;
};

}   // namespace belvor
