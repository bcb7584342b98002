#pragma once

#include <string_view>

namespace belvor {

/// How many processors this process may use at once, at least 1: those that its affinity
/// leaves it, and no more than the processor time that its control group or job grants.
unsigned usableProcessors() noexcept;

/// The processors that a control group grants, from the content of its file cpu.max
/// ("QUOTA PERIOD" in microseconds, or "max PERIOD"): the quota over the period, rounded up.
/// 0 when there is no limit or the text is not of that form.
unsigned processorsGranted(std::string_view cpuMax) noexcept;

}   // namespace belvor
