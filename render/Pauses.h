#pragma once

#include <cstddef>
#include <functional>
#include <utility>

namespace belvor {

/// Calls its function after every millisecond or so of work, counted in steps of about 16 ns: a wish to stop
/// is heard soon whatever the work is made of. Used by one thread.
class Pauses {
public:
    static constexpr std::size_t interval = 65536;   // steps

    /// `function` may throw, and may be none.
    explicit Pauses(std::function<void()> function) : pause(std::move(function)) {}

    /// Before or after so many steps of work, not many more than `interval`.
    void step(std::size_t steps = 1)
    {
        done += steps;
        if (done < interval) return;
        done = 0;
        if (pause) pause();
    }

private:
    const std::function<void()> pause;
    std::size_t done = 0;
};

/// Makes a table longer, up to `size` elements, or shorter; the new ones are `value`. Calls `pause` after
/// every megabyte: fresh memory costs time when it is first touched.
template <class Table, class Pause>
void resizeInSlices(Table& table, std::size_t size, const Pause& pause,
                    const typename Table::value_type& value = {})
{
    constexpr std::size_t slice = (std::size_t{1} << 20) / sizeof(value);
    table.reserve(size);
    while (table.size() + slice < size) {
        table.resize(table.size() + slice, value);
        pause();
    }
    table.resize(size, value);
}

}   // namespace belvor
